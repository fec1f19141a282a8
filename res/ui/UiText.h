#pragma once
#include <QString>
#include <initializer_list>
#include <string>
#include <string_view>

#include "res/Strings.h"

/// Between the core's bytes and the toolkit's texts.
namespace quill {

/// A text of the tables, which are ASCII.
inline QString UiText(std::string_view text) {
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}
inline QString UiText(StringId id) {
  return UiText(Text(id));
}

/// A row of the string table with its placeholders filled in; the arguments may be any text.
QString UiText(StringId id, std::initializer_list<QString> args);

/// A sentence that the core made, or a path: UTF-8 as a rule. A byte that is none becomes a character of
/// its own (U+DC00 plus the byte), so that a file name of any bytes can be shown, and comes back whole.
QString FromBytes(std::string_view bytes);
std::string ToBytes(const QString& text);

}  // namespace quill
