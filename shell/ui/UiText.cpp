#include "shell/ui/UiText.h"

#include <vector>

namespace quill {

QString UiText(StringId id, std::initializer_list<QString> args) {
  std::vector<std::string> texts;
  for (const QString& arg : args) texts.push_back(arg.toStdString());
  const std::vector<std::string_view> views(texts.begin(), texts.end());
  return QString::fromStdString(FormatText(id, views));
}

}  // namespace quill
