#pragma once
#include <QFile>
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

/// A sentence that the core made, or a path: bytes in the encoding of file names.
inline QString FromBytes(const std::string& bytes) {
  return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}
inline std::string ToBytes(const QString& text) {
  return QFile::encodeName(text).toStdString();
}

}  // namespace quill
