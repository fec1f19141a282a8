#include "text/ui/AccessibleText.h"

#include <QApplication>
#include <algorithm>
#include <limits>
#include <string>

#include "text/edit/ColumnBlock.h"
#include "text/edit/ModelEditTarget.h"
#include "text/ui/CrystalEditView.h"
#include "text/ui/TextAnnouncer.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

/// Characters of a text that is handed over as the value of its field, too.
constexpr int kLongestValue = 1 << 16;

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* view = qobject_cast<CCrystalTextView*>(object);
  return view == nullptr ? nullptr : new AccessibleText(*view);
}

TextUnit UnitOf(QAccessible::TextBoundaryType boundary) {
  switch (boundary) {
    case QAccessible::CharBoundary:
      return TextUnit::kCharacter;
    case QAccessible::WordBoundary:
      return TextUnit::kWord;
    case QAccessible::NoBoundary:
      return TextUnit::kText;
    default:  // a script has neither sentences nor paragraphs
      return TextUnit::kLine;
  }
}

ColumnBlock BlockIn(CCrystalTextView& view) {
  ModelEditTarget target(view.Model());
  target.SetSettings({view.Settings().tabSize});
  return BlockOf(target);
}

/// The code page's bytes with the line ends that split lines; nothing when it lacks a character.
std::optional<std::string> ToScriptText(QString text) {
  text.replace("\r\n", "\n").replace('\r', '\n').replace("\n", "\r\n");
  return ToCodePage(text);
}

}  // namespace

void AccessibleText::Register() {
  [[maybe_unused]] static const bool once = [] {
    QAccessible::installFactory(MakeInterface);
    return true;
  }();
}

AccessibleText::AccessibleText(CCrystalTextView& view)
    : QAccessibleWidget(&view, QAccessible::EditableText) {}

CCrystalTextView& AccessibleText::View() const {
  return *static_cast<CCrystalTextView*>(widget());
}

TextAnnouncer& AccessibleText::Announcer() const {
  return View().Announcer();
}

const CCrystalTextBuffer* AccessibleText::Buffer() const {
  return View().Model().HasText() ? View().Buffer() : nullptr;
}

void* AccessibleText::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  if (type == QAccessible::EditableTextInterface && qobject_cast<CCrystalEditView*>(widget()) != nullptr) {
    return static_cast<QAccessibleEditableTextInterface*>(this);
  }
  return QAccessibleWidget::interface_cast(type);
}

QAccessible::State AccessibleText::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  const auto* view = qobject_cast<CCrystalEditView*>(widget());
  state.multiLine = true;
  state.selectableText = true;
  state.editable = view != nullptr && view->CanEdit();
  state.readOnly = !state.editable;
  return state;
}

QString AccessibleText::text(QAccessible::Text what) const {
  if (what != QAccessible::Value) return QAccessibleWidget::text(what);
  return characterCount() <= kLongestValue ? text(0, characterCount()) : QString();
}

// Places

TextPosition AccessibleText::PositionAt(int offset) const {
  return Buffer() == nullptr ? TextPosition{} : Announcer().Offsets().PositionAt(offset);
}

TextRange AccessibleText::RangeOf(int start, int end) const {
  return TextRange::Between(PositionAt(start), PositionAt(end));
}

int AccessibleText::characterCount() const {
  if (Buffer() == nullptr) return 0;
  return static_cast<int>(std::min<int64_t>(Announcer().Offsets().Length(), std::numeric_limits<int>::max()));
}

int AccessibleText::cursorPosition() const {
  return Buffer() == nullptr ? 0 : Announcer().OffsetOf(View().CaretPos());
}

void AccessibleText::setCursorPosition(int offset) {
  View().SetCaretPos(PositionAt(offset));
}

// Selections

int AccessibleText::selectionCount() const {
  TextViewModel& model = View().Model();
  if (Buffer() == nullptr) return 0;
  if (!model.IsColumnSelection()) return model.HasSelection() ? 1 : 0;
  const ColumnBlock block = BlockIn(View());
  return block.Width() == 0 ? 0 : block.lastLine - block.firstLine + 1;
}

TextRange AccessibleText::ColumnsOf(int index) const {
  const ColumnBlock block = BlockIn(View());
  return block.RangeOn(*Buffer(), block.firstLine + index, View().Settings().tabSize);
}

void AccessibleText::selection(int index, int* start, int* end) const {
  *start = *end = 0;
  if (index < 0 || index >= selectionCount()) return;
  const TextRange range = View().Model().IsColumnSelection() ? ColumnsOf(index) : View().Selection();
  *start = Announcer().OffsetOf(range.start);
  *end = Announcer().OffsetOf(range.end);
}

void AccessibleText::addSelection(int start, int end) {
  View().SetSelection(PositionAt(start), PositionAt(end));
}

