// What assistive technology is told of the program, and what it finds when it asks.
#include <QAccessible>
#include <QAccessibleTextInterface>
#include <QApplication>
#include <QListView>
#include <QTabBar>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <map>

#include "res/ui/UiText.h"
#include "shell/ui/DialogPrompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "support/Paths.h"
#include "ui/ScreenFixture.h"

// A platform is told by its desktop that somebody listens. The offscreen one has none, and the public
// interface no call for it: these are the two that the platforms use, which the toolkit exports.
class QPlatformAccessibility {
 public:
  void setActive(bool active);
};
class QPlatformIntegration {
 public:
  QPlatformAccessibility* accessibility() const;
};

namespace quill {
namespace {

void SetListening(bool listening) {
  static const QPlatformIntegration anyPlatform;  // it has one object for all that have none of their own
  anyPlatform.accessibility()->setActive(listening);
}

class ScreenReader : public ScreenFixture {
 protected:
  ScreenReader() {
    SetListening(true);
    s_told = &m_told;
    QAccessible::installUpdateHandler(Hear);
  }
  ~ScreenReader() override {
    QAccessible::installUpdateHandler(nullptr);
    SetListening(false);
  }

  static QAccessibleInterface& Of(QObject& object) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&object);
    if (interface == nullptr) throw std::runtime_error("no interface");
    return *interface;
  }
  QAccessibleTextInterface& TextOfView() { return *Of(View()).textInterface(); }
  QAccessibleEditableTextInterface& EditorOfView() { return *Of(View()).editableTextInterface(); }
  /// What was told since the last call, a line each.
  std::string Told() {
    Pump();
    return std::exchange(m_told, {});
  }
  /// What is told while a key is pressed.
  std::string ToldOf(const std::string& key) {
    Told();
    Press(key);
    return Told();
  }
  static std::string NameOf(QObject& object) { return ToBytes(Of(object).text(QAccessible::Name)); }

 private:
  static std::string Quoted(const QString& text) {
    return " '" + ToBytes(QString(text).replace('\n', '$')) + "'\n";
  }
  static void Hear(QAccessibleEvent* event) {
    const bool ofText = qobject_cast<CQuillView*>(event->object()) != nullptr;
    switch (event->type()) {
      case QAccessible::TextInserted: {
        const auto& told = *static_cast<QAccessibleTextInsertEvent*>(event);
        if (ofText) *s_told += "+" + std::to_string(told.changePosition()) + Quoted(told.textInserted());
        break;
      }
      case QAccessible::TextRemoved: {
        const auto& told = *static_cast<QAccessibleTextRemoveEvent*>(event);
        if (ofText) *s_told += "-" + std::to_string(told.changePosition()) + Quoted(told.textRemoved());
        break;
      }
      case QAccessible::TextCaretMoved:
        if (ofText) {
          *s_told += "caret " +
                     std::to_string(static_cast<QAccessibleTextCursorEvent*>(event)->cursorPosition()) + "\n";
        }
        break;
      case QAccessible::TextSelectionChanged: {
        const auto& told = *static_cast<QAccessibleTextSelectionEvent*>(event);
        if (ofText) {
          *s_told += "selected " + std::to_string(told.selectionStart()) + "-" +
                     std::to_string(told.selectionEnd()) + "\n";
        }
        break;
      }
      case QAccessible::VisibleDataChanged:
        if (ofText) *s_told += "all changed\n";
        break;
      case QAccessible::Focus:
        *s_told += "focus" + Quoted(event->accessibleInterface()->text(QAccessible::Name));
        break;
      case QAccessible::ObjectShow:
        if (event->accessibleInterface()->role() == QAccessible::ToolTip)
          *s_told += "tip" + Quoted(event->accessibleInterface()->text(QAccessible::Name));
        break;
      default:
        break;
    }
  }

  static inline std::string* s_told = nullptr;
  std::string m_told;
};

