#pragma once
#include <QString>
#include <string>
#include <string_view>

class QMimeData;

namespace quill {

/// Text in the code page to clipboard data and back.
namespace clipboard_data {

/// `block`: the text is a column selection and can be pasted as one.
QMimeData* Make(std::string_view text, bool block);
bool IsBlock(const QMimeData& data);
/// Characters outside the code page become "?"; `replaced` counts them.
std::string TextOf(const QMimeData& data, int& replaced);
std::string FromUnicode(const QString& text, int& replaced);

}  // namespace clipboard_data
}  // namespace quill
