#include <QScopeGuard>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>

#include "settings/Settings.h"
#include "ui/ViewEvents.h"

namespace quill {
namespace {

constexpr QRgb kSelected = qRgb(0x31, 0x6A, 0xC5);
constexpr QRgb kCaretLine = qRgb(255, 255, 0);
constexpr QRgb kBlack = qRgb(0, 0, 0);
constexpr QRgb kWhite = qRgb(255, 255, 255);

class ViewPaint : public ViewFixture {
 protected:
  /// Selected pixels of some lines on the screen, a line after the other.
  std::vector<int> SelectedPixels(int32_t lines) {
    const QImage screen = OnScreen();
    std::vector<int> counts;
    for (int32_t line = 0; line < lines; ++line) counts.push_back(Count(screen, RowOf(line), kSelected));
    return counts;
  }
  static int Lightest(const QImage& image) {
    int lightest = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) lightest = std::max(lightest, qGray(image.pixel(x, y)));
    }
    return lightest;
  }
  static double Contrast(const QColor& a, const QColor& b) {
    const auto luminance = [](const QColor& c) {
      const auto linear = [](double v) {
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
      };
      return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
  }
  /// The color of large text: that which stands out most from its ground, the most frequent one.
  static QColor Ink(const QImage& image, QColor& ground) {
    std::map<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) ++counts[image.pixel(x, y)];
    }
    const auto frequent = [](const auto& a, const auto& b) { return a.second < b.second; };
    ground = QColor(std::max_element(counts.begin(), counts.end(), frequent)->first);
    QColor ink = ground;
    for (const auto& [pixel, count] : counts) {
      if (Contrast(QColor(pixel), ground) > Contrast(ink, ground)) ink = QColor(pixel);
    }
    return ink;
  }
  /// The pictures of a line's number, digit by digit, in a text of fewer than a thousand lines.
  std::vector<QImage> Digits(const QImage& image, int32_t line) {
    const QRect row = RowOf(line);
    std::vector<QImage> digits;
    const int width = At(0, 1).x() - At(0, 0).x();
    for (int x = 22; digits.size() < 3; x += width)
      digits.push_back(image.copy(x, row.top(), width, row.height()));
    return digits;
  }
};

TEST_F(ViewPaint, ADroppedSelectionIsPaintedOver) {
  const struct {
    std::vector<const char*> select;
    std::vector<const char*> drop;
  } rows[] = {
      {{"Shift+Down", "Shift+Down", "Shift+Down"}, {"Right"}},
      {{"Shift+Down", "Shift+Down", "Shift+Down"}, {"Left"}},
      {{"Down", "Down", "Down", "Shift+Up", "Shift+Up", "Shift+Up"}, {"Left"}},
      {{"Down", "Down", "Down", "Shift+Up", "Shift+Up", "Shift+Up"}, {"Right"}},
      {{"Shift+Down", "Shift+Down", "Shift+Down"}, {"Down"}},
      {{"Shift+Down", "Shift+Down", "Shift+Down"}, {"Shift+Up", "Shift+Up", "Shift+Up"}},
      {{"Ctrl+A"}, {"Ctrl+End"}},
      {{"Ctrl+A"}, {"Ctrl+Home"}},
      {{"Right", "Alt+Shift+Down", "Alt+Shift+Down", "Alt+Shift+Right"}, {"Right"}},
      {{"Right", "Alt+Shift+Down", "Alt+Shift+Down", "Alt+Shift+Right"}, {"Home"}},
      {{"Right", "Alt+Shift+Down", "Alt+Shift+Down", "Alt+Shift+Right"}, {"Shift+Left"}},
  };
  Open("a.vsl", "alpha\r\nbeta\r\ngamma\r\ndelta\r\nlast");
  int number = 0;
  for (const auto& row : rows) {
    ++number;
    Press("Ctrl+Home");
    PressKeys(row.select);
    EXPECT_GT(SelectedPixels(4)[1], 0) << number;
    EXPECT_EQ(OnScreen(), Repainted()) << number;
    PressKeys(row.drop);
    EXPECT_EQ(OnScreen(), Repainted()) << number << ": stale pixels";
  }
  Press("Ctrl+A");
  ViewMouse().Click(At(4, 4));
  EXPECT_EQ(SelectedPixels(5), (std::vector<int>{0, 0, 0, 0, 0}));
}

