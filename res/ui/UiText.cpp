#include "res/ui/UiText.h"

#include <QUtf8StringView>
#include <vector>

namespace quill {
namespace {

constexpr char16_t kEscapedBytes = 0xDC00;  ///< lone low surrogates: no UTF-8 stands for one
constexpr char16_t kFirstEscaped = kEscapedBytes + 0x80;
constexpr char16_t kLastEscaped = kEscapedBytes + 0xFF;

/// Length of the UTF-8 character at the beginning of `bytes`, or 0 when there is none.
size_t CharacterLength(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes.front());
  const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (length == 0 || length > bytes.size()) return 0;
  return QUtf8StringView(bytes.data(), static_cast<qsizetype>(length)).isValidUtf8() ? length : 0;
}

bool IsEscapedByte(const QString& text, qsizetype at) {
  const char16_t c = text[at].unicode();
  return c >= kFirstEscaped && c <= kLastEscaped && (at == 0 || !text[at - 1].isHighSurrogate());
}

}  // namespace

QString UiText(StringId id, std::initializer_list<QString> args) {
  std::vector<std::string> texts;
  for (const QString& arg : args) texts.push_back(arg.toStdString());
  const std::vector<std::string_view> views(texts.begin(), texts.end());
  return QString::fromStdString(FormatText(id, views));
}

QString FromBytes(std::string_view bytes) {
  QString text;
  while (!bytes.empty()) {
    size_t valid = 0;
    while (valid < bytes.size()) {
      const size_t length = CharacterLength(bytes.substr(valid));
      if (length == 0) break;
      valid += length;
    }
    text += QString::fromUtf8(bytes.data(), static_cast<qsizetype>(valid));
    bytes.remove_prefix(valid);
    if (bytes.empty()) break;
    text += QChar(static_cast<char16_t>(kEscapedBytes + static_cast<unsigned char>(bytes.front())));
    bytes.remove_prefix(1);
  }
  return text;
}

std::string ToBytes(const QString& text) {
  std::string bytes;
  qsizetype start = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (!IsEscapedByte(text, at)) continue;
    bytes += QStringView(text).mid(start, at - start).toUtf8().toStdString();
    bytes += static_cast<char>(text[at].unicode() - kEscapedBytes);
    start = at + 1;
  }
  return bytes + QStringView(text).mid(start).toUtf8().toStdString();
}

}  // namespace quill
