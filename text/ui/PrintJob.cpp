#include "text/ui/PrintJob.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "text/ui/CrystalTextView.h"
#include "text/ui/PrintPages.h"

namespace quill {
namespace {

/// Characters between two looks at the clock.
constexpr int64_t kCharactersAtOnce = 100'000;

QFont PaperFont(const CCrystalTextView& view) {
  QFont font = view.Font();
  font.setPointSizeF(view.Settings().fontSize);  // whatever the zoom
  return font;
}

}  // namespace

PrintJob::PrintJob(CCrystalTextView& view, const PageMargins& margins, QString title)
    : m_source{TextCopy(*view.Buffer()),
               WordClassesCopy(view.Words()),
               ViewPalette::ForPaper(view.Settings().colours),
               PaperFont(view),
               view.Settings().tabSize,
               margins,
               std::move(title)} {}

PrintJob::~PrintJob() {
  Cancel();
}

bool PrintJob::Begin(std::unique_ptr<PrintTarget> target) {
  if (IoResult opened = target->Open(); !opened) {
    m_failure = opened.Message();
    return false;
  }
  m_target = std::move(target);
  m_pages = std::make_unique<PrintPages>(m_source, *m_target);
  if (!m_pages->IsActive()) {
    Fail({});
    return false;
  }
  m_state = State::kPreparing;
  return true;
}

PrintJob::State PrintJob::Step(int milliseconds) {
  QElapsedTimer clock;
  clock.start();
  while (m_state == State::kPreparing) {
    if (!m_pages->Layout().Continue(kCharactersAtOnce)) {
      const int32_t count = m_pages->Layout().PageCount();
      m_last = m_target->LastPage() > 0 ? std::min(m_target->LastPage(), count) : count;
      m_first = m_next = std::clamp(m_target->FirstPage() - 1, 0, m_last - 1);
      m_state = State::kPrinting;
    }
    if (clock.hasExpired(milliseconds)) return m_state;
  }
  while (m_state == State::kPrinting) {
    if (m_next > m_first) {
      if (const IoResult made = m_target->NewPage(); !made) return Fail(made.Message());
    }
    m_pages->Paint(m_next++);
    if (m_next == m_last) return Finish();
    if (clock.hasExpired(milliseconds)) return m_state;
  }
  return m_state;
}

PrintJob::State PrintJob::Finish() {
  if (!m_pages->End()) return Fail({});
  if (const IoResult finished = m_target->Finish(); !finished) return Fail(finished.Message());
  m_pages.reset();
  m_target.reset();
  return m_state = State::kDone;
}

PrintJob::State PrintJob::Fail(const std::string& why) {
  Cancel();
  m_failure = why;
  return m_state = State::kFailed;
}

void PrintJob::Cancel() {
  if (m_target == nullptr) return;
  if (m_pages->IsActive()) {
    m_target->Abandon();
    m_pages->End();
  }
  m_pages.reset();
  m_target.reset();
  m_state = State::kFailed;
}

int PrintJob::Done() const {
  if (m_pages == nullptr) return 0;
  return m_state == State::kPreparing ? m_pages->Layout().LinesDone() : m_next - m_first;
}

int PrintJob::All() const {
  return m_state == State::kPreparing ? std::max(1, m_source.text.LineCount())
                                      : std::max(1, m_last - m_first);
}

}  // namespace quill