TEST_F(ViewPaint, ASelectionShowsItsTextItsLineEndsAndItsBlock) {
  Open("a.vsl", "mm\r\n\r\nmmmm");
  PressKeys({"Shift+Down", "Shift+Down"});
  const std::vector<int> lines = SelectedPixels(3);
  EXPECT_GT(lines[0], 0);
  EXPECT_GT(lines[1], 0) << "an empty line's end is selected";
  EXPECT_EQ(lines[2], 0);
  const int end = At(0, 2).x();
  EXPECT_GT(Count(OnScreen(), QRect(end, RowOf(0).top(), 4, 4), kSelected), 0);
  const QRect text(RowOf(0).topLeft(), QSize(end - RowOf(0).left() - 4, View().LineHeight()));
  EXPECT_GT(Lightest(OnScreen().copy(text)), 150) << "selected text has its own colour";

  PressKeys({"Ctrl+Home", "Right"});
  for (int i = 0; i < 2; ++i) Press("Alt+Shift+Down");
  Press("Alt+Shift+Right");
  Press("Alt+Shift+Right");
  const std::vector<int> block = SelectedPixels(3);
  const int width = At(2, 1).x() - At(2, 0).x();
  EXPECT_GE(block[1], width * View().LineHeight()) << "the block goes through lines that are too short";
  EXPECT_EQ(OnScreen(), Repainted());
}

TEST_F(ViewPaint, TheCaretShowsWhereAndHowTypingWrites) {
  Open("a.vsl", "iiii\r\n");
  Press("Right");
  const QRect wide(View().PointOf({0, 1}), QSize(At(0, 1).x() - At(0, 0).x(), View().LineHeight()));
  const QRect foot(wide.left() + 2, wide.bottom() - 1, wide.width() - 3, 2);
  const auto isThin = [&] { return OnScreen().pixel(wide.left(), wide.center().y()) == kBlack; };
  EXPECT_TRUE(isThin());
  EXPECT_EQ(Count(OnScreen(), foot, kBlack), 0);
  Press("Ins");
  EXPECT_FALSE(isThin());
  EXPECT_EQ(Count(OnScreen(), foot, kBlack), foot.width() * foot.height()) << "as wide as what it overwrites";
  EXPECT_EQ(OnScreen(), Repainted());
  Press("Ins");
  EXPECT_TRUE(isThin());
  EXPECT_EQ(OnScreen(), Repainted());
  View().clearFocus();
  EXPECT_FALSE(isThin()) << "nothing that is typed goes there";
  View().setFocus();
  EXPECT_TRUE(isThin());
}

TEST_F(ViewPaint, TheLineOfTheCaretIsMarkedAsLongAsThatIsWanted) {
  Open("a.vsl", "one\r\ntwo\r\nthree");
  const auto marked = [this] {
    const QImage screen = OnScreen();
    std::string lines;
    for (int32_t line = 0; line < 3; ++line) {
      if (Count(screen, RowOf(line), kCaretLine) > RowOf(line).width()) lines += std::to_string(line + 1);
    }
    return lines;
  };
  EXPECT_EQ(marked(), "1");
  Press("Down");
  EXPECT_EQ(marked(), "2");
  ViewMouse().Click(At(2, 1));
  EXPECT_EQ(marked(), "3");
  EXPECT_TRUE(Choose("Options > Highlight Selected Line"));
  EXPECT_EQ(marked(), "");
}

TEST_F(ViewPaint, TheMarginCountsTheLinesAndShowsTheirMarks) {
  std::string text;
  for (int i = 0; i < 12; ++i) text += "mm\r\n";
  Open("a.vsl", text);
  const QImage screen = OnScreen();
  const std::vector<QImage> eleven = Digits(screen, 10);
  EXPECT_EQ(eleven[1], eleven[2]) << "11";
  EXPECT_NE(Digits(screen, 9)[1], Digits(screen, 9)[2]) << "10";
  EXPECT_EQ(Digits(screen, 0)[2], eleven[2]) << "1";
  EXPECT_NE(Digits(screen, 1)[2], eleven[2]) << "2";

  const auto marks = [this] { return OnScreen().copy(0, RowOf(0).top(), 18, View().LineHeight()); };
  const QImage none = marks();
  EXPECT_TRUE(Choose("Edit > Bookmarks > Toggle bookmark"));
  const QImage bookmark = marks();
  EXPECT_NE(bookmark, none);
  EXPECT_TRUE(Choose("Edit > Bookmarks > Toggle bookmark"));
  EXPECT_EQ(marks(), none);
}

