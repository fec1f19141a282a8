#include "shell/ui/Prompts.h"

#include "res/Strings.h"

namespace quill {

void Prompts::Tell(const std::string& text, const std::string& detail, DocumentPrompt::Icon icon) {
  Ask({text, detail, std::string(Text(StringId::kProgramTitle)), icon, DocumentPrompt::Buttons::kOk});
}

}  // namespace quill
