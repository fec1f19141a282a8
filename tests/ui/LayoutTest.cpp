#include <QScreen>
#include <QTest>
#include <QToolBar>
#include <cstdlib>
#include <filesystem>

#include "settings/WindowPlacement.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/DockBars.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class Layout : public ShellFixture {
 protected:
  DockBar& Jumper() { return *Parts().bars.Bar(CommandId::kViewCodeJumper); }
};

TEST_F(Layout, BarsHideMoveAndFloatAndAreSoAgainInTheNextRun) {
  Start();
  EXPECT_TRUE(MenuAction("View > Code Jumper")->isChecked());
  Choose("View > Command Help");
  Choose("View > Toolbars > Debug");
  Frame().addDockWidget(Qt::RightDockWidgetArea, &Jumper());
  Frame().addToolBar(Qt::BottomToolBarArea, Parts().bars.ToolBarWidgets()[3]);
  Quit();
  Start();
  EXPECT_TRUE(Parts().bars.Bar(CommandId::kViewCommandHelp)->isHidden());
  EXPECT_FALSE(MenuAction("View > Toolbars > Debug")->isChecked());
  EXPECT_EQ(Frame().dockWidgetArea(&Jumper()), Qt::RightDockWidgetArea);
  EXPECT_EQ(Frame().toolBarArea(Parts().bars.ToolBarWidgets()[3]), Qt::BottomToolBarArea);
  Choose("View > Command Help");
  EXPECT_FALSE(Parts().bars.Bar(CommandId::kViewCommandHelp)->isHidden());
  Jumper().setFloating(true);
  Quit();
  Start();
  EXPECT_TRUE(Jumper().isFloating());
  EXPECT_EQ(Jumper().allowedAreas(), Qt::AllDockWidgetAreas);
}

TEST_F(Layout, TheWindowComesBackToItsPlaceUnlessThatIsOnNoScreen) {
  Start();
  Frame().setGeometry(30, 40, 640, 480);
  Quit();
  Start();
  EXPECT_EQ(Frame().geometry(), QRect(30, 40, 640, 480));
  Quit();
  AppProfile profile(m_settings);
  WindowPlacement placement;
  placement.left = placement.top = 100000;
  placement.right = placement.bottom = 101000;
  WriteBinary(profile, profile::kMainWndPos, placement.ToBytes());
  Start();
  EXPECT_TRUE(Frame().screen()->availableGeometry().contains(Frame().geometry().center()));
  Quit();
  WriteBinary(profile, profile::kMainWndPos, "damaged");
  Start();
  EXPECT_FALSE(Jumper().isHidden());
}

TEST_F(Layout, DamagedPlacesOfBarsAreLeftOut) {
  Start();
  Choose("View > Command Help");
  Quit();
  AppProfile profile(m_settings);
  const std::string stored = *ReadBinary(profile, profile::kBarPositions);
  Start();
  EXPECT_TRUE(Parts().bars.Bar(CommandId::kViewCommandHelp)->isHidden());
  Quit();
  for (size_t at = 0; at < stored.size(); at += stored.size() / 20 + 1) {
    std::string damaged = stored;
    damaged[at] ^= 0x40;
    WriteBinary(profile, profile::kBarPositions, damaged);
    Start();
    EXPECT_FALSE(Parts().bars.Bar(CommandId::kViewCommandHelp)->isHidden()) << at;
    Quit();
  }
}

TEST_F(Layout, PlacesThatEndedAStartAreLeftOutOfTheNext) {
  Start();
  Choose("View > Command Help");
  Quit();
  const std::string mark = m_folder.Path("recovery/layout.attempt");
  // As a start leaves it that dies while it restores.
  ASSERT_EQ(::system(("mkdir -p " + m_folder.Path("recovery") + "; printf 1 > " + mark).c_str()), 0);
  Start();
  EXPECT_FALSE(Parts().bars.Bar(CommandId::kViewCommandHelp)->isHidden());
  EXPECT_NE(LogMessages().find("were left out"), std::string::npos);
  Choose("View > Command Help");
  Quit();
  Start();
  EXPECT_TRUE(Parts().bars.Bar(CommandId::kViewCommandHelp)->isHidden()) << "tried again";
  EXPECT_TRUE(std::filesystem::exists(mark)) << "while it is not seen yet";
  EXPECT_TRUE(QTest::qWaitFor([&] { return !std::filesystem::exists(mark); }, 30'000));
}

}  // namespace
}  // namespace quill
