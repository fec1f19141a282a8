#include "find/ui/SearchMarks.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimerEvent>
#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

constexpr int kSliceMs = 4;  ///< a key that comes meanwhile waits no longer than that
constexpr int32_t kLinesAStep = 1024;
/// Longer lines are searched only around the columns that are shown.
constexpr int32_t kLongLine = 1 << 16;

}  // namespace

SearchMarks::SearchMarks(CCrystalTextView& view)
    : m_view(&view),
      m_input(&view.Input()),
      m_watch(view, {[this](const TextChange*, uint32_t hints, int32_t line) { OnTextChanged(hints, line); },
                     [this] { Hide(); }}) {
  view.Input().Add(InputTurn::kMarks, *this);
  connect(&view, &CCrystalTextView::CaretMoved, this, [this] {
    if (AreShown()) Q_EMIT StatusChanged();
  });
}

SearchMarks::~SearchMarks() {
  if (m_input != nullptr) m_input->Remove(*this);
  if (m_view != nullptr) Hide();
}

void SearchMarks::Show(const SearchRequest& search) {
  const uint32_t flags = search.flags & ~search_flag::kUpwards;
  const bool same =
      AreShown() && m_counter->Search().What() == search.what && m_counter->Search().Flags() == flags;
  if (m_view->Buffer() == nullptr || same) return;
  m_counter.emplace(*m_view->Buffer());
  m_counter->Start(TextSearch(search.what, flags));
  if (!AreShown()) return Hide();
  m_view->SetDecoration(this);
  m_slice.start(0, this);
  Q_EMIT StatusChanged();
}

void SearchMarks::Hide() {
  m_slice.stop();
  if (!m_counter) return;
  m_counter.reset();
  m_view->SetDecoration(nullptr);
  Q_EMIT StatusChanged();
}

QString SearchMarks::StatusText() const {
  if (!AreShown() || (m_counter->IsComplete() && m_counter->Count() == 0)) return {};
  return QString::fromStdString(m_counter->StatusText(m_view->Selection()));
}

bool SearchMarks::TakeInput(QEvent& event) {
  if (event.type() != QEvent::KeyPress || !AreShown()) return false;
  if (static_cast<const QKeyEvent&>(event).key() != Qt::Key_Escape) return false;
  Hide();
  return true;
}

void SearchMarks::timerEvent(QTimerEvent* event) {
  if (event->timerId() != m_slice.timerId()) return QObject::timerEvent(event);
  QElapsedTimer time;
  time.start();
  bool complete = false;
  while (!complete && time.elapsed() < kSliceMs) complete = m_counter->Advance(kLinesAStep);
  if (complete) m_slice.stop();
  Q_EMIT StatusChanged();
}

void SearchMarks::OnTextChanged(uint32_t hints, int32_t line) {
  if (!AreShown()) return;
  m_counter->OnTextChanged(hints, line);
  if (!m_counter->IsComplete()) m_slice.start(0, this);
}

void SearchMarks::MarksOf(int32_t line, ColumnRange visible, std::vector<ColumnRange>& marks) const {
  const TextSearch& search = m_counter->Search();
  const std::string_view text = m_view->Buffer()->Line(line);
  const bool whole = text.size() <= kLongLine;
  int32_t at = search.NextOccurrence(text, whole ? 0 : std::max(0, visible.start - search.Length()));
  while (at >= 0 && at < visible.end) {
    marks.push_back({at, at + search.Length()});
    at = search.NextOccurrence(text, at + search.Length());
  }
}

SearchMarks& ViewMarks::Of(CCrystalTextView& view) {
  std::unique_ptr<SearchMarks>& marks = m_marks[&view];
  if (marks == nullptr) {
    marks = std::make_unique<SearchMarks>(view);
    connect(&view, &QObject::destroyed, this, [this](QObject* gone) {
      m_marks.at(gone)->ForgetView();
      m_marks.erase(gone);
    });
  }
  return *marks;
}

}  // namespace quill