void AccessibleText::removeSelection(int index) {
  if (index >= 0 && index < selectionCount()) View().SetCaretPos(View().CaretPos());
}

void AccessibleText::setSelection(int index, int start, int end) {
  if (index == 0) addSelection(start, end);
}

// Text

QString AccessibleText::Told(const std::optional<TextRange>& range, int* start, int* end) const {
  *start = *end = -1;
  if (!range || Buffer() == nullptr) return {};
  *start = Announcer().OffsetOf(range->start);
  *end = Announcer().OffsetOf(range->end);
  std::string text;
  Buffer()->CopyRange(*range, text, "\n");
  return FromCodePage(text);
}

QString AccessibleText::text(int start, int end) const {
  return Told(RangeOf(start, end), &start, &end);
}

QString AccessibleText::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                         int* end) const {
  if (Buffer() == nullptr) return Told(std::nullopt, start, end);
  return Told(UnitBefore(*Buffer(), PositionAt(offset), UnitOf(boundary)), start, end);
}

QString AccessibleText::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                     int* end) const {
  if (Buffer() == nullptr) return Told(std::nullopt, start, end);
  return Told(UnitAt(*Buffer(), PositionAt(offset), UnitOf(boundary)), start, end);
}

QString AccessibleText::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                                        int* end) const {
  if (Buffer() == nullptr) return Told(std::nullopt, start, end);
  return Told(UnitAfter(*Buffer(), PositionAt(offset), UnitOf(boundary)), start, end);
}

// Geometry and looks

QRect AccessibleText::characterRect(int offset) const {
  CCrystalTextView& view = View();
  if (Buffer() == nullptr) return {};
  const TextPosition at = PositionAt(offset);
  if (view.Model().Folds().IsHidden(at.line)) return {};
  const QPoint place = view.PointOf(at);
  int width = view.Model().Metrics().Advance(' ') / static_cast<int>(ColumnMetrics::kUnitsPerPixel);
  if (at.character < Buffer()->LineLength(at.line)) {
    width = view.PointOf({at.line, at.character + 1}).x() - place.x();
  }
  return {view.viewport()->mapToGlobal(place), QSize(width, view.LineHeight())};
}

int AccessibleText::offsetAtPoint(const QPoint& point) const {
  CCrystalTextView& view = View();
  const QPoint inView = view.viewport()->mapFromGlobal(point);
  if (Buffer() == nullptr || !view.viewport()->rect().contains(inView) || view.IsInMargin(inView)) return -1;
  // The caret goes to the nearer side of a character; here it is the character itself that is meant.
  TextPosition at = view.PositionAt(inView);
  if (at.character > 0 && view.PointOf(at).x() > inView.x()) --at.character;
  return Announcer().OffsetOf(at);
}

void AccessibleText::scrollToSubstring(int start, int end) {
  const TextRange range = RangeOf(start, end);
  View().EnsureVisible(range.end);
  View().EnsureVisible(range.start);
}

QString AccessibleText::attributes(int offset, int* start, int* end) const {
  *start = *end = 0;
  if (Buffer() == nullptr) return {};
  const TextPosition at = PositionAt(offset);
  TextRange run{{at.line, 0}, {at.line, Buffer()->LineLength(at.line)}};
  int32_t colour = kColourText;
  for (const TextBlock& block : View().BlocksOf(at.line, {at.character, at.character + 1})) {
    if (block.column > at.character) {
      run.end.character = block.column;
      break;
    }
    run.start.character = block.column;
    colour = block.colour;
  }
  *start = Announcer().OffsetOf(run.start);
  *end = Announcer().OffsetOf(run.end);
  const QColor ink = View().Palette().Colour(colour);
  return QString("font-family:%1;font-size:%2pt;font-weight:%3;color:rgb(%4,%5,%6);")
      .arg(View().Font().family())
      .arg(View().Settings().fontSize)
      .arg(View().Palette().IsBold(colour) ? "bold" : "normal")
      .arg(ink.red())
      .arg(ink.green())
      .arg(ink.blue());
}

// Edits

void AccessibleText::deleteText(int start, int end) {
  replaceText(start, end, {});
}

void AccessibleText::insertText(int offset, const QString& text) {
  replaceText(offset, offset, text);
}

void AccessibleText::replaceText(int start, int end, const QString& text) {
  auto* view = qobject_cast<CCrystalEditView*>(widget());
  const std::optional<std::string> bytes = ToScriptText(text);
  if (view == nullptr || !view->CanEdit() || !bytes) return QApplication::beep();
  const TextRange range = RangeOf(start, end);
  if (range.IsEmpty() && bytes->empty()) return;
  view->SetSelection(range.start, range.end);
  view->ReplaceSelectedText(*bytes);
}

}  // namespace quill
