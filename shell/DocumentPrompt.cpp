#include "shell/DocumentPrompt.h"

#include "res/Strings.h"

namespace quill {
namespace {

std::string Of(StringId id) {
  return std::string(Text(id));
}

}  // namespace

DocumentPrompt DocumentPrompt::NowReadOnly() {
  return {Of(StringId::kNowReadOnly), {}, Of(StringId::kProgramTitle), Icon::kInformation, Buttons::kOk};
}

DocumentPrompt DocumentPrompt::ModifiedOnDisk() {
  return {Of(StringId::kModifiedOnDisk),
          {},
          Of(StringId::kModifiedOnDiskTitle),
          Icon::kQuestion,
          Buttons::kYesNo};
}

DocumentPrompt DocumentPrompt::SaveChanges(const std::string& title) {
  return {FormatText(StringId::kSaveChanges, {title}), Of(StringId::kSaveChangesHint),
          Of(StringId::kProgramTitle), Icon::kQuestion, Buttons::kSaveDiscardCancel};
}

DocumentPrompt DocumentPrompt::ReloadLosesChanges(const std::string& title) {
  return {FormatText(StringId::kReloadLosesChanges, {title}),
          {},
          Of(StringId::kProgramTitle),
          Icon::kQuestion,
          Buttons::kYesNo};
}

DocumentPrompt DocumentPrompt::OpenFailed(const IoResult& failure) {
  return {Of(StringId::kOpenFailed), failure.Message() + ".", Of(StringId::kProgramTitle), Icon::kWarning,
          Buttons::kOk};
}

DocumentPrompt DocumentPrompt::SaveFailed(const IoResult& failure) {
  return {Of(StringId::kSaveFailed), failure.Message() + ".", Of(StringId::kProgramTitle), Icon::kWarning,
          Buttons::kOk};
}

}  // namespace quill
