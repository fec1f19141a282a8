#include "shell/DocumentPrompt.h"

#include "res/Strings.h"

namespace quill {
namespace {

std::string Of(StringId id) {
  return std::string(Text(id));
}

DocumentPrompt YesNo(StringId question, const std::string& name) {
  return {FormatText(question, {name}),
          {},
          Of(StringId::kProgramTitle),
          DocumentPrompt::Icon::kQuestion,
          DocumentPrompt::Buttons::kYesNo};
}

}  // namespace

DocumentPrompt DocumentPrompt::NowReadOnly() {
  return {Of(StringId::kNowReadOnly), {}, Of(StringId::kProgramTitle), Icon::kInformation, Buttons::kOk};
}

DocumentPrompt DocumentPrompt::ModifiedOnDisk(bool changedHereToo) {
  return {Of(StringId::kModifiedOnDisk), changedHereToo ? Of(StringId::kReloadLosesHint) : std::string(),
          Of(StringId::kModifiedOnDiskTitle), Icon::kQuestion, Buttons::kYesNo};
}

DocumentPrompt DocumentPrompt::SaveChanges(const std::string& title, StringId hint) {
  return {FormatText(StringId::kSaveChanges, {title}), Of(hint), Of(StringId::kProgramTitle), Icon::kQuestion,
          Buttons::kSaveDiscardCancel};
}

DocumentPrompt DocumentPrompt::ReloadLosesChanges(const std::string& title) {
  return YesNo(StringId::kReloadLosesChanges, title);
}

DocumentPrompt DocumentPrompt::ReplaceExisting(const std::string& path) {
  return YesNo(StringId::kReplaceExisting, path);
}

DocumentPrompt DocumentPrompt::ReplaceOpenFile(const std::string& path, bool unsavedThere) {
  DocumentPrompt prompt = YesNo(StringId::kReplaceOpenFile, path);
  if (unsavedThere) prompt.detail = Of(StringId::kReplaceOpenFileHint);
  return prompt;
}

DocumentPrompt DocumentPrompt::CreateMissing(const std::string& path) {
  return YesNo(StringId::kCreateMissingFile, path);
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
