// QScintilla with its C++ lexer held to the classes that a script has, and its folding marks, which our
// view finds and shows as well; no preprocessor tracking and no scroll-width tracking.
#include <Qsci/qscilexercpp.h>
#include <Qsci/qsciscintilla.h>

#include <QApplication>
#include <fstream>
#include <iterator>

#include "bench/EditorDriver.h"
#include "bench/peers/ScriptWords.h"

namespace quill::bench {
namespace {

class ScriptLexer : public QsciLexerCPP {
 public:
  ScriptLexer() : QsciLexerCPP(nullptr, true) {}
  const char* keywords(int set) const override {
    if (set == 1) return kScriptKeywords;
    if (set == 2) return kScriptCommands;
    if (set == 4) return kScriptNames;
    return nullptr;
  }
};

class ScintillaDriver : public EditorDriver {
 public:
  ScintillaDriver() {
    m_view.setUtf8(false);
    m_lexer.setFont(QApplication::font());
    m_view.setLexer(&m_lexer);
    m_view.setFolding(QsciScintilla::BoxedTreeFoldStyle);
    SetProperty("fold", "1");
    SetProperty("lexer.cpp.track.preprocessor", "0");
    SetProperty("lexer.cpp.update.preprocessor", "0");
    m_view.setCaretLineVisible(true);
    m_view.setEolMode(QsciScintilla::EolWindows);
    m_view.setAutoIndent(true);
    m_view.setTabWidth(3);
    m_view.setMarginLineNumbers(0, true);
    m_view.setMarginWidth(0, QStringLiteral("0000000"));
    m_view.setMarginWidth(1, 0);
  }

  QAbstractScrollArea& View() override { return m_view; }

  bool Load(const std::string& path) override {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file) return false;
    Send(Sci::SCI_SETUNDOCOLLECTION, 0);
    Send(Sci::SCI_CLEARALL);
    // Without room to spare the gap buffers double.
    Send(Sci::SCI_ALLOCATE, text.size() + kSpareBytes);
    m_view.SendScintilla(Sci::SCI_ADDTEXT, text.size(), text.data());
    Send(Sci::SCI_SETUNDOCOLLECTION, 1);
    Send(Sci::SCI_EMPTYUNDOBUFFER);
    GoTo(0, 0);
    return true;
  }

  int LineCount() override { return m_view.lines(); }
  int LineLength(int line) override {
    return static_cast<int>(Send(Sci::SCI_GETLINEENDPOSITION, static_cast<size_t>(line)) -
                            Send(Sci::SCI_POSITIONFROMLINE, static_cast<size_t>(line)));
  }
  void GoTo(int line, int column) override {
    const long start = Send(Sci::SCI_POSITIONFROMLINE, static_cast<size_t>(line));
    Send(Sci::SCI_GOTOPOS, static_cast<size_t>(start + column));
  }
  // Our own pass finds the foldable blocks too.
  void ColourAll() override {
    SetProperty("fold", "1");
    Send(Sci::SCI_COLOURISE, 0, -1);
    SetProperty("fold", "0");
  }

  void InsertAt(int line, int column, const std::string& text) override {
    const long start = Send(Sci::SCI_POSITIONFROMLINE, static_cast<size_t>(line));
    m_view.SendScintilla(Sci::SCI_INSERTTEXT, static_cast<unsigned long>(start + column), text.c_str());
  }
  void SelectLines(int first, int last) override { m_view.setSelection(first, 0, last, 0); }
  void ReplaceSelection(const std::string& text) override {
    m_view.SendScintilla(Sci::SCI_REPLACESEL, text.c_str());
  }
  int ReplaceAll(const std::string& text, const std::string& replacement) override {
    // Its accessibility support counts all characters before the place on every notification.
    Send(Sci::SCI_SETMODEVENTMASK, 0);
    Send(Sci::SCI_BEGINUNDOACTION);
    Send(Sci::SCI_SETSEARCHFLAGS, Sci::SCFIND_MATCHCASE);
    Send(Sci::SCI_SETTARGETSTART, 0);
    Send(Sci::SCI_SETTARGETEND, static_cast<size_t>(Send(Sci::SCI_GETLENGTH)));
    int hits = 0;
    while (m_view.SendScintilla(Sci::SCI_SEARCHINTARGET, text.size(), text.c_str()) >= 0) {
      m_view.SendScintilla(Sci::SCI_REPLACETARGET, replacement.size(), replacement.c_str());
      ++hits;
      Send(Sci::SCI_SETTARGETSTART, static_cast<size_t>(Send(Sci::SCI_GETTARGETEND)));
      Send(Sci::SCI_SETTARGETEND, static_cast<size_t>(Send(Sci::SCI_GETLENGTH)));
    }
    Send(Sci::SCI_ENDUNDOACTION);
    Send(Sci::SCI_SETMODEVENTMASK, Sci::SC_MODEVENTMASKALL);
    return hits;
  }
  void Undo() override {
    Send(Sci::SCI_SETMODEVENTMASK, 0);
    Send(Sci::SCI_UNDO);
    Send(Sci::SCI_SETMODEVENTMASK, Sci::SC_MODEVENTMASKALL);
  }

  bool Find(const std::string& text) override {
    Send(Sci::SCI_SETSEARCHFLAGS, 0);
    Send(Sci::SCI_SETTARGETSTART, 0);
    Send(Sci::SCI_SETTARGETEND, static_cast<size_t>(Send(Sci::SCI_GETLENGTH)));
    return m_view.SendScintilla(Sci::SCI_SEARCHINTARGET, text.size(), text.c_str()) >= 0;
  }
  void ScrollSideways(int pixels) override {
    Send(Sci::SCI_SETXOFFSET, static_cast<size_t>(Send(Sci::SCI_GETXOFFSET) + pixels));
  }

 private:
  static constexpr size_t kSpareBytes = 1 << 20;
  using Sci = QsciScintillaBase;

  long Send(unsigned int message, size_t first = 0, long second = 0) {
    return m_view.SendScintilla(message, first, second);
  }
  void SetProperty(const char* name, const char* value) {
    m_view.SendScintilla(Sci::SCI_SETPROPERTY, name, value);
  }

  QsciScintilla m_view;
  ScriptLexer m_lexer;
};

}  // namespace

std::unique_ptr<EditorDriver> MakeDriver() {
  return std::make_unique<ScintillaDriver>();
}

}  // namespace quill::bench
