// Our own view.
#include <QApplication>
#include <QScrollBar>

#include "bench/EditorDriver.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "shell/ui/QuillView.h"
#include "text/edit/UndoStep.h"
#include "text/search/ReplaceAll.h"
#include "text/search/Search.h"

namespace quill::bench {
namespace {

class QuillDriver : public EditorDriver {
 public:
  QuillDriver() {
    const std::string folder = QUILL_PROGRAM_FOLDER;
    if (!m_keywords.LoadKeywordSets(folder) || !m_commands.LoadCommandDatabase(folder))
      qFatal("The databases are not built");
    m_view = std::make_unique<CQuillView>(m_keywords, m_commands);
    ViewSettings settings;
    settings.fontName = "DejaVu Sans Mono";
    settings.fontSize = 10;
    m_view->ApplySettings(settings);
    m_buffer.NewBuffer();
    m_view->SetBuffer(&m_buffer);
  }

  QAbstractScrollArea& View() override { return *m_view; }

  bool Load(const std::string& path) override {
    if (!m_buffer.LoadFile(path)) return false;
    m_view->SetFilePath(path);
    m_view->SetCaretPos({0, 0});
    return true;
  }
  int LineCount() override { return m_buffer.LineCount(); }
  int LineLength(int line) override { return m_buffer.LineLength(line); }
  void GoTo(int line, int column) override { m_view->SetCaretPos({line, column}); }

  void ColourAll() override {
    uint32_t state = 0;
    for (int32_t line = 0; line < m_buffer.LineCount(); ++line) {
      const auto most = static_cast<size_t>(MostBlocks(m_buffer.LineLength(line)));
      if (m_blocks.size() < most) m_blocks.resize(most);
      int32_t count = 0;
      state = m_view->ColourLine(state, line, m_blocks.data(), &count);
    }
  }

  void InsertAt(int line, int column, const std::string& text) override {
    TextPosition end;
    m_buffer.InsertTextAt(nullptr, {line, column}, text, end);
    m_view->ApplyDamage();
  }
  void SelectLines(int first, int last) override { m_view->SetSelection({first, 0}, {last, 0}); }
  void ReplaceSelection(const std::string& text) override { m_view->ReplaceSelectedText(text); }

  int ReplaceAll(const std::string& text, const std::string& replacement) override {
    const TextSearch search(text, search_flag::kMatchCase);
    TextPosition found;
    if (!search.FindInText(m_buffer, {0, 0}, false, found)) return 0;
    const ReplaceAllOutcome outcome =
        ReplaceAllFrom(m_buffer, &m_view->Model(), search, replacement, found, m_buffer.EndOfText());
    m_view->ApplyDamage();
    return static_cast<int>(outcome.count);
  }
  void Undo() override { m_view->Undo(); }

  bool Find(const std::string& text) override {
    TextPosition found;
    return TextSearch(text, 0).FindInText(m_buffer, {0, 0}, false, found);
  }
  void ScrollSideways(int pixels) override {
    QScrollBar* bar = m_view->horizontalScrollBar();
    bar->setValue(bar->value() + pixels);
  }

 private:
  KeywordDatabase m_keywords;
  CommandDatabase m_commands;
  CCrystalTextBuffer m_buffer;
  std::unique_ptr<CQuillView> m_view;
  std::vector<TextBlock> m_blocks;
};

}  // namespace

std::unique_ptr<EditorDriver> MakeDriver() {
  return std::make_unique<QuillDriver>();
}

}  // namespace quill::bench
