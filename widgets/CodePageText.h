#pragma once
#include <QString>
#include <QValidator>
#include <optional>
#include <string>
#include <string_view>

namespace quill {

/// Script text, bytes of the code page, to the toolkit's text and back.
QString FromCodePage(std::string_view bytes);
/// Nothing when the code page lacks one of the characters.
std::optional<std::string> ToCodePage(const QString& text);

/// Accepts what one line of a script can hold: other characters are refused with the system beep, of
/// several pasted lines only the first is taken.
class CodePageValidator : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& cursor) const override;
};

}  // namespace quill
