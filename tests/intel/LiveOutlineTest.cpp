// An outline that is kept up to date while its text is edited is compared with one that is made anew, and
// this one with what a slow twin finds, which knows no groups and sorts everything.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "base/CodePage1252.h"
#include "intel/jumper/OutlineLists.h"
#include "intel/outline/LiveOutline.h"
#include "intel/outline/OutlineOrders.h"
#include "intel/outline/ScriptFacts.h"
#include "support/ScriptText.h"

namespace quill {
namespace {

/// Tells the outline what happens to the text, as a view would.
class Watched : private BufferObserver {
 public:
  explicit Watched(CCrystalTextBuffer& buffer) : m_live(buffer, "bmp"), m_buffer(buffer) {
    m_buffer.AddView(this);
  }
  ~Watched() override { m_buffer.RemoveView(this); }

  LiveOutline& Live() { return m_live; }
  const Outline& UpToDate() {
    while (!m_live.IsRead()) m_live.ReadSome();
    return m_outline = MakeOutline(m_live.Parts(), m_outline);
  }

 private:
  void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t, int32_t) override {
    if (change != nullptr) m_live.OnTextChange(*change);
  }

  LiveOutline m_live;
  Outline m_outline;
  CCrystalTextBuffer& m_buffer;
};

/// Lines that define something, with few names so that many are the same, some the same but for case.
class Lines {
 public:
  explicit Lines(uint32_t seed) : m_random(seed) {}
  uint32_t Below(uint32_t end) { return m_random() % end; }
  std::string Name() {
    static const char* const kNames[] = {"speed", "Speed", "ship", "SHIP", "fuel", "a", "A1", "*p", "\xE4h"};
    const std::string name = kNames[Below(std::size(kNames))];
    return Below(3) == 0 ? name + std::to_string(Below(300)) : name;
  }
  std::string Line() {
    switch (Below(12)) {
      case 0:
        return "var " + Name() + " = " + std::to_string(Below(5)) + ";";
      case 1:
        return "\tvar " + Name() + "[3];";
      case 2:
        return "function " + Name() + "(x)";
      case 3:
        return "action " + Name() + " {";
      case 4:
        return "bmap " + Name() + " = <" + Name() + ".bmp>;";
      case 5:
        return "entity* " + Name() + ";";
      case 6:
        return Below(20) == 0 ? "path \"" + Name() + "\";" : "include <" + Name() + ".vsl>;";
      case 7:
        return "var = 3;";
      case 8:
        return "if (a < b && c > d)";
      default:
        return "x = " + Name() + ";";
    }
  }
  std::string Some(uint32_t count) {
    std::string text;
    for (uint32_t i = 0; i < count; ++i) text += Line() + "\r\n";
    return text;
  }

