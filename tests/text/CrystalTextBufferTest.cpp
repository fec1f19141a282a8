#include "text/buffer/CrystalTextBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "support/TempFolder.h"
#include "text/buffer/LineFlags.h"

namespace quill {
namespace {

std::string TextOf(const CCrystalTextBuffer& buffer) {
  std::string text;
  buffer.CopyRange({{0, 0}, buffer.EndOfText()}, text, "|");
  return text;
}

/// Prints what a buffer tells it, one entry a call.
struct Recorder : BufferObserver, EditHook {
  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override {
    char entry[64];
    std::snprintf(entry, sizeof entry, "%s%s%04x@%d ", source == this ? "own " : "",
                  change == nullptr  ? ""
                  : change->inserted ? "+"
                                     : "-",
                  hints, line);
    log += entry;
  }
  void OnUndoGroupClosed(int32_t action, std::string_view text) override {
    log += "closed " + std::to_string(action) + "'" + std::string(text) + "' ";
  }
  std::string Take() { return std::exchange(log, {}); }
  std::string log;
};

class Buffer : public CCrystalTextBuffer {
 public:
  explicit Buffer(std::string_view text = {}) {
    NewBuffer();
    TextPosition end;
    if (!text.empty()) InsertTextAt(nullptr, {0, 0}, text, end);
  }
  bool Insert(TextPosition at, std::string_view text, int32_t code = action::kTyping) {
    return InsertTextAt(nullptr, at, text, m_end, code);
  }
  TextPosition m_end;
};

TEST(CrystalTextBuffer, SplitsInsertedTextAtCarriageReturns) {
  const struct {
    const char* text;
    const char* result;
    TextPosition end;
  } cases[] = {
      {"", "xy", {0, 1}},          {"a\nb", "xa\nby", {0, 4}},        {"a\rb", "xa|by", {1, 1}},
      {"a\r\nb", "xa|by", {1, 1}}, {"\r\r\n\n\r", "x||\n|y", {3, 0}}, {"\r\r\n\n\r\n", "x||\n|y", {3, 0}},
  };
  for (const auto& c : cases) {
    Buffer buffer("xy");
    ASSERT_TRUE(buffer.Insert({0, 1}, c.text));
    EXPECT_EQ(TextOf(buffer), c.result);
    EXPECT_EQ(buffer.m_end, c.end);
    TextPosition at;
    ASSERT_TRUE(buffer.Undo(at));
    EXPECT_EQ(TextOf(buffer), "xy");
  }
}

TEST(CrystalTextBuffer, TellsItsViewsWhatChanged) {
  Buffer buffer;
  Recorder view;
  buffer.AddView(&view);
  TextPosition end;
  buffer.InsertTextAt(&view, {0, 0}, "abc", end, action::kTyping);
  EXPECT_EQ(view.Take(), "own +0101@0 closed 4'abc' ");
  buffer.InsertTextAt(nullptr, {0, 1}, "\r", end);
  EXPECT_EQ(view.Take(), "+0003@0 ");
  buffer.DeleteRange(&view, 1, 0, 1, 1, action::kDelete);
  EXPECT_EQ(view.Take(), "own -0101@1 closed 9'b' ");
  buffer.Undo(end);
  EXPECT_EQ(view.Take(), "+0101@1 ");
  buffer.DeleteRange(nullptr, 0, 0, 1, 1);
  EXPECT_EQ(view.Take(), "-0003@0 ");
  buffer.SetFlagOnLine(0, line_flag::kBookmark, true);
  buffer.SetFlagOnLine(0, line_flag::kBookmark, true);  // no change, no word
  EXPECT_EQ(view.Take(), "0300@0 ");
  buffer.ChangeFlagsOnLines(0, 0, 0, 0);
  EXPECT_EQ(view.Take(), "0200@-1 ");
  buffer.NewBuffer();
  EXPECT_EQ(view.Take(), "1000@-1 ");
  buffer.RemoveView(&view);
  buffer.Insert({0, 0}, "x");
  EXPECT_EQ(view.Take(), "");
}

TEST(CrystalTextBuffer, ViewsComeAndGoWhileTheyAreTold) {
  struct Visitor : Recorder {
    void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                        int32_t line) override {
      Recorder::OnBufferUpdate(source, change, hints, line);
      if (const auto once = std::exchange(visit, nullptr)) once();
    }
    std::function<void()> visit;
  };
  Buffer buffer;
  Visitor views[3];
  Recorder late[40];  // so many do not fit where the first three are kept
  const struct {
    const char* what;
    size_t visitor;
    std::function<void()> visit;
    const char* told;
  } cases[] = {
      {"the first leaves", 0, [&] { buffer.RemoveView(&views[0]); }, "111 011"},
      {"the last leaves", 2, [&] { buffer.RemoveView(&views[2]); }, "111 110"},
      {"one that was told leaves", 1, [&] { buffer.RemoveView(&views[0]); }, "111 011"},
      {"one that was not told yet leaves", 1, [&] { buffer.RemoveView(&views[2]); }, "110 110"},
      {"all leave", 0,
       [&] {
         for (Visitor& view : views) buffer.RemoveView(&view);
       },
       "100 000"},
      {"many come", 0,
       [&] {
         for (Recorder& view : late) buffer.AddView(&view);
       },
       "111 111"},
      {"it leaves and comes back", 0,
       [&] {
         buffer.RemoveView(&views[0]);
         buffer.AddView(&views[0]);
       },
       "111 111"},
      {"it edits on the way and another one leaves then", 0,
       [&] {
         views[1].visit = [&] { buffer.RemoveView(&views[1]); };
         buffer.SetFlagOnLine(0, line_flag::kBookmark, true);
       },
       "212 101"},
  };
  for (const auto& c : cases) {
    buffer.SetFlagOnLine(0, line_flag::kBookmark, false);
    for (Visitor& view : views) buffer.AddView(&view);
    const auto told = [&] {
      std::string times;
      for (Visitor& view : views) {
        const std::string log = view.Take();
        times += std::to_string(std::count(log.begin(), log.end(), '@'));
      }
      return times;
    };
    views[c.visitor].visit = c.visit;
    buffer.Insert({0, 0}, "x");
    std::string times = told();
    for (Recorder& view : late) EXPECT_EQ(view.Take(), "") << "it has seen the text as it is now";
    for (Visitor& view : views) view.visit = nullptr;
    buffer.Insert({0, 0}, "x");
    times += " " + told();
    EXPECT_EQ(times, c.told) << c.what;
    if (c.what == std::string_view("many come")) {
      for (Recorder& view : late) EXPECT_EQ(view.Take(), "+0101@0 ");
    }
    for (Visitor& view : views) buffer.RemoveView(&view);
    for (Recorder& view : late) buffer.RemoveView(&view);
  }
}

TEST(CrystalTextBuffer, GroupsNestAndMergeAndAreToldOnce) {
  Buffer buffer;
  Recorder view;
  TextPosition at;
  buffer.OpenUndoGroup(true);  // nothing to merge with
  buffer.Insert({0, 0}, "1");
  buffer.OpenUndoGroup();
  buffer.Insert({0, 1}, "2", action::kIndent);
  buffer.CloseUndoGroup(&view);
  EXPECT_EQ(view.Take(), "");
  buffer.CloseUndoGroup(&view);
  EXPECT_EQ(view.Take(), "closed 6'2' ");
  buffer.OpenUndoGroup(true);
  buffer.Insert({0, 2}, "3");
  buffer.CloseUndoGroup();
  buffer.Insert({0, 3}, "4");
  EXPECT_EQ(TextOf(buffer), "1234");
  ASSERT_TRUE(buffer.Undo(at));
  EXPECT_EQ(TextOf(buffer), "123");
  ASSERT_TRUE(buffer.Undo(at));
  EXPECT_EQ(TextOf(buffer), "");
  EXPECT_EQ(at, (TextPosition{0, 0}));
  EXPECT_FALSE(buffer.Undo(at));
  EXPECT_FALSE(buffer.IsModified());
  ASSERT_TRUE(buffer.Redo(at));
  EXPECT_EQ(TextOf(buffer), "123");
  EXPECT_EQ(at, (TextPosition{0, 3}));
  std::string label;
  ASSERT_TRUE(buffer.RedoLabel(label));
  EXPECT_EQ(label, "Typing");
  buffer.Insert({0, 0}, "x", 11);
  EXPECT_FALSE(buffer.CanRedo());
  EXPECT_FALSE(buffer.UndoLabel(label));
  EXPECT_EQ(label, "");
}

TEST(CrystalTextBuffer, MovesAndRefusesFlags) {
  Buffer buffer("a\rb\rc");
  const uint32_t mark = line_flag::NumberedBookmark(3);
  buffer.SetFlagOnLine(0, 3, true);  // two bits
  EXPECT_EQ(buffer.LineFlags(0), 0u);
  buffer.SetFlagOnLine(-1, mark, true, true);
  EXPECT_EQ(buffer.FirstLineWithFlag(mark), -1);
  buffer.SetFlagOnLine(2, mark, true);
  buffer.SetFlagOnLine(1, mark, true);
  buffer.SetFlagOnLine(0, mark, true, true);  // leaves line 1, the first that had it
  EXPECT_EQ(buffer.LineFlags(0), mark);
  EXPECT_EQ(buffer.LineFlags(1), 0u);
  EXPECT_EQ(buffer.LineFlags(2), mark);
  EXPECT_THROW(buffer.SetFlagOnLine(3, mark, true, true), std::invalid_argument);
  EXPECT_EQ(buffer.FirstLineWithFlag(mark), 0);
  buffer.SetFlagOnLine(-1, mark, false);
  EXPECT_EQ(buffer.FirstLineWithAnyFlag(mark | 1), 2);
  EXPECT_EQ(buffer.FirstLineWithFlag(mark | 1), -1);
  EXPECT_THROW(buffer.ChangeFlagsOnLines(0, 3, 1, 0), std::invalid_argument);
  EXPECT_EQ(buffer.LineFlags(0), 0u);
}

TEST(CrystalTextBuffer, FlagsStayOnTheLineThatIsBrokenAndMoveWithTheLinesBelow) {
  const uint32_t mark = line_flag::kBookmark;
  const struct {
    TextPosition at;
    const char* text;
    std::vector<uint32_t> flags;
  } cases[] = {
      {{0, 0}, "\r", {mark, 0, 0, line_flag::kBreakpoint}},
      {{0, 0}, "x\r\ny\rz", {mark, 0, 0, 0, line_flag::kBreakpoint}},
      {{0, 1}, "\r", {mark, 0, 0, line_flag::kBreakpoint}},
      {{0, 0}, "x", {mark, 0, line_flag::kBreakpoint}},
      {{1, 0}, "\r", {mark, 0, 0, line_flag::kBreakpoint}},
      {{2, 1}, "\r", {mark, 0, line_flag::kBreakpoint, 0}},
  };
  for (const auto& c : cases) {
    Buffer buffer("a\rb\rc");
    buffer.SetFlagOnLine(0, mark, true);
    buffer.SetFlagOnLine(2, line_flag::kBreakpoint, true);
    const auto flags = [&buffer] {
      std::vector<uint32_t> all;
      for (int32_t line = 0; line < buffer.LineCount(); ++line) all.push_back(buffer.LineFlags(line));
      return all;
    };
    ASSERT_TRUE(buffer.Insert(c.at, c.text));
    EXPECT_EQ(flags(), c.flags) << c.at.line << " " << c.text;
    TextPosition at;
    ASSERT_TRUE(buffer.Undo(at));
    EXPECT_EQ(flags(), (std::vector<uint32_t>{mark, 0, line_flag::kBreakpoint})) << c.text;
  }
}

TEST(CrystalTextBuffer, ChecksEveryPlace) {
  Buffer buffer("ab\rc");
  std::string text;
  TextPosition end;
  EXPECT_THROW((void)buffer.Line(2), std::invalid_argument);
  EXPECT_THROW((void)buffer.LineLength(-1), std::invalid_argument);
  EXPECT_THROW(buffer.CopyLeadingWhiteSpace(2, text), std::invalid_argument);
  EXPECT_THROW(buffer.CopyRange(0, 0, 1, 2, text), std::invalid_argument);
  EXPECT_THROW(buffer.CopyRange(1, 0, 0, 0, text), std::invalid_argument);
  EXPECT_THROW(buffer.InsertTextAt(nullptr, {0, 3}, "x", end), std::invalid_argument);
  EXPECT_THROW(buffer.DeleteRange(nullptr, 0, -1, 0, 1), std::invalid_argument);
  EXPECT_THROW(buffer.DeleteRange(nullptr, 0, 2, 0, 1), std::invalid_argument);
  EXPECT_EQ(TextOf(buffer), "ab|c");
  buffer.SetReadOnly(true);
  EXPECT_FALSE(buffer.InsertTextAt(nullptr, {0, 0}, "x", end));
  EXPECT_FALSE(buffer.DeleteRange(nullptr, 0, 0, 0, 1));
  EXPECT_FALSE(buffer.CanUndo());
  EXPECT_EQ(buffer.History().Count(), 1u);
}

TEST(CrystalTextBuffer, CopiesLinesAndTheirIndentation) {
  Buffer buffer("\t  x \r\r \t");
  std::string text;
  EXPECT_EQ(buffer.CopyLeadingWhiteSpace(0, text), 3);
  EXPECT_EQ(text, "\t  ");
  EXPECT_EQ(buffer.CopyLeadingWhiteSpace(1, text), 0);
  EXPECT_EQ(buffer.CopyLeadingWhiteSpace(2, text), 2);
  EXPECT_TRUE(buffer.CopyLine(2, text));
  EXPECT_EQ(text, " \t");
  EXPECT_FALSE(buffer.CopyLine(1, text));
  EXPECT_EQ(text, "");
  buffer.CopyRange(0, 3, 2, 1, text);
  EXPECT_EQ(text, "x \r\n\r\n ");
}

/// The same edits on plain strings.
using Lines = std::vector<std::string>;

Lines LinesOf(const CCrystalTextBuffer& buffer) {
  Lines lines;
  for (int32_t i = 0; i < buffer.LineCount(); ++i) lines.emplace_back(buffer.Line(i));
  return lines;
}

void SlowInsert(Lines& lines, TextPosition at, const std::string& text) {
  const std::string tail = lines[at.line].substr(at.character);
  lines[at.line].resize(at.character);
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      lines[at.line] += text[i];
      continue;
    }
    if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    lines.insert(lines.begin() + ++at.line, std::string());
  }
  lines[at.line] += tail;
}