TEST_F(ScreenReader, IsToldOfTextCaretAndSelectionInOrder) {
  Start();
  Open("main.vsl", "one\r\ntwo three\r\n\xE4\r\n");
  EXPECT_EQ(NameOf(View()), "main.vsl");
  const struct {
    const char* key;
    const char* told;
  } rows[] = {
      {"Ctrl+End", "caret 16\n"},
      {"x", "+16 'x'\ncaret 17\n"},
      {"Backspace", "-16 'x'\ncaret 16\n"},
      {"Backspace", "-15 '$'\ncaret 15\n"},
      {"Backspace", "-14 '\xC3\xA4'\ncaret 14\n"},
      {"Return", "+14 '$'\ncaret 15\n"},
      {"(", "+15 '('\n+16 ')'\ncaret 16\n"},
      {"Ctrl+Z", "-16 ')'\n"},
      {"Ctrl+Z", "-15 '('\ncaret 15\n"},
      {"Ctrl+Home", "caret 0\n"},
      {"Shift+Down", "caret 4\nselected 0-4\n"},
      {"Shift+Right", "caret 5\nselected 0-5\n"},
      {"y", "-0 'one$t'\n+0 'y'\ncaret 1\nselected 1-1\n"},
      {"Ctrl+A", "caret 11\nselected 0-11\n"},
      {"Delete", "-0 'ywo three$$'\ncaret 0\nselected 0-0\n"},
      {"Ctrl+Z", "+0 'ywo three$$'\ncaret 11\n"},
      {"F5", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(ToldOf(row.key), row.told) << row.key;
}

TEST_F(ScreenReader, IsToldOfEditsInAnotherWindowOfTheScript) {
  Start();
  Open("main.vsl", "one\r\ntwo");
  View().SetCaretPos({1, 1});
  CQuillView& first = View();
  Choose("Window > New Window");
  ASSERT_NE(&View(), &first);
  EXPECT_EQ(NameOf(View()), "main.vsl:2");
  Told();
  Type("x");
  EXPECT_EQ(Told(), "+0 'x'\ncaret 1\n+0 'x'\ncaret 6\n") << "in both, and where the caret of each is now";
}

TEST_F(ScreenReader, HearsOfManyChangesAndOfAnotherTextOnlyThatThereWereSome) {
  Start();
  std::string text;
  for (int i = 0; i < 3000; ++i) text += "a\r\n";
  CQuillDoc& document = Open("main.vsl", text);
  Told();
  View().SelectAll();
  EXPECT_EQ(Told(), "caret 6000\nselected 0-6000\n");
  Press("Ctrl+Alt+C");
  const std::string told = Told();
  EXPECT_TRUE(told.starts_with("all changed\n")) << told.substr(0, 100);
  EXPECT_EQ(told.find('+'), std::string::npos);
  EXPECT_EQ(TextOfView().characterCount(), static_cast<int>(TextOf(document).size()));
  m_folder.Write("main.vsl", "new");
  ASSERT_TRUE(document.Reload());
  EXPECT_NE(Told().find("all changed\n"), std::string::npos);
  EXPECT_EQ(TextOfView().text(0, 100), "new");
}

TEST_F(ScreenReader, ReadsTextByOffsets) {
  Start();
  Open("main.vsl", "if (a)\r\n{\r\n\tb\xE4r = 1;\r\n}\r\nend");
  QAccessibleTextInterface& text = TextOfView();
  EXPECT_EQ(ToBytes(text.text(0, text.characterCount())), "if (a)\n{\n\tb\xC3\xA4r = 1;\n}\nend");
  EXPECT_EQ(text.text(7, 10), "{\n\t");
  const struct {
    int offset;
    QAccessible::TextBoundaryType unit;
    const char* text;
    int start;
    int end;
  } rows[] = {{10, QAccessible::WordBoundary, "b\xC3\xA4r", 10, 13},
              {10, QAccessible::CharBoundary, "b", 10, 11},
              {12, QAccessible::LineBoundary, "\tb\xC3\xA4r = 1;\n", 9, 19},
              {99, QAccessible::LineBoundary, "end", 21, 24},
              {24, QAccessible::CharBoundary, "", 24, 24}};
  for (const auto& row : rows) {
    int start = 0, end = 0;
    EXPECT_EQ(ToBytes(text.textAtOffset(row.offset, row.unit, &start, &end)), row.text);
    EXPECT_EQ(start, row.start);
    EXPECT_EQ(end, row.end);
  }
  int start = 0, end = 0;
  EXPECT_EQ(text.textBeforeOffset(10, QAccessible::LineBoundary, &start, &end), "{\n");
  EXPECT_EQ(text.textAfterOffset(7, QAccessible::WordBoundary, &start, &end), "\n");
  const QString word = text.attributes(0, &start, &end);
  EXPECT_EQ(std::pair(start, end), std::pair(0, 2)) << "a keyword";
  EXPECT_NE(word, text.attributes(14, &start, &end)) << "another colour";
  text.setCursorPosition(10);
  EXPECT_EQ(Caret(), "3:2");
  EXPECT_EQ(text.cursorPosition(), 10);
  text.addSelection(3, 8);
  EXPECT_EQ(View().Selection(), (TextRange{{0, 3}, {1, 1}}));
  EXPECT_EQ(text.selectionCount(), 1);
  text.selection(0, &start, &end);
  EXPECT_EQ(std::pair(start, end), std::pair(3, 8));
  text.removeSelection(0);
  EXPECT_EQ(text.selectionCount(), 0);
}

TEST_F(ScreenReader, FindsCharactersWhereTheyAreSeen) {
  Start();
  Open("main.vsl", "if (a)\r\n{\r\n\tb = 1;\r\n}\r\nend");
  QAccessibleTextInterface& text = TextOfView();
  for (int offset = 0; offset < text.characterCount(); ++offset) {
    const QRect place = text.characterRect(offset);
    EXPECT_EQ(place.height(), View().LineHeight());
    EXPECT_EQ(text.offsetAtPoint(place.center()), offset);
    EXPECT_EQ(text.offsetAtPoint(place.topLeft() + QPoint(place.width() - 1, 1)), offset);
  }
  EXPECT_EQ(text.offsetAtPoint(View().viewport()->mapToGlobal(QPoint(-5, 5))), -1);
  View().SetCaretPos({1, 0});
  Press("Alt+C");
  EXPECT_TRUE(text.characterRect(11).isEmpty()) << "hidden in the block";
  EXPECT_FALSE(text.characterRect(7).isEmpty());
  text.scrollToSubstring(11, 12);
  EXPECT_FALSE(text.characterRect(11).isEmpty());
}

TEST_F(ScreenReader, SeesTheLinesOfAColumnSelectionOneByOne) {
  Start();
  Open("main.vsl", "abcd\r\nef\r\nghij");
  View().SetCaretPos({0, 1});
  PressAll({"Alt+Shift+Right", "Alt+Shift+Right", "Alt+Shift+Down", "Alt+Shift+Down"});
  QAccessibleTextInterface& text = TextOfView();
  std::string seen;
  for (int i = 0; i < text.selectionCount(); ++i) {
    int start = 0, end = 0;
    text.selection(i, &start, &end);
    seen += ToBytes(text.text(start, end)) + "|";
  }
  EXPECT_EQ(seen, "bc|f|hi|");
}

TEST_F(ScreenReader, EditsInStepsThatCanBeUndone) {
  Start();
  CQuillDoc& document = Open("main.vsl", "one\r\ntwo");
  EXPECT_TRUE(Of(View()).state().editable);
  EditorOfView().insertText(3, QString::fromLatin1("\n2\xE4"));
  EditorOfView().deleteText(0, 1);
  EditorOfView().replaceText(6, 8, "XY");
  EXPECT_EQ(ActiveText(), "ne|2\xE4|XYo");
  EditorOfView().insertText(0, QString(QChar(0x4E00)));
  EXPECT_EQ(ActiveText(), "ne|2\xE4|XYo") << "not in the code page";
  for (int i = 0; i < 3; ++i) Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "one|two");
  document.ToggleReadOnly();
  EXPECT_FALSE(Of(View()).state().editable);
  EXPECT_TRUE(Of(View()).state().readOnly);
  EditorOfView().insertText(0, "x");
  EXPECT_EQ(ActiveText(), "one|two");
}

TEST_F(ScreenReader, HearsTheRowThatIsChosenFromTheCompletionList) {
  Start();
  Open("main.vsl", "");
  Type("vec_");
  EXPECT_EQ(Told().find("focus 'vec"), std::string::npos)
      << "what is only proposed does not talk over typing";
  Press("Ctrl+Space");
  const std::string first = Selected();
  EXPECT_EQ(ToldOf("Down"), "focus '" + first + "'\n");
  const std::string second = ToldOf("Down");
  EXPECT_EQ(second, "focus '" + Selected() + "'\n");
  EXPECT_NE(Selected(), first);
  QAccessibleInterface* row = Of(*List()).child(List()->currentIndex().row());
  EXPECT_NE(ToBytes(row->text(QAccessible::Description)).find("("), std::string::npos) << "its parameters";
  const std::string typed = ToldOf("s");
  EXPECT_NE(typed.find("+4 's'\n"), std::string::npos) << typed;
  EXPECT_NE(typed.find("focus 'main.vsl'\n"), std::string::npos) << typed;
  Press("Down");
  EXPECT_EQ(ToldOf("Escape"), "focus 'main.vsl'\n");
}

TEST_F(ScreenReader, HearsTheTipOnce) {
  Start();
  Open("main.vsl", "");
  Press("Escape");
  Type("wait(");
  const std::string told = Told();
  ASSERT_FALSE(Tip().empty());
  EXPECT_NE(told.find("tip '" + Tip() + "'\n"), std::string::npos) << told;
  Type("a");
  EXPECT_EQ(Told().find("tip"), std::string::npos);
}

TEST_F(ScreenReader, ReadsTabsAndStatusPanes) {
  Start();
  Open("a.vsl", "");
  Open("b.vsl", "");
  Type("x");
  const auto tabs = [&] {
    std::string names;
    for (int i = 0; i < TabBar().count(); ++i)
      names += ToBytes(Of(TabBar()).child(i)->text(QAccessible::Name)) + "|";
    return names;
  };
  EXPECT_EQ(tabs(), "a.vsl|b.vsl, modified|");
  Press("Ctrl+S");
  EXPECT_EQ(tabs(), "a.vsl|b.vsl|");
  const auto pane = [&](const std::string& name) -> QAccessibleInterface* {
    for (QWidget* widget : Frame().findChildren<QWidget*>()) {
      QAccessibleInterface* found = QAccessible::queryAccessibleInterface(widget);
      if (found != nullptr && ToBytes(found->text(QAccessible::Name)) == name) return found;
    }
    return nullptr;
  };
  ASSERT_NE(pane("Ln 1, Col 2"), nullptr);
  ASSERT_NE(pane("INS"), nullptr);
  ASSERT_NE(pane("INS")->actionInterface(), nullptr);
  pane("INS")->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(View().OverwriteMode());
  EXPECT_NE(pane("OVR"), nullptr);
}

/// What a window has that is reached by the Tab key or clicked and says nothing about itself, a line each.
std::string Nameless(QWidget& window) {
  std::string list;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    const bool reached = (widget->focusPolicy() & Qt::TabFocus) != 0 || widget->inherits("QAbstractButton");
    const QWidget* parent = widget->parentWidget();
    const bool partOfField = parent->inherits("QComboBox") || parent->inherits("QComboBoxPrivateContainer") ||
                             parent->inherits("QLineEdit") || parent->inherits("QAbstractSpinBox");
    const bool toolkits = widget->objectName().startsWith("qt_") || parent->inherits("QTabBar");
    if (!reached || partOfField || toolkits || widget->focusProxy() != nullptr) continue;
    QAccessibleInterface* told = QAccessible::queryAccessibleInterface(widget);
    bool named = told != nullptr && !told->text(QAccessible::Name).isEmpty();
    if (const auto* tabs = qobject_cast<QTabBar*>(widget)) named = !tabs->tabText(0).isEmpty();
    if (!named)
      list +=
          std::string(widget->metaObject()->className()) + " in " + parent->metaObject()->className() + "\n";
  }
  return list;
}