 private:
  std::mt19937 m_random;
};

std::string DescribeRows(const OutlineRows& rows) {
  std::string text;
  for (const OutlineRow& row : rows) {
    text.append(row.text).append(" ") += std::to_string(row.at.line) + "\n";
  }
  return text;
}

/// Everything that is shown of an outline.
std::string Everything(const Outline& outline) {
  std::string text = DescribeOutline(outline);
  for (const RowOrder order : {RowOrder::kAlphabetical, RowOrder::kOfText}) {
    text += DescribeRows(VariableRows(outline, order)) + DescribeRows(ElementRows(outline, order));
  }
  return text;
}

/// The definitions as the description of an outline tells them, found line by line.
std::string SlowTwin(const CCrystalTextBuffer& buffer) {
  struct Found {
    std::string text, lower, place;
  };
  std::map<size_t, std::vector<Found>> roots;
  std::string elements;
  std::set<std::string> names;
  for (int32_t line = 0; line < buffer.LineCount(); ++line) {
    OutlineScanner scanner("bmp");
    scanner.ScanLine(buffer.Line(line), 0);
    const auto group = scanner.Finish();
    for (const OutlineGroup::Entry& entry : group->items) {
      const std::string text(group->TextOf(entry));
      const std::string place =
          "  " + std::to_string(line + 1) + ":" + std::to_string(entry.character + 1) + "\n";
      roots[entry.root].push_back({text, cp1252::ToLower(text), place});
      const auto root = static_cast<OutlineRoot>(entry.root);
      const std::string name(BareName(root, text));
      if (root == OutlineRoot::kPaths || name.empty() || !names.insert(name).second) continue;
      elements += "  " + std::to_string(ElementKindOf(root)) + " " + name + place;
    }
  }
  std::string text;
  for (auto& [root, items] : roots) {
    std::stable_sort(items.begin(), items.end(), [](const Found& a, const Found& b) {
      return std::lexicographical_compare(
          a.lower.begin(), a.lower.end(), b.lower.begin(), b.lower.end(),
          [](char x, char y) { return static_cast<uint8_t>(x) < static_cast<uint8_t>(y); });
    });
    text.append(OutlineRootName(static_cast<OutlineRoot>(root))).append("\n");
    for (const Found& item : items) text += "  " + item.text + item.place;
  }
  return elements.empty() ? text : text + "elements\n" + elements;
}

/// One of the things that a user does to a text of some thousand lines.
void EditAtRandom(CCrystalTextBuffer& buffer, Lines& lines) {
  const auto place = [&] {
    const auto line = static_cast<int32_t>(lines.Below(static_cast<uint32_t>(buffer.LineCount())));
    const auto length = static_cast<uint32_t>(buffer.LineLength(line));
    return TextPosition{line, lines.Below(2) == 0 ? 0 : static_cast<int32_t>(lines.Below(length + 1))};
  };
  TextPosition from = place();
  TextPosition end;
  const uint32_t kind = lines.Below(40);
  const int32_t most = kind == 0 ? 2500 : kind < 4 ? 300 : 2;
  if (kind < 12 && buffer.LineCount() > 3000) {
    const int32_t last = std::min(from.line + most, buffer.LineCount() - 1);
    TextPosition to{last,
                    static_cast<int32_t>(lines.Below(static_cast<uint32_t>(buffer.LineLength(last)) + 1))};
    if (to < from) std::swap(from, to);
    buffer.DeleteRange(nullptr, {from, to});
  } else if (kind < 16) {
    buffer.Undo(end);
  } else if (kind < 17) {
    buffer.Redo(end);
  } else if (kind < 18 && buffer.LineCount() < 8000) {
    buffer.InsertTextAt(nullptr, from, lines.Some(lines.Below(2500)), end);
  } else if (kind < 28) {
    buffer.InsertTextAt(nullptr, from, lines.Some(1 + lines.Below(3)), end);
  } else {
    buffer.InsertTextAt(nullptr, from, lines.Below(2) == 0 ? " " : "x", end);
  }
}

TEST(LiveOutline, IsAfterEveryEditWhatAWholeReadingFinds) {
  Lines lines(7);
  CCrystalTextBuffer buffer;
  buffer.NewBuffer(line_end::kCrLf);
  TextPosition end;
  buffer.InsertTextAt(nullptr, {}, lines.Some(4000), end);
  Watched watched(buffer);
  for (int edit = 0; edit < 3000; ++edit) {
    EditAtRandom(buffer, lines);
    if (lines.Below(3) == 0) watched.Live().ReadSome();  // edits come while it is read, too
    if (edit % 12 != 0) continue;
    const Outline& live = watched.UpToDate();
    ASSERT_EQ(Everything(live), Everything(ScanOutline(buffer, "bmp"))) << "after edit " << edit;
    if (edit % 120 != 0) continue;
    const std::string twin = SlowTwin(buffer);
    ASSERT_EQ(DescribeOutline(live).substr(0, twin.size()), twin) << "after edit " << edit;
  }
}

TEST(LiveOutline, ReadsOnlyWhatChangedAndSortsOnlyWhatIsNew) {
  Lines lines(3);
  CCrystalTextBuffer buffer;
  buffer.NewBuffer(line_end::kCrLf);
  TextPosition end;
  buffer.InsertTextAt(nullptr, {}, lines.Some(20000) + "x = 1;", end);
  Watched watched(buffer);
  EXPECT_EQ(watched.Live().UnreadLines(), 20001);
  const Outline before = watched.UpToDate();

  buffer.InsertTextAt(nullptr, {20000, 0}, "y = 2;\r\n", end);
  EXPECT_LE(watched.Live().UnreadLines(), OutlineGroup::kMostLines);
  EXPECT_EQ(watched.UpToDate().SharedOrders(), before.SharedOrders()) << "no definition is another one";

  buffer.InsertTextAt(nullptr, {0, 0}, "\r\n", end);
  EXPECT_LE(watched.Live().UnreadLines(), OutlineGroup::kMostLines);
  const Outline moved = watched.UpToDate();
  const auto lastPlace = [](const Outline& outline) {
    TextPosition last;
    for (const OutlineItem& item : outline.Items(OutlineRoot::kFunctions)) last = std::max(last, item.at);
    return last.line;
  };
  EXPECT_EQ(lastPlace(moved), lastPlace(before) + 1);
  size_t same = 0;
  for (const uint32_t slot : moved.Parts().sequence) {
    for (const auto& part : before.Parts().bySlot) same += part.group == moved.Parts().bySlot[slot].group;
  }
  EXPECT_EQ(same, moved.Parts().sequence.size() - 1) << "all groups but the first are those that they were";

  for (int i = 0; i < 5000; ++i) {
    buffer.InsertTextAt(nullptr, {9, 0}, "x = 3;\r\n", end);
    while (!watched.Live().IsRead()) watched.Live().ReadSome();
  }
  EXPECT_LE(watched.UpToDate().Parts().sequence.size(), 25001u / 256)
      << "lines that come one by one make no small groups";
}

TEST(LiveOutline, AsksForAWholeReadingWhenItWasNotToldOfAChange) {
  CCrystalTextBuffer buffer;
  buffer.NewBuffer(line_end::kLf, "var a;\nvar b;\nvar c;");
  LiveOutline live(buffer, {});
  const auto read = [&live] {
    while (!live.IsRead()) live.ReadSome();
    return DescribeOutline(MakeOutline(live.Parts()));
  };
  read();
  buffer.NewBuffer(line_end::kLf, "var other;");
  live.Restart();
  EXPECT_EQ(read(), DescribeOutline(ScanOutline(buffer)));
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, "var new;\r\n", end);
  buffer.InsertTextAt(nullptr, {0, 0}, "x", end);
  live.OnTextChange({true, {{0, 0}, {0, 1}}});
  EXPECT_EQ(read(), DescribeOutline(ScanOutline(buffer)));
}

