// The completion list as its user meets it: when it opens by itself, what it offers, what is written, where
// it stands.
#include <QLabel>
#include <QListView>
#include <QScreen>
#include <QTest>
#include <filesystem>

#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class CompletionListOnScreen : public ScreenFixture {
 protected:
  void Begin(const std::string& text) {
    PressAll({"Escape", "Escape", "Ctrl+A", "Del"});
    Type(text);
  }
  std::string Rows() {
    std::string rows;
    if (List() == nullptr) return "closed";
    for (int i = 0; i < List()->model()->rowCount(); ++i) {
      rows += (i == 0 ? "" : " ") + List()->model()->index(i, 0).data().toString().toStdString();
    }
    return rows;
  }
  QWidget& Window() { return *List()->window(); }
  QPoint OnScreen(TextPosition place) { return View().viewport()->mapToGlobal(View().PointOf(place)); }
};

TEST_F(CompletionListOnScreen, OpensByItselfOnlyWhereItHelps) {
  Start();
  const struct {
    const char* typed;
    const char* selected;
  } rows[] = {
      {"ga", "closed"},           {"gau", "gauge_hide"},
      {"x = gaug", "gauge_hide"}, {"auge", "closed"},  // nothing begins so
      {"gauge_x", "closed"},      {"// gau", "closed"},
      {"/* gau", "closed"},       {"x = \"gau", "closed"},
      {"123", "closed"},          {"var gau", "closed"},
      {"function gau", "closed"}, {"function f() { gau", "gauge_hide"},
      {"gau ", "closed"},         {"gau;", "closed"},
  };
  Open("a.vsl", "");
  for (const bool wanted : {true, false}) {
    WriteFlag(m_settings, settings::kCompleteWhileTyping, wanted);
    for (const auto& row : rows) {
      Begin("var gauge_hide;");
      Press("Return");
      Type("var gauge_high;");
      Press("Return");
      EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
      Type(row.typed);
      EXPECT_EQ(Selected(), wanted ? row.selected : "closed") << row.typed;
    }
  }
  WriteFlag(m_settings, settings::kCompleteWhileTyping, true);
  Begin("var gauge_hide;");
  Press("Return");
  EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
  Type("gau");
  Press("Escape");
  Type("ge");
  EXPECT_EQ(Selected(), "closed") << "sent away for this word";
  PressAll({"Ctrl+Backspace"});
  Type("gau");
  EXPECT_EQ(Selected(), "gauge_hide") << "another word";
  Type("ge_hide");
  EXPECT_EQ(Selected(), "closed") << "written already";
  Press("Tab");
  EXPECT_EQ(Line(), "gauge_hide\t");
  Document().Buffer().SetReadOnly(true);
  Type("gau");
  EXPECT_EQ(Selected(), "closed");
}

TEST_F(CompletionListOnScreen, OffersMembersInADefinitionAndAllNamesForTheirValues) {
  Start();
  Open("a.vsl", "bmap back = <b.bmp>;\r\npanel gauge\r\n{\r\n\t\r\n}\r\n");
  View().SetCaretPos({3, 1});
  Press("Ctrl+Space");
  EXPECT_EQ(Rows(), "alpha layer picture pos_x pos_y scale_x scale_y");
  Press("Escape");
  Type("pic");
  EXPECT_EQ(Rows(), "picture");
  Press("Tab");
  Type(" = bac");
  EXPECT_EQ(Selected(), "back");
  Press("Tab");
  Type(";");
  EXPECT_EQ(Line(), "\tpicture = back;");
  Press("Return");
  Type("whil");
  EXPECT_EQ(Selected(), "while") << "no member begins so";
}

TEST_F(CompletionListOnScreen, WritesTheBracketsOfACommandAndShowsItsHint) {
  Start();
  Open("a.vsl", "");
  const struct {
    const char* typed;
    std::vector<const char*> keys;
    const char* line;
    const char* caret;
    const char* tip;
  } rows[] = {
      {"ent_tur", {"Tab"}, "ent_turn()", "1:10", "ent_turn("},
      {"\tent_tur", {"Tab"}, "\tent_turn()", "1:11", "ent_turn("},
      {"wait", {"Ctrl+Space", "Return"}, "wait()", "1:6", "wait("},
      {"game_exi", {"Tab"}, "game_exit()", "1:12", ""},
      {"x = wai", {"Tab"}, "x = wait()", "1:10", "wait("},
  };
  for (const bool brackets : {true, false}) {
    WriteFlag(m_settings, settings::kAutoBrackets, brackets);
    Frame().ApplySettingsToViews();
    for (const auto& row : rows) {
      Begin(row.typed);
      for (const char* key : row.keys) Press(key);
      std::string line = row.line;
      if (!brackets && line.ends_with("()") && line != "game_exit()") line.pop_back();
      EXPECT_EQ(Line(), line) << row.typed;
      EXPECT_EQ(Caret(), row.caret) << row.typed;
      EXPECT_EQ(Tip().substr(0, std::string(row.tip).size()), row.tip) << row.typed;
      EXPECT_EQ(Tip().empty(), std::string(row.tip).empty()) << row.typed << ": " << Tip();
    }
  }
  Begin("(1");
  PressAll({"Home", "w", "a", "i", "Tab"});
  EXPECT_EQ(Line(), "wait(1") << "the brackets are there";
  EXPECT_EQ(Caret(), "1:6");
  Begin("ent_tur");
  Press("Tab");
  Press("Ctrl+Z");
  EXPECT_EQ(Line(), "ent_tur") << "one step";
  WriteFlag(m_settings, settings::kAutoBrackets, true);
  Frame().ApplySettingsToViews();
  Begin("wait");
  PressAll({"Ctrl+Space", "Return"});
  Type("1);");
  EXPECT_EQ(Line(), "wait(1);") << "the bracket that came by itself is passed";
  WriteFlag(m_settings, settings::kHintsWhileWriting, false);
  Press("Escape");
  EXPECT_EQ(Tip(), "");
  Begin("ent_tur");
  Press("Tab");
  EXPECT_EQ(Tip(), "");
}

