#pragma once
#include <memory>
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
  /// What the script defines, in lower case. The sets do not change any more; the same ones cost nothing.
  void SetNames(std::shared_ptr<const NameSet> functions, std::shared_ptr<const NameSet> variables);
  const NameSet& Functions() const { return *m_functions; }
  const NameSet& Variables() const { return *m_variables; }

  const WordClasses& Words() const override;
  CommentMarkers GetCommentMarkers() const override { return kScriptCommentMarkers; }

 private:
  void UseWords();

  const KeywordDatabase& m_keywords;
  const CommandDatabase& m_commands;
  std::shared_ptr<const NameSet> m_functions;
  std::shared_ptr<const NameSet> m_variables;
  mutable WordClasses m_words;  ///< these and those of the databases; brought up to date when asked for
  std::string m_path;
  std::string m_folder;
};

}  // namespace quill