TEST(MakeOutline, StopsWhenNobodyWaitsForIt) {
  const Outline whole = ScanOutlineText("var a;\nvar b;\n");
  std::atomic<bool> stop = true;
  EXPECT_EQ(MakeScriptFacts(whole.Parts(), nullptr, {}, &stop), nullptr);
  stop = false;
  EXPECT_EQ(DescribeOutline(MakeScriptFacts(whole.Parts(), nullptr, {}, &stop)->outline),
            DescribeOutline(whole));
}

TEST(MakeScriptFacts, GivesTheSameNamesToTheColouringWhileTheyAreTheSame) {
  const auto first = MakeScriptFacts(ScanOutlineText("var a;\nfunction f()\n").Parts(), nullptr, {});
  const auto moved =
      MakeScriptFacts(ScanOutlineText("\nfunction F()\nvar A = 2;\n").Parts(), nullptr, *first);
  EXPECT_EQ(moved->names, first->names) << "nothing is coloured anew";
  const auto more = MakeScriptFacts(ScanOutlineText("var a;\nfunction g()\n").Parts(), nullptr, *moved);
  EXPECT_TRUE(more->names->functions.Contains("g"));
  EXPECT_FALSE(more->names->functions.Contains("f"));
}

}  // namespace
}  // namespace quill