void SlowDelete(Lines& lines, TextRange range) {
  const std::string tail = lines[range.end.line].substr(range.end.character);
  lines[range.start.line].resize(range.start.character);
  lines[range.start.line] += tail;
  lines.erase(lines.begin() + range.start.line + 1, lines.begin() + range.end.line + 1);
}

TEST(CrystalTextBuffer, RandomEditsUndoAndRedoByteForByte) {
  std::mt19937 random(3);
  const TempFolder folder;
  for (int round = 0; round < 30; ++round) {
    // A file of lone CRs is one line that holds them; other rounds have lines of many lengths.
    std::string bytes;
    for (int i = 0; i < 40; ++i) {
      bytes += std::string(random() % (round % 3 == 0 ? 2000 : 40), 'a' + i % 26) + "\r";
      if (round % 2 == 0 && i % 3 == 0) bytes += i == 0 ? "x\n" : "\n";
    }
    CCrystalTextBuffer buffer;
    ASSERT_TRUE(buffer.LoadFile(folder.Write("a", bytes)));
    Lines twin = LinesOf(buffer);
    std::vector<Lines> steps = {twin};
    const auto place = [&] {
      const auto line = static_cast<int32_t>(random() % twin.size());
      return TextPosition{line, static_cast<int32_t>(random() % (twin[line].size() + 1))};
    };
    for (int step = 0; step < 60; ++step) {
      buffer.OpenUndoGroup();
      for (auto edits = random() % 4 + 1; edits > 0; --edits) {
        if (random() % 5 < 3) {
          std::string text(random() % (step % 7 == 0 ? 3000 : 12), ' ');
          for (char& c : text) c = "ab\r\n"[random() % 4];
          const TextPosition at = place();
          TextPosition end;
          ASSERT_TRUE(buffer.InsertTextAt(nullptr, at, text, end));
          SlowInsert(twin, at, text);
        } else {
          const TextRange range = TextRange::Between(place(), place());
          ASSERT_TRUE(buffer.DeleteRange(nullptr, range));
          SlowDelete(twin, range);
        }
      }
      buffer.CloseUndoGroup();
      ASSERT_EQ(LinesOf(buffer), twin);
      steps.push_back(twin);
    }
    TextPosition at;
    for (size_t i = steps.size() - 1; i-- > 0;) {
      ASSERT_TRUE(buffer.Undo(at));
      ASSERT_EQ(LinesOf(buffer), steps[i]);
    }
    EXPECT_FALSE(buffer.IsModified());
    for (size_t i = 1; i < steps.size(); ++i) {
      ASSERT_TRUE(buffer.Redo(at));
      ASSERT_EQ(LinesOf(buffer), steps[i]);
    }
  }
}

