#include "widgets/CodePageText.h"

#include <QApplication>
#include <QRegularExpression>
#include <algorithm>

#include "base/CodePage1252.h"

namespace quill {

QString FromCodePage(std::string_view bytes) {
  return QString::fromStdU16String(cp1252::ToUnicode(bytes));
}

std::optional<std::string> ToCodePage(const QString& text) {
  std::string bytes;
  bytes.reserve(static_cast<size_t>(text.size()));
  for (const char32_t c : text.toStdU32String()) {
    const int byte = cp1252::FromUnicode(c);
    if (byte < 0) return std::nullopt;
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

QValidator::State CodePageValidator::validate(QString& input, int& cursor) const {
  static const QRegularExpression lineEnd(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]"));
  const qsizetype end = input.indexOf(lineEnd);
  if (end >= 0) input.truncate(end);
  cursor = std::min(cursor, static_cast<int>(input.size()));
  if (ToCodePage(input)) return Acceptable;
  QApplication::beep();
  return Invalid;
}

}  // namespace quill
