#pragma once
#include <string>

#include "base/NameSet.h"
#include "text/ui/CrystalEditView.h"

namespace quill {

class CommandDatabase;
class KeywordDatabase;

/// The view of a script: knows the language's vocabulary, and the names that the script defines.
class CQuillView : public CCrystalEditView {
  Q_OBJECT

 public:
  /// Both databases outlive the view.
  CQuillView(const KeywordDatabase& keywords, const CommandDatabase& commands, QWidget* parent = nullptr);

  /// The document's file; it decides which keywords are known. Empty for a new text.
  void SetFilePath(const std::string& path);
  const std::string& FilePath() const { return m_path; }
  /// The path with the file name cut off, without a separator at its end.
  const std::string& Folder() const { return m_folder; }

  /// Those of the file's language.
  const NameSet& Keywords() const;
  /// Names in lower case; call `VocabularyChanged` afterwards.
  NameSet& Functions() { return m_functions; }
  NameSet& Variables() { return m_variables; }
  void VocabularyChanged() { viewport()->update(); }

  const WordClasses& Words() const override;
  CommentMarkers GetCommentMarkers() const override { return kScriptCommentMarkers; }

 private:
  const KeywordDatabase& m_keywords;
  const CommandDatabase& m_commands;
  NameSet m_functions;
  NameSet m_variables;
  mutable WordClasses m_words;  ///< these and those of the databases; brought up to date when asked for
  std::string m_path;
  std::string m_folder;
};

}  // namespace quill
