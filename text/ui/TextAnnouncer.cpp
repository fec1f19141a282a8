#include "text/ui/TextAnnouncer.h"

#include <QAccessible>
#include <algorithm>
#include <limits>
#include <utility>

#include "text/ui/CrystalTextView.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

/// Of what is told piece by piece; more, as after a replacement in the whole file, nobody listens to.
constexpr size_t kMostChanges = 1000;
constexpr size_t kMostCharacters = size_t{1} << 20;

}  // namespace

TextAnnouncer::TextAnnouncer(CCrystalTextView& view) : m_view(view) {
  connect(&view, &CCrystalTextView::BufferReplaced, this, [this] {
    Follow(m_view.Buffer());
    TellAsAWhole();
  });
  connect(&view, &CCrystalTextView::SelectionChanged, this, &TextAnnouncer::Tell);
}

TextAnnouncer::~TextAnnouncer() {
  Follow(nullptr);
}

void TextAnnouncer::Follow(CCrystalTextBuffer* buffer) {
  if (m_buffer != nullptr) m_buffer->RemoveView(this);
  m_buffer = buffer;
  if (buffer != nullptr) buffer->AddView(this);
}

OffsetIndex& TextAnnouncer::Offsets() {
  if (m_offsets == nullptr) m_offsets = std::make_unique<OffsetIndex>(*m_buffer);
  return *m_offsets;
}

int TextAnnouncer::OffsetOf(TextPosition position) {
  return static_cast<int>(std::min<int64_t>(Offsets().OffsetOf(position), std::numeric_limits<int>::max()));
}

void TextAnnouncer::Forget() {
  m_offsets.reset();
  m_changes.clear();
  m_characters = 0;
  m_allChanged = false;
}

// What the buffer tells

void TextAnnouncer::OnDeleting(TextRange range) {
  if (QAccessible::isActive()) Add(false, range);
}

void TextAnnouncer::OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints, int32_t) {
  if ((hints & hint::kReset) != 0) return TellAsAWhole();
  if (change == nullptr) return;
  if (!QAccessible::isActive()) return Forget();
  if (m_offsets != nullptr) m_offsets->OnTextChange(*change);
  if (change->inserted) Add(true, change->range);
}

void TextAnnouncer::Add(bool inserted, TextRange range) {
  TellSoon();
  if (m_allChanged) return;
  const int offset = OffsetOf(range.start);
  std::string text;
  m_buffer->CopyRange(range, text, "\n");
  m_characters += text.size();
  m_changes.push_back({inserted, offset, std::move(text)});
  if (m_changes.size() <= kMostChanges && m_characters <= kMostCharacters) return;
  m_changes.clear();
  m_allChanged = true;
}

void TextAnnouncer::TellAsAWhole() {
  Forget();
  if (!QAccessible::isActive()) return;
  m_allChanged = true;
  TellSoon();
}

/// The view tells of each caret that it moves, and with that of what was edited there. An edit in another
/// view of the text moves none here.
void TextAnnouncer::TellSoon() {
  if (m_willTell) return;
  m_willTell = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        m_willTell = false;
        Tell();
      },
      Qt::QueuedConnection);
}

// What is told

void TextAnnouncer::Tell() {
  if (!QAccessible::isActive()) return Forget();
  TellChanges();
  if (!m_view.Model().HasText()) return;
  TellCaret();
  TellSelection();
}

void TextAnnouncer::TellChanges() {
  m_characters = 0;
  if (std::exchange(m_allChanged, false)) {
    QAccessibleEvent event(&m_view, QAccessible::VisibleDataChanged);
    QAccessible::updateAccessibility(&event);
  }
  for (const Change& change : std::exchange(m_changes, {})) {
    if (change.inserted) {
      QAccessibleTextInsertEvent event(&m_view, change.offset, FromCodePage(change.text));
      QAccessible::updateAccessibility(&event);
    } else {
      QAccessibleTextRemoveEvent event(&m_view, change.offset, FromCodePage(change.text));
      QAccessible::updateAccessibility(&event);
    }
  }
}

void TextAnnouncer::TellCaret() {
  const int caret = OffsetOf(m_view.CaretPos());
  if (caret == m_caret) return;
  m_caret = caret;
  QAccessibleTextCursorEvent event(&m_view, caret);
  QAccessible::updateAccessibility(&event);
}

void TextAnnouncer::TellSelection() {
  const TextRange selection = m_view.Model().HasSelection() ? m_view.Selection() : TextRange{};
  const bool columns = m_view.Model().IsColumnSelection();
  if (selection == m_selection && columns == m_columns) return;
  m_selection = selection;
  m_columns = columns;
  const bool any = m_view.Model().HasSelection();
  QAccessibleTextSelectionEvent event(&m_view, any ? OffsetOf(selection.start) : m_caret,
                                      any ? OffsetOf(selection.end) : m_caret);
  event.setCursorPosition(m_caret);
  QAccessible::updateAccessibility(&event);
}

}  // namespace quill
