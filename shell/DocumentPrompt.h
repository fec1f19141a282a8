#pragma once
#include <string>

#include "base/IoResult.h"
#include "res/Strings.h"

namespace quill {

/// A message or a question about a document, for a window to show: documents open no dialog.
struct DocumentPrompt {
  enum class Icon { kNone, kInformation, kQuestion, kWarning };
  enum class Buttons { kOk, kYesNo, kSaveDiscardCancel };

  std::string text;
  std::string detail;  ///< more words below the text, or empty
  std::string caption;
  Icon icon = Icon::kInformation;
  Buttons buttons = Buttons::kOk;

  static DocumentPrompt NowReadOnly();
  static DocumentPrompt ModifiedOnDisk(bool changedHereToo);
  /// `hint` says what is lost without.
  static DocumentPrompt SaveChanges(const std::string& title, StringId hint);
  static DocumentPrompt ReplaceExisting(const std::string& path);
  /// The file is open in another window, where there may be text that it does not hold.
  static DocumentPrompt ReplaceOpenFile(const std::string& path, bool unsavedThere);
  static DocumentPrompt CreateMissing(const std::string& path);
  static DocumentPrompt ReloadLosesChanges(const std::string& title);
  static DocumentPrompt OpenFailed(const IoResult& failure);
  static DocumentPrompt SaveFailed(const IoResult& failure);
};

}  // namespace quill
