#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

#include "res/ui/UiText.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class ScriptTools : public ShellFixture {
 protected:
  /// Opens a text with the caret where it has "^".
  void Begin(std::string text) {
    if (m_app == nullptr) Start();
    const size_t caret = text.find('^');
    text.erase(caret, 1);
    Open(std::to_string(++m_files) + ".vsl", text);
    const auto lines = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(caret), '\n');
    const size_t lineStart = caret == 0 ? 0 : text.rfind('\n', caret - 1) + 1;
    View().SetCaretPos({static_cast<int32_t>(lines), static_cast<int32_t>(caret - lineStart)});
  }
  /// The text with "^" at the caret.
  std::string Shown() {
    const TextPosition caret = View().CaretPos();
    std::string before;
    std::string after;
    Document().Buffer().CopyRange({{}, caret}, before, "|");
    Document().Buffer().CopyRange({caret, Document().Buffer().EndOfText()}, after, "|");
    return before + "^" + after;
  }
  /// Types a text; "<Tab>" and the like are keys.
  void TypeKeys(const std::string& keys) {
    for (size_t i = 0; i < keys.size();) {
      const size_t end = keys[i] == '<' ? keys.find('>', i) : i;
      if (end == i) {
        Type(std::string(1, keys[i]));
      } else {
        Press(keys.substr(i + 1, end - i - 1));
      }
      i = end + 1;
    }
  }
  static QDialog* Dialog() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
  static void Click(const QString& text) {
    for (auto* button : Dialog()->findChildren<QPushButton*>()) {
      if (button->text().remove(u'&') == text) return QTest::mouseClick(button, Qt::LeftButton);
    }
    FAIL() << "no button " << text.toStdString();
  }

 private:
  int m_files = 0;
};

const std::string kSlashes(30, '/');

TEST_F(ScriptTools, WriteInThePlaceOfTheSelectionAsOneStep) {
  struct Case {
    std::string menu;
    std::function<void()> answer;
    std::string text;
  };
  const Case cases[] = {
      {"Add Comment", [&] { m_prompts.ExpectScriptLine("Add Comment", "The \x80"); },
       "a" + kSlashes + "|// The \x80|" + kSlashes + "^d"},
      {"Add Comment", [&] { m_prompts.ExpectScriptLine("Add Comment", ""); },
       "a" + kSlashes + "|// |" + kSlashes + "^d"},
      {"Insert Image", [&] { m_prompts.ExpectFile("/media/w\xC3\xA4nd.tga.bmp"); },
       "aBMAP IM_W\xC4ND =<W\xC4ND.TGA.BMP>;^d"},
      {"Insert Image", [&] { m_prompts.ExpectFile("/m/\xCE\xA9\n.bmp"); }, "aBMAP IM_?? =<??.BMP>;^d"},
      {"Add Comment", [&] { m_prompts.ExpectScriptLine("Add Comment", std::nullopt); }, "abc^d"},
      {"Insert Image", [&] { m_prompts.ExpectFile(""); }, "abc^d"},
  };
  Begin("abc^d");
  for (const Case& c : cases) {
    View().SetSelection({0, 1}, {0, 3});
    c.answer();
    ASSERT_TRUE(Choose("Edit > Insert > " + c.menu));
    EXPECT_EQ(Shown(), c.text);
    if (c.text != "abc^d") Press("Ctrl+Z");
    EXPECT_EQ(ActiveText(), "abcd");
    EXPECT_FALSE(View().CanUndo()) << c.text;
  }
  EXPECT_EQ(m_prompts.LastSuggestion(), m_folder.Folder().string()) << "beside the script";
  Document().Buffer().SetReadOnly(true);
  for (const char* menu : {"Add Comment", "Insert Image", "Insert Variable"}) {
    EXPECT_FALSE(Choose(std::string("Edit > Insert > ") + menu));
  }
}

TEST_F(ScriptTools, VariableDialogShowsTheDefinitionOrWhatIsMissing) {
  Begin("^");
  const auto preview = [] { return ToBytes(Dialog()->findChild<QTextEdit*>()->toPlainText()); };
  ASSERT_TRUE(Choose("Edit > Insert > Insert Variable"));
  EXPECT_EQ(preview(), "The variable has no name yet.");
  Press("Return");
  ASSERT_NE(Dialog(), nullptr) << "there is nothing to insert";
  TypeKeys("<Shift+Tab><Down><Down><Down><Tab>speed");
  QKeyEvent omega(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(QChar(0x3A9)));
  QApplication::sendEvent(QApplication::focusWidget(), &omega);
  TypeKeys("<Tab>a\"b");
  EXPECT_EQ(preview(), "A text cannot hold a double quote.");
  TypeKeys("<Backspace><Backspace><Tab>why");
  EXPECT_EQ(preview(), "string speed = \"a\"; // why");
  Press("Return");
  EXPECT_EQ(Shown(), "string speed = \"a\"; // why^");
  EXPECT_EQ(QApplication::focusWidget(), &View());
  Press("Ctrl+Z");
  EXPECT_EQ(Shown(), "^");

  ASSERT_TRUE(Choose("Edit > Insert > Insert Variable"));
  EXPECT_EQ(Dialog()->findChild<QComboBox*>()->currentText(), "string") << "the type used last";
  TypeKeys("x<Escape>");
  EXPECT_EQ(Dialog(), nullptr);
  EXPECT_EQ(Shown(), "^");
}

