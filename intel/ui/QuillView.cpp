#include "intel/ui/QuillView.h"

#include "intel/CommandDatabase.h"
#include "intel/KeywordDatabase.h"

namespace quill {

CQuillView::CQuillView(const KeywordDatabase& keywords, const CommandDatabase& commands, QWidget* parent)
    : CCrystalEditView(parent),
      m_keywords(keywords),
      m_commands(commands),
      m_keywordSet(&keywords.SetFor({})) {}

void CQuillView::SetFilePath(const std::string& path) {
  m_path = path;
  m_keywordSet = &m_keywords.SetFor(path);
  const size_t slash = path.rfind('/');
  m_folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
  VocabularyChanged();
}

bool CQuillView::HandleEditKey(QKeyEvent* event) {
  return (m_editKeyHook && m_editKeyHook(*event)) || CCrystalEditView::HandleEditKey(event);
}

WordSets CQuillView::Words() const {
  return {m_keywordSet, &m_commands.Names(), &m_functions, &m_variables};
}

uint32_t CQuillView::ColourLine(uint32_t state, int32_t line, TextBlock* blocks, int32_t* count) {
  return quill::ColourLine(*Buffer(), Words(), state, line, blocks, count);
}

}  // namespace quill
