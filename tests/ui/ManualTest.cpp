#include <QApplication>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <filesystem>
#include <functional>

#include "intel/ui/HTMLCtrl.h"
#include "intel/ui/ManualFindBar.h"
#include "intel/ui/ManualPage.h"
#include "intel/ui/ManualSearchPane.h"
#include "intel/ui/ManualWindow.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/QuillView.h"
#include "support/Paths.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

constexpr const char* kMessage =
    "The manual cannot be shown. Its files \"quill.qhc\" and \"quill.qch\" beside the program are missing or "
    "damaged. Please reinstall Vesper Editor.";

class ManualInProgram : public ShellFixture {
 protected:
  void SetUp() override {
    for (const char* name : {"quill.qhc", "quill.qch"}) {
      const std::filesystem::path made = std::string(QUILL_BIN_DIR "/") + name;
      if (!std::filesystem::exists(made)) GTEST_SKIP() << "the manual was not made";
      std::filesystem::copy(made, m_folder.Path("bin"));
    }
  }

  static ManualWindow* FindWindow() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (auto* window = qobject_cast<ManualWindow*>(widget)) return window;
    }
    return nullptr;
  }
  static ManualWindow& Window() { return *FindWindow(); }
  static ManualPage& Page() { return Window().Page(); }
  /// "page.html#anchor" as shown.
  static std::string Shown() {
    const QUrl url = Page().source();
    return (url.fileName() + (url.hasFragment() ? "#" + url.fragment() : QString())).toStdString();
  }
  static bool Waits(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, 10000); }

  void OpenAt(const std::string& text, int32_t column) {
    static int number = 0;
    Open("at" + std::to_string(++number) + ".vsl", text);
    View().SetCaretPos({0, column});
    View().setFocus();
    QApplication::setActiveWindow(&Frame());
    Press("F1");
  }
  /// Opens a tab of the window by its letter.
  void OpenTab(const char* key) {
    QApplication::setActiveWindow(&Window());
    Press(key);
  }
};

TEST_F(ManualInProgram, OpensAtTheWordUnderTheCaret) {
  const struct {
    const char* line;
    int32_t column;
    const char* page;
  } rows[] = {
      {"\tView_Fov(camera, 30);", 3, "command-view_fov.html"},
      {"while (1)", 0, "keywords.html#while-and-do"},
      {"camera.fov = 3;", 9, "members.html#view-fov"},
      {"panel p", 6, "keywords.html#panel"},
      {"( + )", 2, "index.html"},
  };
  Start();
  for (const auto& row : rows) {
    OpenAt(row.line, row.column);
    ASSERT_NE(FindWindow(), nullptr);
    EXPECT_EQ(Shown(), row.page) << row.line;
    EXPECT_EQ(QApplication::activeWindow(), &Window());
    EXPECT_EQ(QApplication::focusWidget(), &Page());
  }
  const auto windows = QApplication::topLevelWidgets();
  EXPECT_EQ(
      std::ranges::count_if(windows, [](QWidget* w) { return qobject_cast<ManualWindow*>(w) != nullptr; }),
      1);
  OpenAt("camera.fov = 3;", 9);
  ASSERT_EQ(Page().extraSelections().size(), 1);
  EXPECT_EQ(Page().extraSelections()[0].cursor.selectedText(), "fov");
  EXPECT_TRUE(Page().viewport()->rect().contains(Page().cursorRect(Page().extraSelections()[0].cursor)));
  // The contents follow once they are read.
  OpenAt("wait(1);", 1);
  EXPECT_EQ(Shown(), "command-wait.html");
  auto& contents = *Window().findChild<QHelpContentWidget*>();
  EXPECT_TRUE(Waits([&] { return contents.currentIndex().data().toString() == "wait"; }));
  EXPECT_EQ(Window().windowTitle(), "wait - Vesper Editor Manual");
}

TEST_F(ManualInProgram, AMissingOrDamagedFileIsToldOnce) {
  const std::string whole = m_folder.Read("bin/quill.qch");
  const std::pair<const char*, std::string> faults[] = {
      {"bin/quill.qch", ""}, {"bin/quill.qch", whole.substr(0, 5000)}, {"bin/quill.qhc", "no collection"}};
  Start();
  for (const auto& [name, content] : faults) {
    const std::string good = m_folder.Read(name);
    m_folder.Write(name, content);
    m_prompts.Expect(kMessage, Prompts::Answer::kOk);
    OpenAt("wait(1);", 1);
    EXPECT_EQ(FindWindow(), nullptr);
    m_folder.Write(name, good);
  }
  std::filesystem::remove(m_folder.Path("bin/quill.qhc"));
  m_prompts.Expect(kMessage, Prompts::Answer::kOk);
  Press("F1");
  EXPECT_FALSE(std::filesystem::exists(m_folder.Path("bin/quill.qhc")));
}

TEST_F(ManualInProgram, TheIndexNarrowsWhileTypingAndEnterOpensAPage) {
  Start();
  OpenAt("", 0);
  auto& list = *Window().findChild<QHelpIndexWidget*>();
  EXPECT_TRUE(Waits([&] { return list.model()->rowCount() > 100; }));
  const int all = list.model()->rowCount();
  OpenTab("Alt+I");
  Type("view_fo");
  EXPECT_LT(list.model()->rowCount(), all);
  EXPECT_EQ(list.currentIndex().data().toString(), "view_fog");
  Press("Down");
  Press("Return");
  EXPECT_EQ(Shown(), "command-view_fog_color.html");
}

