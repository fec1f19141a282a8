#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "text/edit/AutoIndent.h"
#include "text/edit/EditTarget.h"
#include "text/edit/TypingSession.h"
#include "text/edit/UndoStep.h"
#include "text/view/VisualColumns.h"

namespace quill {

/// An edit view without a window. Texts are written with "\n" between lines and either "|" for the caret
/// or "[" and "]" around the selection, the caret being at its end.
class FakeEditor : public EditTarget, public BufferObserver, public EditHook {
 public:
  explicit FakeEditor(std::string_view marked = "|") {
    buffer.NewBuffer();
    buffer.AddView(this);
    Set(marked);
  }

  void Set(std::string_view marked) {
    columns = false;
    typing.Forget();
    std::string text;
    anchor = caret = {};
    TextPosition place;
    const bool selects = marked.find('|') == std::string_view::npos;
    for (const char c : marked) {
      if (c == '|') {
        anchor = caret = place;
      } else if (selects && (c == '[' || c == ']')) {
        (c == '[' ? anchor : caret) = place;
      } else {
        text += c == '\n' ? "\r\n" : std::string(1, c);
        place = c == '\n' ? TextPosition{place.line + 1, 0} : TextPosition{place.line, place.character + 1};
      }
    }
    const TextPosition a = anchor;
    const TextPosition b = caret;
    buffer.NewBuffer();
    TextPosition end;
    buffer.InsertTextAt(nullptr, {0, 0}, text, end);
    buffer.SetModified(false);
    Select(a, b);
  }

  /// The same notation back.
  std::string Get() const {
    std::string text;
    const TextRange selection = Selection();
    const bool selects = HasSelection() || columns;
    for (int32_t line = 0; line < buffer.LineCount(); ++line) {
      if (line > 0) text += '\n';
      for (int32_t i = 0; i <= buffer.LineLength(line); ++i) {
        const TextPosition place{line, i};
        if (selects && place == selection.start) text += '[';
        if (place == selection.end) text += selects ? ']' : '|';
        if (i < buffer.LineLength(line)) text += buffer.Line(line)[static_cast<size_t>(i)];
      }
    }
    return text;
  }

  bool Type(std::string_view text) {
    bool typed = true;
    for (const char c : text) {
      typed = (c == '\n' ? typing.TypeEnter(*this) : typing.TypeCharacter(*this, c)) && typed;
    }
    return typed;
  }
  /// Undoes what came after `Set`; returns the number of steps.
  int UndoAll() {
    int steps = 0;
    while (Undo()) ++steps;
    return steps;
  }
  bool Undo() { return buffer.History().Position() > 1 && edit::Undo(*this); }
  std::string Text() const {
    std::string text;
    buffer.CopyRange({{0, 0}, buffer.EndOfText()}, text, "\n");
    return text;
  }
  std::string UndoLabel() const {
    std::string label;
    buffer.UndoLabel(label);
    return label;
  }

  // Of EditTarget
  CCrystalTextBuffer& Buffer() const override { return buffer; }
  EditSource Source() override { return this; }
  EditSettings Settings() const override { return settings; }
  bool IsOverwriting() const override { return overwriting; }
  TextPosition Caret() const override { return caret; }
  TextPosition Anchor() const override { return anchor; }
  void Select(TextPosition newAnchor, TextPosition newCaret) override {
    buffer.CheckPosition(newAnchor);
    buffer.CheckPosition(newCaret);
    anchor = newAnchor;
    caret = newCaret;
    corners.reset();
  }
  bool IsColumnSelection() const override { return columns; }
  void SetColumnSelection(bool on) override { columns = on; }
  BlockCorner AnchorCorner() const override { return corners ? corners->first : CornerOf(anchor); }
  BlockCorner CaretCorner() const override { return corners ? corners->second : CornerOf(caret); }
  void SelectBlock(BlockCorner anchorCorner, BlockCorner caretCorner) override {
    EditTarget::SelectBlock(anchorCorner, caretCorner);
    corners.emplace(anchorCorner, caretCorner);
  }

  // Of BufferObserver and EditHook: caret and anchor move along, as those of a window do
  void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t, int32_t) override {
    if (change == nullptr) return;
    corners.reset();
    for (TextPosition* place : {&anchor, &caret}) {
      *place = change->inserted ? PositionAfterInsert(*place, change->range)
                                : PositionAfterDelete(*place, change->range);
    }
  }
  void OnUndoGroupClosed(int32_t action, std::string_view text) override {
    edit::AfterInsertion(*this, action, text);
  }

  mutable CCrystalTextBuffer buffer;
  EditSettings settings;
  TypingSession typing;
  TextPosition anchor;
  TextPosition caret;
  bool overwriting = false;
  bool columns = false;
  std::optional<std::pair<BlockCorner, BlockCorner>> corners;  ///< behind the ends of their lines
};

}  // namespace quill
