// Status panes that answer, lists that show their focus, menus without blank rows.
#include <QAbstractItemView>
#include <QTest>

#include "shell/ui/Documents.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "ui/PopupMenu.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

using Answer = Prompts::Answer;

class Chrome : public ScreenFixture {
 protected:
  /// Clicks on the pane that shows a text.
  void ClickPane(const std::string& text) {
    for (auto* widget : Frame().findChildren<QWidget*>()) {
      auto* pane = dynamic_cast<StatusPane*>(widget);
      if (pane == nullptr || !pane->isVisible() || ToBytes(pane->Text()) != text) continue;
      QTest::mouseClick(pane, Qt::LeftButton);
      return Pump();
    }
    ADD_FAILURE() << "no pane " << text;
  }
  std::string PaneMenu(const std::string& pane, const std::string& label) {
    return ChooseFromPopup([&] { ClickPane(pane); }, label);
  }
};

TEST_F(Chrome, AClickOnAPaneChangesWhatItTells) {
  Start();
  Open("a.vsl", "one\r\ntwo\r\nthree");
  m_prompts.ExpectLine(3);
  ClickPane("Ln 1, Col 1");
  EXPECT_EQ(Panes(), "Ln 3, Col 1|DOS|INS|100%");
  ClickPane("INS");
  EXPECT_EQ(PaneMenu("100%", "Zoom In"), "Zoom In|Zoom Out|Reset Zoom");
  EXPECT_EQ(PaneMenu("DOS", "UNIX (LF CR)"), "DOS (CR LF)|UNIX (LF CR)|MAC (LF)");
  EXPECT_EQ(Panes(), "Ln 3, Col 1|UNIX|OVR|110%");

  EXPECT_EQ(Tabs(), "[a.vsl*]") << "the file has other line ends";
  Type("T");
  Press("Ctrl+Z");
  EXPECT_EQ(Tabs(), "[a.vsl*]") << "undo does not bring those back";
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("a.vsl"), "one\n\rtwo\n\rthree");
  PaneMenu("UNIX", "MAC (LF)");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("a.vsl"), "one\ntwo\nthree");
  EXPECT_EQ(Tabs(), "[a.vsl]");

  m_prompts.Expect("Document now read-only!", Answer::kOk);
  EXPECT_TRUE(Choose("File > Read-Only"));
  EXPECT_EQ(PaneMenu("MAC", "DOS (CR LF)"), "(DOS (CR LF))|(UNIX (LF CR))|(MAC (LF))");
  EXPECT_EQ(Panes(), "Ln 3, Col 2|MAC|OVR|READ|110%");
  ClickPane("READ");
  EXPECT_EQ(Panes(), "Ln 3, Col 2|MAC|OVR|110%");
}

TEST_F(Chrome, LineEndsThatWereChosenSurviveACrash) {
  Start();
  Open("a.vsl", "one\r\ntwo");
  PaneMenu("DOS", "MAC (LF)");
  Parts().documents.FlushJournals();
  Crash();
  m_prompts.ExpectRecovery(Prompts::RecoveryAction::kRecover, {m_folder.Path("a.vsl")});
  Start();
  EXPECT_EQ(Panes(), "Ln 1, Col 1|MAC|INS|100%");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("a.vsl"), "one\ntwo");
}

TEST_F(Chrome, EveryListShowsThatItHasTheFocus) {
  Start();
  Open("a.vsl", "var speed;\r\nfunction main()\r\n{\r\n}\r\n");
  int lists = 0;
  for (auto* list : Frame().findChildren<QAbstractItemView*>()) {
    if (!list->isVisible() || list->focusPolicy() == Qt::NoFocus || list->height() < 20) continue;
    ++lists;
    View().setFocus();
    Pump();
    list->setCurrentIndex({});
    const QImage without = list->grab().toImage();
    list->setFocus();
    list->setCurrentIndex({});
    Pump();
    const QImage with = list->grab().toImage();
    int changed = 0;
    for (int x = 0; x < with.width(); ++x) {
      if (with.pixel(x, with.height() - 1) != without.pixel(x, with.height() - 1)) ++changed;
    }
    EXPECT_GT(changed, with.width() / 2) << list->metaObject()->className();
    View().setFocus();
    Pump();
    EXPECT_EQ(list->grab().toImage(), without) << list->metaObject()->className();
  }
  EXPECT_GT(lists, 1);
}

TEST_F(Chrome, NoMenuHasBlankRows) {
  Start();
  for (const char* path : {"File", "Project", "Plugins", "Window", "Edit > Insert > Code Templates"}) {
    for (const QAction* action : MenuAction(path)->menu()->actions()) {
      EXPECT_TRUE(action->isSeparator() || !action->isVisible() || !action->text().isEmpty()) << path;
    }
  }
  EXPECT_NE(MenuAction("Project > No recent projects"), nullptr);
}

}  // namespace
}  // namespace quill
