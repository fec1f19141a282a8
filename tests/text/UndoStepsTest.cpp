// What a run of keys is undone as.

#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "FakeEditor.h"
#include "support/TempFolder.h"
#include "text/edit/IndentAll.h"

namespace quill {
namespace {

void SelectAll(FakeEditor& editor) {
  editor.Select({0, 0}, editor.buffer.EndOfText());
}

TEST(UndoSteps, EndWhereTheUserDidSomethingElse) {
  TempFolder folder;
  const auto type = [](const char* text) { return [=](FakeEditor& e) { e.Type(text); }; };
  const auto backspace = [](FakeEditor& e) { e.typing.TypeBackspace(e); };
  const auto erase = [](FakeEditor& e) { e.typing.TypeDelete(e); };
  const auto save = [&](FakeEditor& e) { ASSERT_TRUE(e.buffer.SaveFile(folder.Path("a.vsl"))); };
  const auto undoRedo = [](FakeEditor& e) {
    ASSERT_TRUE(edit::Undo(e));
    ASSERT_TRUE(edit::Redo(e));
  };
  const auto elsewhere = [](FakeEditor& e) {
    TextPosition end;
    e.buffer.InsertTextAt(nullptr, {0, 0}, "!\r\n", end);
  };
  const struct {
    const char* name;
    const char* before;
    std::vector<std::function<void(FakeEditor&)>> keys;
    std::vector<const char*> texts;  ///< one undo after the other
  } cases[] = {
      {"a selection", "|", {type("word"), SelectAll, type("x")}, {"x", "word", ""}},
      {"Backspace", "|", {type("ab"), backspace, type("c")}, {"ac", "a", "ab", ""}},
      {"Delete", "|z", {type("ab"), erase, type("c")}, {"abc", "ab", "abz", "z"}},
      {"Enter", "|", {type("ab\ncd")}, {"ab\ncd", "ab\n", "ab", ""}},
      {"Indent All",
       "{\n|",
       {type("ab"), edit::IndentAll, type("c")},
       {"{\n\tabc", "{\n\tab", "{\nab", "{\n"}},
      {"a save", "|", {type("ab"), save, type("c")}, {"abc", "ab", ""}},
      {"a save between Backspaces", "abc|", {backspace, save, backspace}, {"a", "ab", "abc"}},
      {"undo and redo", "|", {type("ab"), undoRedo, type("c")}, {"abc", "ab", ""}},
      {"another window", "|", {type("ab"), elsewhere, type("c")}, {"!\nabc", "!\nab", "ab", ""}},
      {"a bracket by itself", "|", {type("(+")}, {"(+)", "(", ""}},
      {"words to the left",
       "ab, cd|",
       {backspace, backspace, backspace, backspace, backspace},
       {"a", "ab, ", "ab, cd"}},
      {"words to the right", "|ab, cd", {erase, erase, erase, erase, erase}, {"d", "cd", "ab, cd"}},
      {"over line ends", "a\n\nb|", {backspace, backspace, backspace}, {"a", "a\n\n", "a\n\nb"}},
      {"both ways", "ab|cd", {backspace, erase, backspace}, {"d", "ad", "acd", "abcd"}},
      {"the text's ends", "|", {backspace, erase}, {""}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor(c.before);
    for (const auto& key : c.keys) key(editor);
    for (size_t i = 0; i < c.texts.size(); ++i) {
      EXPECT_EQ(editor.Text(), c.texts[i]) << i << " undone";
      EXPECT_EQ(editor.Undo(), i + 1 < c.texts.size());
    }
    while (edit::Redo(editor)) {
    }
    EXPECT_EQ(editor.Text(), c.texts.front());
  }
}

TEST(UndoSteps, KeysThatAreHeldDownAreUndoneToTheEnd) {
  constexpr int kKeys = 1500;  // more than the history has records
  const struct {
    const char* name;
    std::function<bool(FakeEditor&)> key;
    std::string before;
  } cases[] = {
      {"words", [](FakeEditor& e) { return e.typing.TypeBackspace(e); }, "ab cde\n"},
      {"short words", [](FakeEditor& e) { return e.typing.TypeBackspace(e); }, "a.b\t_ x\n"},
      {"lines", [](FakeEditor& e) { return e.typing.TypeBackspace(e); }, "\n"},
      {"Delete", [](FakeEditor& e) { return e.typing.TypeDelete(e); }, "a+b\n"},
      {"typing", [](FakeEditor& e) { return e.Type("w"); }, "xyz "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::string text;
    while (text.size() < kKeys) text += c.before;
    const bool atStart = std::string(c.name) == "Delete";
    FakeEditor editor(atStart ? "|" + text : text + "|");
    for (int i = 0; i < kKeys; ++i) ASSERT_TRUE(c.key(editor));
    const std::string after = editor.Text();
    ASSERT_NE(after, text);
    editor.UndoAll();
    EXPECT_EQ(editor.Text(), text);
    while (edit::Redo(editor)) {
    }
    EXPECT_EQ(editor.Text(), after);
  }
}

/// A text in one piece, and what it was before each step.
struct PlainModel {
  std::string text;
  size_t caret = 0;
  std::vector<std::string> before;
  char last = 0;  ///< the last key of a run: t, b or d; 0 for anything else
  char lastChar = 0;
  std::string saved;

  void Step(char key, char c, bool sameWord) {
    if (key == 0 || key != last || !sameWord) before.push_back(text);
    last = key;
    lastChar = c;
  }
  void Type(char c) {
    Step('t', c, (std::isalnum(c) != 0) == (std::isalnum(lastChar) != 0));
    text.insert(caret++, 1, c);
  }
  void Backspace() {
    if (caret == 0) return;
    const char c = text[caret - 1];
    Step('b', c, std::isalnum(c) != 0 || std::isalnum(lastChar) == 0);
    text.erase(--caret, 1);
  }
  void Delete() {
    if (caret == text.size()) return;
    const char c = text[caret];
    Step('d', c, std::isalnum(c) == 0 || std::isalnum(lastChar) != 0);
    text.erase(caret, 1);
  }
};

TEST(UndoSteps, AreThoseOfAPlainModel) {
  TempFolder folder;
  std::mt19937 random(11);
  for (int round = 0; round < 20; ++round) {
    FakeEditor editor;
    editor.settings.autoIndent = false;
    PlainModel model;
    const auto place = [&] {
      TextPosition at;
      for (size_t i = 0; i < model.caret; ++i) {
        at = model.text[i] == '\n' ? TextPosition{at.line + 1, 0} : TextPosition{at.line, at.character + 1};
      }
      return at;
    };
    for (int key = 0; key < 300; ++key) {
      const unsigned choice = random() % 100;
      const char typed = "abc1 .;x"[random() % 8];
      const unsigned times = 1 + random() % 5;
      for (unsigned i = 0; i < times; ++i) {
        if (choice < 40) {
          model.Type(typed);
          editor.Type({&typed, 1});
        } else if (choice < 55) {
          model.Backspace();
          editor.typing.TypeBackspace(editor);
        } else if (choice < 65) {
          model.Delete();
          editor.typing.TypeDelete(editor);
        }
      }
      if (choice >= 65 && choice < 72) {
        model.Step(0, 0, false);
        model.text.insert(model.caret++, 1, '\n');
        editor.Type("\n");
      } else if (choice >= 72 && choice < 88) {
        model.caret = model.text.empty() ? 0 : random() % (model.text.size() + 1);
        model.last = 0;
        editor.typing.Forget();
        editor.PlaceCaret(place());
      } else if (choice >= 88 && choice < 90) {
        if (!model.text.empty()) model.last = 0;
        model.Type('s');
        model.text = "s";
        model.caret = 1;
        SelectAll(editor);
        editor.Type("s");
      } else if (choice >= 90) {
        model.last = 0;
        model.saved = model.text;
        ASSERT_TRUE(editor.buffer.SaveFile(folder.Path("a.vsl")));
      }
      ASSERT_EQ(editor.Text(), model.text) << round << " " << key;
      ASSERT_EQ(editor.Caret(), place()) << round << " " << key;
    }
    bool sawSaved = !editor.buffer.IsModified();
    for (; !model.before.empty() && editor.Undo(); model.before.pop_back()) {
      ASSERT_EQ(editor.Text(), model.before.back()) << round << " " << model.before.size();
      sawSaved = sawSaved || !editor.buffer.IsModified();
      if (!editor.buffer.IsModified()) {
        ASSERT_EQ(editor.Text(), model.saved);
      }
    }
    EXPECT_TRUE(model.before.empty()) << round;
    EXPECT_TRUE(sawSaved) << round;
  }
}

}  // namespace
}  // namespace quill