TEST_F(ScreenReader, EverythingThatTakesTheFocusHasAName) {
  for (const char* name : {"quill.qhc", "quill.qch"}) {
    const std::filesystem::path made = std::string(QUILL_BIN_DIR "/") + name;
    if (std::filesystem::exists(made)) std::filesystem::copy(made, m_folder.Path("bin"));
  }
  Start();
  EXPECT_EQ(Nameless(Frame()), "") << "with the start page";
  Open("main.vsl", "function f()\n{\n}\n");
  DialogPrompts prompts;
  prompts.SetParent(&Frame());
  const std::map<std::string, std::function<void()>> windows = {
      {"main", [] {}},
      {"find", [&] { Press("Ctrl+F"); }},
      {"replace", [&] { Press("Ctrl+H"); }},
      {"find in files", [&] { Press("Ctrl+Shift+F"); }},
      {"manual", [&] { Press("F1"); }},
      {"variable", [&] { Choose("Edit > Insert > Insert Variable"); }},
      {"to-do list", [&] { Choose("View > To-do List"); }},
      {"line", [&] { prompts.ChooseLine(1, 3); }},
      {"comment", [&] { prompts.AskForScriptLine(StringId::kAddCommentTitle, StringId::kAddCommentPrompt); }},
      {"margins", [&] { prompts.ChooseMargins({}); }},
      {"save list",
       [&] {
         prompts.ChooseWhatToSave({"a", "b"});
       }},
      {"recovery", [&] { prompts.ChooseRecovery({}); }},
      {"about", [&] { prompts.ShowAbout(); }},
  };
  for (const auto& [name, open] : windows) {
    QTimer modal;
    QObject::connect(&modal, &QTimer::timeout, [] {
      if (QWidget* dialog = QApplication::activeModalWidget()) {
        EXPECT_EQ(Nameless(*dialog), "") << ToBytes(dialog->windowTitle());
        dialog->close();
      }
    });
    modal.start(0);
    QApplication::setActiveWindow(&Frame());
    View().setFocus();
    open();
    Pump();
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible()) continue;
      EXPECT_EQ(Nameless(*window), "") << name;
      if (window != &Frame()) window->close();
    }
  }
}

}  // namespace
}  // namespace quill
