#pragma once
#include <QRectF>
#include <memory>

#include "base/IoResult.h"

class QPagedPaintDevice;
class QPrinter;

namespace quill {

/// Where pages go: to a printer, or into a PDF file that takes its place only when it is whole.
class PrintTarget {
 public:
  /// What the printer was set up for: a file when it prints to a PDF file.
  static std::unique_ptr<PrintTarget> For(std::unique_ptr<QPrinter> printer);
  virtual ~PrintTarget() = default;

  /// Before anything is painted.
  virtual IoResult Open() = 0;
  /// To be painted on from `Open` on until `Finish` or `Abandon`, the margins included.
  virtual QPagedPaintDevice& Device() = 0;
  /// In pixels of the device.
  virtual QRectF Paper() const = 0;
  /// Pixels an inch.
  virtual int Resolution() const = 0;
  virtual IoResult NewPage() = 0;
  /// The last page is painted and the painter has ended.
  virtual IoResult Finish() = 0;
  /// Nothing is to be left of what was painted, as far as the device can take it back. Called while the
  /// painter is active.
  virtual void Abandon() = 0;

  /// The pages that were asked for, counted from 1; 0 for no limit.
  int FirstPage() const { return m_firstPage; }
  int LastPage() const { return m_lastPage; }

 protected:
  PrintTarget(int firstPage, int lastPage) : m_firstPage(firstPage), m_lastPage(lastPage) {}

 private:
  int m_firstPage;
  int m_lastPage;
};

}  // namespace quill