TEST_F(ViewPaint, BracesBlocksAndGuidesAreDrawnBesideTheText) {
  Open("a.vsl", "function f()\r\n{\r\n\t\tx;\r\n\t\ty;\r\n}\r\nend");
  const auto row = [this](int32_t line) { return OnScreen().copy(RowOf(line)); };
  const QImage plain = row(1);
  PressKeys({"Down", "Down", "Down", "Down"});
  EXPECT_NE(row(1), plain) << "the brace that is open here";
  EXPECT_EQ(OnScreen(), Repainted());
  PressKeys({"Down"});
  EXPECT_EQ(row(1), plain);

  const int guides = Count(OnScreen(), RowOf(2), qRgb(0x80, 0x80, 0x80));
  EXPECT_GT(guides, 0);
  EXPECT_TRUE(Choose("Options > Indentation Guide"));
  EXPECT_LT(Count(OnScreen(), RowOf(2), qRgb(0x80, 0x80, 0x80)), guides);

  EXPECT_TRUE(Choose("Edit > Outlining > Collapse All"));
  EXPECT_NE(row(1), plain) << "what is folded away is hinted at";
  EXPECT_EQ(OnScreen(), Repainted());
}

TEST_F(ViewPaint, ABraceFarAboveIsMarkedWhenItWasFound) {
  std::string text = "{\r\n";
  for (int i = 0; i < 200'000; ++i) text += "\tx = f(y);\r\n";
  Open("a.vsl", text);
  const auto first = [this] {
    View().ScrollToLine(0);
    return OnScreen().copy(RowOf(0));
  };
  Press("Ctrl+End");
  Type("}");
  const QImage plain = first();
  Press("Backspace");
  EXPECT_TRUE(QTest::qWaitFor([&] { return first() != plain; }, 30'000));
  EXPECT_EQ(OnScreen(), Repainted());
}

TEST_F(ViewPaint, FoundTextIsMarkedWhileItIsLookedFor) {
  Open("a.vsl", "other\r\nalpha beta beta\r\n");
  const auto second = [this] {
    const QPoint left = View().PointOf({1, 11});
    return OnScreen().copy(QRect(left, View().PointOf({1, 15}) + QPoint(-1, View().LineHeight() - 1)));
  };
  Press("Down");
  const QImage plain = second();
  Press("Ctrl+F");
  Type("beta");
  Press("Return");
  EXPECT_EQ(Shown(), "other\nalpha [beta| beta\n");
  EXPECT_NE(second(), plain) << "the other one is marked softly";
  EXPECT_EQ(Count(second(), kWhite), 0) << "in a colour of its own";
  PressKeys({"Escape", "Escape"});
  EXPECT_EQ(second(), plain);
}

TEST_F(ViewPaint, ColoursFollowTheDesktop) {
  Open("a.vsl", "plain // comment\r\n\"string\"\r\n");
  const QPalette before = QApplication::palette();
  const auto restore = qScopeGuard([&before] { QApplication::setPalette(before); });
  const QPoint corner(Viewport().width() - 3, Viewport().height() - 3);
  const auto useDesktop = [](const QColor& base, const QColor& button) {
    QPalette desktop = QApplication::palette();
    desktop.setColor(QPalette::Base, base);
    desktop.setColor(QPalette::Button, button);
    QApplication::setPalette(desktop);
  };
  EXPECT_EQ(OnScreen().pixel(corner), kWhite);
  useDesktop(qRgb(30, 40, 50), qRgb(60, 10, 20));
  EXPECT_EQ(OnScreen().pixel(corner), qRgb(30, 40, 50));
  EXPECT_EQ(OnScreen().pixel(QPoint(2, corner.y())), qRgb(60, 10, 20)) << "the margin";
  const QRect text(RowOf(1).left(), RowOf(1).top(), At(1, 8).x() - RowOf(1).left(), View().LineHeight());
  EXPECT_GT(Lightest(OnScreen().copy(text)), 125) << "default colours are lightened on a dark background";
  EXPECT_TRUE(Choose("Window > New Window"));
  useDesktop(qRgb(250, 240, 230), qRgb(200, 200, 200));
  EXPECT_EQ(OnScreen().pixel(corner), qRgb(250, 240, 230));
  Press("Ctrl+Tab");
  EXPECT_EQ(OnScreen().pixel(corner), qRgb(250, 240, 230)) << "every view";
}

TEST_F(ViewPaint, OnADarkDesktopEveryKindOfWordCanBeReadAndToldFromTheOthers) {
  const QPalette before = QApplication::palette();
  const auto restore = qScopeGuard([&before] { QApplication::setPalette(before); });
  struct Row {
    const char* kind;
    const char* token;
  };
  const Row rows[] = {{"plain", "other"},     {"keyword", "return"}, {"string", "\"see\""},
                      {"number", "12345"},    {"command", "wait"},   {"comment", "// even"},
                      {"function", "render"}, {"variable", "speed"}, {"directive", "#define"}};
  std::string text = "var speed;\r\nfunction render() { }\r\n";
  for (const Row& row : rows) text += std::string(row.token) + "\r\n" + row.token + "\r\n";
  Open("a.vsl", text);
  View().SetZoom(300);  // strokes of several pixels, so that some are not smoothed
  for (const QColor base : {QColor(30, 31, 34), QColor(0, 0, 0), QColor(60, 60, 60), QColor(95, 95, 95)}) {
    QPalette desktop = before;
    desktop.setColor(QPalette::Base, base);
    QApplication::setPalette(desktop);
    std::map<std::string, QColor> inks;
    for (size_t i = 0; i < std::size(rows); ++i) {
      const auto line = static_cast<int32_t>(3 + 2 * i);
      const auto length = static_cast<int32_t>(std::strlen(rows[i].token));
      View().SetSelection({line - 1, 0}, {line - 1, length});
      const auto inkOn = [&](QColor& ground) {
        View().EnsureVisible({line, 0});
        const QRect word(View().PointOf({line, 0}),
                         View().PointOf({line, length}) + QPoint(-1, View().LineHeight() - 1));
        return Ink(OnScreen().copy(word), ground);
      };
      QColor plainGround;
      QColor ground;
      inks[rows[i].kind] = inkOn(plainGround);
      EXPECT_EQ(plainGround, base);
      Press("Ctrl+F3");  // finds the next one, and marks the first
      View().SetSelection({0, 0}, {0, 0});
      const QColor ink = inkOn(ground);
      EXPECT_NE(ground, base) << rows[i].kind;
      EXPECT_GE(Contrast(ink, ground), 4.5) << rows[i].kind << " on " << base.name().toStdString();
      EXPECT_GE(Contrast(inks[rows[i].kind], base), 4.5) << rows[i].kind;
      Press("Escape");
    }
    if (base.lightness() > 80) continue;  // there is little room above it
    const char* const told[] = {"plain", "function", "variable", "string"};
    for (size_t i = 0; i < std::size(told); ++i) {
      for (size_t k = 0; k < i; ++k) {
        const QColor& a = inks[told[i]];
        const QColor& b = inks[told[k]];
        const int apart =
            std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
        EXPECT_GT(apart, base.lightness() < 50 ? 60 : 24) << told[i] << " and " << told[k];
      }
    }
  }

  WriteColour(m_settings, settings::kStringColor, Rgb(90, 70, 60));
  QApplication::setPalette(before);
  QPalette desktop = before;
  desktop.setColor(QPalette::Base, QColor(30, 31, 34));
  QApplication::setPalette(desktop);
  QColor ground;
  View().EnsureVisible({6, 0});
  const QRect word(View().PointOf({6, 0}), View().PointOf({6, 5}) + QPoint(-1, View().LineHeight() - 1));
  EXPECT_EQ(Ink(OnScreen().copy(word), ground), QColor(90, 70, 60)) << "a chosen color stays";
}

TEST_F(ViewPaint, NothingStaysBelowATextThatBecameShorter) {
  Open("a.vsl", "one\r\ntwo\r\nthree\r\nfour\r\nfive");
  PressKeys({"Down", "Shift+Down", "Shift+Down", "Del"});
  EXPECT_EQ(OnScreen(), Repainted());
  PressKeys({"Ctrl+A", "Del"});
  const QImage screen = OnScreen();
  EXPECT_EQ(screen, Repainted());
  EXPECT_EQ(Count(screen, RowOf(0).translated(0, 2 * View().LineHeight()), kWhite),
            RowOf(0).width() * RowOf(0).height());
}

}  // namespace
}  // namespace quill