TEST_F(CompletionListOnScreen, StaysUnderItsWordAndAsWideAsItsNames) {
  const std::string name = "gauge_with_a_name_that_is_a_good_deal_longer_than_most_names_are";
  Start();
  std::string text = "var " + name + ";\r\nvar gauge_a;\r\nvar gauge_b;\r\n";
  for (int i = 0; i < 100; ++i) text += "var gauge_" + std::to_string(i) + ";\r\n";
  Open("a.vsl", text);
  Frame().resize(1000, 700);
  const QRect screen = Frame().screen()->availableGeometry();
  for (const int column : {0, 30}) {
    for (const bool atBottom : {false, true}) {
      Frame().move(atBottom ? QPoint(0, screen.bottom() - 400) : QPoint(0, 0));
      Pump();
      View().setFocus();
      PressAll({"Ctrl+End", "Escape"});
      if (!Line().empty()) PressAll({"Home", "Shift+End", "Del"});
      View().ScrollToLine(CaretLine() - 5);
      Type(std::string(static_cast<size_t>(column), ' '));
      const std::string label = std::to_string(column) + (atBottom ? " at the bottom" : "");
      const auto check = [&](const char* what) {
        ASSERT_NE(List(), nullptr) << label << what;
        const QRect list = Window().frameGeometry();
        const QPoint word = OnScreen({CaretLine(), column});
        const QRect line(0, word.y(), screen.width(), View().LineHeight());
        EXPECT_FALSE(list.intersects(line)) << label << what;
        EXPECT_TRUE(list.top() == line.bottom() + 1 || list.bottom() == line.top() - 1) << label << what;
        EXPECT_TRUE(std::abs(list.left() - word.x()) < 40 || list.right() >= screen.right() - 1)
            << label << what << list.left() << " " << word.x();
        const QFontMetrics metrics(List()->font());
        const int widest =
            List()->model()->rowCount() > 3 ? metrics.horizontalAdvance(QString::fromStdString(name)) : 0;
        EXPECT_TRUE(List()->viewport()->width() > widest || list.right() >= screen.right() - 1)
            << label << what;
      };
      Type("gau");
      check(": all");
      const bool below = Window().y() > OnScreen({CaretLine(), 0}).y();
      Type("ge_a");
      check(": one");
      EXPECT_EQ(Window().y() > OnScreen({CaretLine(), 0}).y(), below) << label << ": on the same side";
      PressAll({"Backspace", "Backspace"});
      check(": all again");
    }
  }
}

TEST_F(CompletionListOnScreen, ListsTemplatesWithTheirTextAndWritesThem) {
  std::filesystem::create_directories(m_folder.Path("bin/qil_templates"));
  m_folder.Write("bin/qil_templates/loop.txt", "while ($1)\r\n{\r\n\t$0\r\n}\r\n");
  Start();
  Open("a.vsl", "");
  Type("  loo");
  EXPECT_EQ(Selected(), "loop");
  const auto labels = Window().findChildren<QLabel*>();
  EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
    return label->text() == QString("while ()\n{\n    \n}");
  }));
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                    List()->visualRect(List()->currentIndex()).center());
  QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {},
                     List()->visualRect(List()->currentIndex()).center());
  Pump();
  EXPECT_EQ(ActiveText(), "  while ()|  {|  \t|  }");
  // The button comes up where the list has been.
  QTest::mouseRelease(View().viewport(), Qt::LeftButton);
  Type("x");
  Press("Tab");
  Type("y;");
  EXPECT_EQ(ActiveText(), "  while (x)|  {|  \ty;|  }");
  m_folder.Write("bin/qil_templates/later.txt", "late");
  PressAll({"Escape", "Return"});
  Type("late");
  Press("Escape");
  Press("Ctrl+Space");
  EXPECT_EQ(Selected(), "later") << "a file that came meanwhile";
}

}  // namespace
}  // namespace quill
