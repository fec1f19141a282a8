#include "shell/ui/QuillView.h"

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"

namespace quill {

CQuillView::CQuillView(const KeywordDatabase& keywords, const CommandDatabase& commands, QWidget* parent)
    : CCrystalEditView(parent),
      m_keywords(keywords),
      m_commands(commands),
      m_words({&keywords.SetFor({}), &commands.Names(), &m_functions, &m_variables}) {}

void CQuillView::SetFilePath(const std::string& path) {
  m_path = path;
  m_words.Use({&Keywords(), &m_commands.Names(), &m_functions, &m_variables});
  const size_t slash = path.rfind('/');
  m_folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
  VocabularyChanged();
}

const NameSet& CQuillView::Keywords() const {
  return m_keywords.SetFor(m_path);
}

const WordClasses& CQuillView::Words() const {
  m_words.Refresh();
  return m_words;
}

}  // namespace quill
