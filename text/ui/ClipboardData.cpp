#include "text/ui/ClipboardData.h"

#include <QMimeData>

#include "base/CodePage1252.h"

namespace quill::clipboard_data {
namespace {

constexpr char kBlockFormat[] = "application/x-quill-column-block";

}  // namespace

QMimeData* Make(std::string_view text, bool block) {
  auto* data = new QMimeData;
  data->setText(QString::fromStdU16String(cp1252::ToUnicode(text)));
  if (block) data->setData(QString::fromLatin1(kBlockFormat), QByteArray("1"));
  return data;
}

bool IsBlock(const QMimeData& data) {
  return data.hasFormat(QString::fromLatin1(kBlockFormat));
}

std::string FromUnicode(const QString& text, int& replaced) {
  std::string bytes;
  bytes.reserve(static_cast<size_t>(text.size()));
  replaced = 0;
  for (const char32_t c : text.toStdU32String()) {
    const int byte = cp1252::FromUnicode(c);
    replaced += byte < 0 ? 1 : 0;
    bytes += byte < 0 ? '?' : static_cast<char>(byte);
  }
  return bytes;
}

std::string TextOf(const QMimeData& data, int& replaced) {
  return FromUnicode(data.text(), replaced);
}

}  // namespace quill::clipboard_data