TEST(CrystalTextBuffer, AReplaceAllOfOneHundredThousandPlacesIsOneStep) {
  Buffer buffer(std::string(100000, '\r'));
  buffer.OpenUndoGroup();
  for (int32_t line = 0; line < 100000; ++line) buffer.Insert({line, 0}, "x");
  buffer.CloseUndoGroup();
  TextPosition at;
  ASSERT_TRUE(buffer.Undo(at));
  EXPECT_EQ(buffer.LineLength(0) + buffer.LineLength(99999), 0);
  EXPECT_FALSE(buffer.CanUndo());
  ASSERT_TRUE(buffer.Redo(at));
  EXPECT_EQ(buffer.Line(99999), "x");
}

TEST(CrystalTextBuffer, LinesPutInAsSuchKeepTheirCrCharactersThroughUndoAndRedo) {
  Buffer buffer;
  buffer.NewBuffer();
  TextPosition end;
  ASSERT_TRUE(buffer.InsertLinesAt(nullptr, {0, 0}, {"a\r", "", "b\rc"}, end));
  EXPECT_EQ(end, (TextPosition{2, 3}));
  ASSERT_TRUE(buffer.Undo(end));
  EXPECT_EQ(buffer.LineCount(), 1);
  ASSERT_TRUE(buffer.Redo(end));
  ASSERT_EQ(buffer.LineCount(), 3);
  EXPECT_EQ(buffer.Line(0), "a\r");
  EXPECT_EQ(buffer.Line(2), "b\rc");
}

}  // namespace
}  // namespace quill
