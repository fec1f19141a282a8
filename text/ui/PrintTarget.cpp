#include "text/ui/PrintTarget.h"

#include <QIODevice>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrinter>
#include <utility>

#include "base/AtomicFile.h"
#include "res/ui/UiText.h"

namespace quill {
namespace {

class PrinterTarget : public PrintTarget {
 public:
  explicit PrinterTarget(std::unique_ptr<QPrinter> printer)
      : PrintTarget(printer->fromPage(), printer->toPage()), m_printer(std::move(printer)) {
    m_printer->setFullPage(true);  // the margins are ours
  }

  IoResult Open() override { return IoResult::Success(); }
  QPagedPaintDevice& Device() override { return *m_printer; }
  QRectF Paper() const override { return m_printer->paperRect(QPrinter::DevicePixel); }
  int Resolution() const override { return m_printer->resolution(); }
  IoResult NewPage() override { return m_printer->newPage() ? IoResult::Success() : IoResult::Failure({}); }
  IoResult Finish() override { return IoResult::Success(); }
  void Abandon() override { m_printer->abort(); }

 private:
  std::unique_ptr<QPrinter> m_printer;
};

/// Hands bytes on to a file; remembers the first failure.
class FileDevice : public QIODevice {
 public:
  explicit FileDevice(AtomicFile& file) : m_file(file) {}
  const IoResult& Outcome() const { return m_outcome; }
  bool isSequential() const override { return true; }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char* data, qint64 size) override {
    if (m_outcome) m_outcome = m_file.Write({data, static_cast<size_t>(size)});
    return m_outcome ? size : -1;
  }

 private:
  AtomicFile& m_file;
  IoResult m_outcome = IoResult::Success();
};

class PdfTarget : public PrintTarget {
 public:
  explicit PdfTarget(const QPrinter& printer)
      : PrintTarget(printer.fromPage(), printer.toPage()),
        m_file(ToBytes(printer.outputFileName())),
        m_device(m_file),
        m_writer(&m_device) {
    QPageLayout layout = printer.pageLayout();
    layout.setMode(QPageLayout::FullPageMode);
    m_writer.setPageLayout(layout);
    m_writer.setResolution(printer.resolution());
    m_writer.setTitle(printer.docName());
  }

  IoResult Open() override {
    IoResult opened = m_file.Open();
    if (opened) m_device.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    return opened;
  }
  QPagedPaintDevice& Device() override { return m_writer; }
  QRectF Paper() const override { return m_writer.pageLayout().fullRectPixels(m_writer.resolution()); }
  int Resolution() const override { return m_writer.resolution(); }
  IoResult NewPage() override {
    if (!m_device.Outcome()) return m_device.Outcome();
    return m_writer.newPage() ? IoResult::Success() : IoResult::Failure({});
  }
  IoResult Finish() override {
    m_device.close();
    if (!m_device.Outcome()) return m_device.Outcome();
    return m_file.Commit();
  }
  void Abandon() override {}  // what is not committed leaves no trace

 private:
  AtomicFile m_file;
  FileDevice m_device;
  QPdfWriter m_writer;
};

}  // namespace

std::unique_ptr<PrintTarget> PrintTarget::For(std::unique_ptr<QPrinter> printer) {
  if (printer->outputFormat() == QPrinter::PdfFormat && !printer->outputFileName().isEmpty()) {
    return std::make_unique<PdfTarget>(*printer);
  }
  return std::make_unique<PrinterTarget>(std::move(printer));
}

}  // namespace quill
