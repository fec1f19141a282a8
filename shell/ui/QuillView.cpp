#include "shell/ui/QuillView.h"

#include <utility>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"

namespace quill {

CQuillView::CQuillView(const KeywordDatabase& keywords, const CommandDatabase& commands, QWidget* parent)
    : CCrystalEditView(parent),
      m_keywords(keywords),
      m_commands(commands),
      m_functions(std::make_shared<const NameSet>()),
      m_variables(m_functions) {
  UseWords();
}

void CQuillView::UseWords() {
  m_words.Use({&Keywords(), &m_commands.Names(), m_functions.get(), m_variables.get()});
  viewport()->update();
}

void CQuillView::SetNames(std::shared_ptr<const NameSet> functions,
                          std::shared_ptr<const NameSet> variables) {
  if (functions == m_functions && variables == m_variables) return;
  m_functions = std::move(functions);
  m_variables = std::move(variables);
  UseWords();
}

void CQuillView::SetFilePath(const std::string& path) {
  m_path = path;
  const size_t slash = path.rfind('/');
  m_folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
  UseWords();
}

const NameSet& CQuillView::Keywords() const {
  return m_keywords.SetFor(m_path);
}

const WordClasses& CQuillView::Words() const {
  m_words.Refresh();
  return m_words;
}

}  // namespace quill