TEST_F(ManualInProgram, ASearchFindsMarksAndLinksComeBack) {
  Start();
  OpenAt("", 0);
  OpenTab("Alt+S");
  Type("nearest pad zzz");
  auto& pane = *Window().findChild<ManualSearchPane*>();
  EXPECT_EQ(pane.findChild<QLabel*>()->text(), "Nothing found");
  Press("Ctrl+A");
  Type("wide looks");
  auto& results = *pane.findChild<QListWidget*>();
  ASSERT_GT(results.count(), 0);
  EXPECT_EQ(results.item(0)->text(), "view_fov");
  Press("Return");
  EXPECT_EQ(Shown(), "command-view_fov.html");
  ASSERT_EQ(Page().extraSelections().size(), 2);
  EXPECT_EQ(Page().extraSelections()[0].cursor.selectedText(), "wide");

  Page().setFocus();
  QTest::keyClick(&Page(), Qt::Key_Tab);
  QTest::keyClick(&Page(), Qt::Key_Return);
  EXPECT_EQ(Shown(), "commands.html#views-and-camera");
  EXPECT_TRUE(Page().extraSelections().isEmpty());
  Press("Alt+Left");
  EXPECT_EQ(Shown(), "command-view_fov.html");
  Press("Alt+Right");
  EXPECT_EQ(Shown(), "commands.html#views-and-camera");
  EXPECT_EQ(Window().windowTitle(), "Commands - Vesper Editor Manual");
  Press("Alt+Home");
  EXPECT_EQ(Shown(), "index.html");
  Q_EMIT Page().anchorClicked(QUrl("https://example.org/"));
  EXPECT_EQ(Shown(), "index.html");
}

TEST_F(ManualInProgram, FindInPageGoesRoundAndEscClosesTheBarThenTheWindow) {
  Start();
  OpenAt("wait", 0);
  Press("Ctrl+F");
  Type("FRAME");
  const qsizetype places = Page().extraSelections().size();
  ASSERT_GT(places, 1);
  const int first = Page().textCursor().selectionStart();
  EXPECT_EQ(Page().textCursor().selectedText().toUpper(), "FRAME");
  for (qsizetype i = 1; i < places; ++i) Press(i % 2 == 0 ? "F3" : "Return");
  EXPECT_GT(Page().textCursor().selectionStart(), first);
  Press("F3");
  EXPECT_EQ(Page().textCursor().selectionStart(), first);
  Press("Shift+F3");
  EXPECT_GT(Page().textCursor().selectionStart(), first);
  Press("Escape");
  EXPECT_TRUE(Window().isVisible());
  EXPECT_TRUE(Page().extraSelections().isEmpty());
  Press("Escape");
  EXPECT_FALSE(Window().isVisible());
  QApplication::setActiveWindow(&Frame());
  Press("F1");
  EXPECT_TRUE(Window().isVisible());
}

TEST_F(ManualInProgram, PlaceAndZoomAreKeptAndTheStyleFollowsThePalette) {
  Start();
  OpenAt("wait", 0);
  Window().setGeometry(40, 50, 700, 500);
  Press("Ctrl++");
  Press("Ctrl++");
  // A link above the heading, then the heading.
  const auto size = [](const QTextBlock& block) {
    return block.begin().fragment().charFormat().font().pointSize();
  };
  EXPECT_EQ(Page().Zoom(), 120);
  EXPECT_EQ(size(Page().document()->firstBlock()), 13);
  EXPECT_EQ(size(Page().document()->firstBlock().next()), 23);
  const auto textColour = [] {
    return Page().document()->lastBlock().begin().fragment().charFormat().foreground().color().lightness();
  };
  EXPECT_LT(textColour(), 128);
  const QPalette light = QApplication::palette();
  QApplication::setPalette(QPalette(Qt::white, Qt::black));
  Pump();
  EXPECT_GT(textColour(), 128);
  QApplication::setPalette(light);
  Quit();
  EXPECT_EQ(FindWindow(), nullptr);
  Start();
  OpenAt("wait", 0);
  EXPECT_EQ(Window().geometry(), QRect(40, 50, 700, 500));
  EXPECT_EQ(Page().Zoom(), 120);
}

TEST_F(ManualInProgram, TheHelpBarLeadsToThePageOfItsCommand) {
  Start();
  auto& bar = *Parts().bars.Bar(CommandId::kViewCommandHelp);
  bar.show();
  Open("help.vsl", "sleep(1);\r\nwait(1);");
  View().SetCaretPos({1, 2});
  View().SetCaretPos({0, 2});
  auto& pane = *bar.findChild<CHTMLCtrl*>();
  pane.setFocus();
  Press("Tab");
  View().SetCaretPos({0, 8});
  Press("F1");
  EXPECT_EQ(Shown(), "command-sleep.html");
  Window().close();
  QApplication::setActiveWindow(&Frame());
  Q_EMIT pane.anchorClicked(QUrl("command:wait"));
  Q_EMIT pane.anchorClicked(QUrl("manual:"));
  EXPECT_TRUE(Window().isVisible());
  EXPECT_EQ(Shown(), "command-wait.html");
}

}  // namespace
}  // namespace quill
