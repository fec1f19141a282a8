// Names with signs that the toolkit reads as markup, mnemonics, keys or marks: shown as they are.
#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTabBar>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

#include "shell/ui/QuillDoc.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class PlainNames : public ScreenFixture {
 protected:
  /// What a tip of this text shows.
  static std::string Tip(const QString& text) {
    if (!Qt::mightBeRichText(text)) return text.toStdString();
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText().toStdString();
  }
  /// What a menu shows in the column of names.
  static std::string Label(QString text) {
    text = text.section(u'\t', 0, 0);
    text.replace("&&", "\x01").remove(u'&').replace(u'\x01', u'&');
    return text.toStdString();
  }
  std::vector<std::string> Labels(const char* menu) {
    std::vector<std::string> labels;
    for (QAction* entry : Frame().menuBar()->actions()) {
      if (Label(entry->text()) != menu) continue;
      Q_EMIT entry->menu()->aboutToShow();
      for (const QAction* action : entry->menu()->actions()) {
        if (action->isVisible()) labels.push_back(Label(action->text()));
        for (const QAction* inner :
             action->menu() == nullptr ? QList<QAction*>() : action->menu()->actions()) {
          labels.push_back(Label(inner->text()));
        }
      }
    }
    return labels;
  }
};

TEST_F(PlainNames, AreShownAsTheyAre) {
  Start();
  const struct {
    const char* name;
    const char* inMenu;
  } rows[] = {
      {"a&b.vsl", "a&b.vsl"},
      {"<b>x<b>.vsl", "<b>x<b>.vsl"},
      {"mark[*].vsl", "mark[*].vsl"},
      {"with\ta tab.vsl", "with a tab.vsl"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Open(row.name, "");
    const std::vector<std::string> windows = Labels("Window");
    EXPECT_TRUE(std::ranges::any_of(
        windows, [&](const std::string& label) { return label.ends_with(std::string(" ") + row.inMenu); }));
    const int tab = TabBar().currentIndex();
    const QPoint place = TabBar().tabRect(tab).center();
    QHelpEvent event(QEvent::ToolTip, place, TabBar().mapToGlobal(place));
    QApplication::sendEvent(&TabBar(), &event);
    EXPECT_EQ(Tip(QToolTip::text()), m_folder.Path(row.name));
    Type("x");
    EXPECT_TRUE(std::ranges::any_of(Labels("Window"), [&](const std::string& label) {
      return label.ends_with(std::string(row.inMenu) + "*");
    }));
    EXPECT_EQ(ActiveText(), "x");
  }
  std::vector<std::string> files = Labels("File");
  for (const auto& row : rows) {
    EXPECT_EQ(
        std::ranges::count_if(files, [&](const std::string& label) { return label.ends_with(row.inMenu); }),
        1)
        << row.name;
  }
}

TEST_F(PlainNames, AnAmpersandIsDrawnInATabAndIsNoKey) {
  Start();
  Open("a.vsl", "");
  const auto tab = [this] {
    QImage image(TabBar().size(), QImage::Format_RGB32);
    TabBar().render(&image);
    return image.copy(TabBar().tabRect(TabBar().currentIndex()));
  };
  Open("a&b.vsl", "");
  const QImage named = tab();
  TabBar().setTabText(TabBar().currentIndex(),
                      TabBar().tabText(TabBar().currentIndex()).remove(QChar(0x2060)));
  EXPECT_NE(tab(), named) << "the sign is there";
  Open("c.vsl", "");
  QTest::keyClick(Frame().windowHandle(), Qt::Key_B, Qt::AltModifier);
  Pump();
  EXPECT_EQ(Tabs().substr(Tabs().find('[')), "[c.vsl]");
}

}  // namespace
}  // namespace quill