TEST_F(ScriptTools, ToDoListKeepsItsBytes) {
  Start();
  struct Case {
    std::string before;
    std::string keys;
    QString button;
    std::string after;
  };
  const Case cases[] = {
      {"", "one<Return>(2<Tab>", "OK", "one\r\n(2\t"},
      {"\xA0\r\nb\r\n\x80\x81", "", "OK", "\xA0\r\nb\r\n\x80\x81"},
      {"a\nb\r", "<Ctrl+End>c", "OK", "a\r\nb\r\nc"},
      {"a\r\nb", "<Ctrl+A><Del><Ctrl+Return>", "", ""},
      {"a", "<Ctrl+A><Ctrl+X><Ctrl+V><Ctrl+V><Ctrl+Z>", "OK", "a"},
      {"a\nb", "x", "Cancel", "a\nb"},
      {"a\nb", "x<Escape>", "", "a\nb"},
  };
  for (const Case& c : cases) {
    m_folder.Write("bin/todo.dat", c.before);
    ASSERT_TRUE(Choose("View > To-do List"));
    TypeKeys(c.keys);
    if (!c.button.isEmpty()) Click(c.button);
    Pump();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(m_folder.Read("bin/todo.dat"), c.after) << c.keys;
  }
  std::filesystem::remove(m_folder.Path("bin/todo.dat"));
  ASSERT_TRUE(Choose("View > To-do List"));
  Dialog()->resize(611, 333);
  Click("OK");
  EXPECT_EQ(m_folder.Read("bin/todo.dat"), "") << "an empty file where there was none";

  std::filesystem::remove(m_folder.Path("bin/todo.dat"));
  std::filesystem::create_directory(m_folder.Path("bin/todo.dat"));
  ASSERT_TRUE(Choose("View > To-do List"));
  EXPECT_EQ(Dialog()->size(), QSize(611, 333));
  Type("x");
  Click("OK");
  Pump();
  EXPECT_EQ(Dialog(), nullptr) << "cannot be written, and no word about it";
}

class Templates : public ScriptTools {
 protected:
  void Write(const std::string& name, const std::string& text) {
    std::filesystem::create_directory(m_folder.Path("bin/qil_templates"));
    m_folder.Write("bin/qil_templates/" + name + ".txt", text);
  }
  std::string Message() { return ToBytes(Parts().statusBar.currentMessage()); }
};

TEST_F(Templates, KeysGoFromStopToStop) {
  Write("loop", "while ($1)\r\n{\r\n\t$2;\r\n\t$0\r\n}\r\n");
  Write("self", "a${self}b");
  const struct {
    const char* begin;
    const char* keys;
    const char* shown;
  } cases[] = {
      {"\t^", "Loop<Tab>", "\twhile (^)|\t{|\t\t;|\t\t|\t}"},
      {"x ^ y", "loop<Tab>a<Tab>b", "x while (a)|{|\tb^;|\t|} y"},
      {"^", "loop<Tab>f(a<Tab>b<Tab>c<Tab>d", "while (f(a)|{|\tb;|\tc\td^|}"},
      {"^", "loop<Tab><Left><Left><Tab>b", "while ()|{|\tb^;|\t|}"},
      {"^", "loop<Tab>a<Escape><Tab>b", "while (a\tb^)|{|\t;|\t|}"},
      {"|^|", "loop<Tab><Up><Tab>", "\t^|while ()|{|\t;|\t|}|"},
      {"^", "loop<Tab>a<Shift+Left><Tab>", "\twhile (^a)|{|\t;|\t|}"},
      {"^", "loop<Tab><Ctrl+Z>", "loop^"},
      {"^", "loop<Tab><Ctrl+Z><Escape> <Tab>", "loop \t^"},
      {"^x", "loop<Tab>", "loop\t^x"},
      {"a.^", "loop<Tab>", "a.loop\t^"},
      {"// ^", "loop<Tab>", "// loop\t^"},
      {"^", "none<Tab>", "none\t^"},
      {"^", "self<Tab>", "ab^"},
  };
  for (const auto& c : cases) {
    std::string text = c.begin;
    for (size_t at = text.find('|'); at != std::string::npos; at = text.find('|'))
      text.replace(at, 1, "\r\n");
    Begin(text);
    TypeKeys(c.keys);
    EXPECT_EQ(Shown(), c.shown) << c.begin << "   " << c.keys;
  }
  EXPECT_EQ(Message(), "The template \"self\" includes itself.");
}

TEST_F(Templates, MenuShowsTheFolderAsItIsNow) {
  Begin("  a^b");
  EXPECT_FALSE(MenuAction("Edit > Insert > Code Templates > No templates found")->isEnabled());
  Write("p & q", "1\n\t2$1 $2");
  WriteFlag(m_settings, settings::kKeepSpaces, true);
  Frame().ApplySettingsToViews();
  View().SetSelection({0, 2}, {0, 3});
  ASSERT_TRUE(Choose("Edit > Insert > Code Templates > p & q"));
  EXPECT_EQ(Shown(), "  1|     2^ b");
  EXPECT_EQ(Message(), "Tab goes to the next place to fill in, Escape leaves the template.");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "  ab");
  EXPECT_FALSE(View().CanUndo());
  View().SetCaretPos({0, 4});
  Press("Tab");
  EXPECT_EQ(ActiveText(), "  ab  ") << "what was undone has no stops";

  Write("new", "1");
  TypeKeys("new<Tab>");
  EXPECT_EQ(ActiveText(), "  ab  1");
  Document().Buffer().SetReadOnly(true);
  EXPECT_FALSE(Choose("Edit > Insert > Code Templates > new"));
  Press("Tab");
  EXPECT_EQ(ActiveText(), "  ab  1");
  m_prompts.Expect("Save the changes to \"1.vsl\"?", Prompts::Answer::kDiscard);
  ASSERT_TRUE(Choose("File > Close"));
  EXPECT_FALSE(MenuAction("Edit > Insert > Code Templates > new")->isEnabled());
}

}  // namespace
}  // namespace quill
