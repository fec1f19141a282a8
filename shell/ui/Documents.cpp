#include "shell/ui/Documents.h"

#include <algorithm>
#include <utility>

#include "res/Strings.h"
#include "shell/RunLog.h"
#include "shell/ui/QuillDoc.h"

namespace quill {

Documents::Documents(DocumentServices services, QObject* parent)
    : QObject(parent), m_services(std::move(services)) {
  m_journal.setInterval(kJournalPeriod);
  connect(&m_journal, &QTimer::timeout, this, &Documents::FlushJournals);
}

Documents::~Documents() {
  for (CQuillDoc* document : m_documents) delete document;
}

CQuillDoc& Documents::Create() {
  auto* document = new CQuillDoc(m_services);
  m_documents.push_back(document);
  m_journal.start();
  Q_EMIT Created(document);
  return *document;
}

void Documents::MakeNew(CQuillDoc& document) {
  document.File().New(m_names.Next());
}

void Documents::Remove(CQuillDoc& document) {
  std::erase(m_documents, &document);
  if (m_documents.empty()) m_journal.stop();
  Q_EMIT Removed(&document);
  document.deleteLater();
}

CQuillDoc* Documents::Find(const std::string& path) const {
  const auto found = std::find_if(m_documents.begin(), m_documents.end(), [&path](const CQuillDoc* document) {
    return document->File().HoldsFile(path);
  });
  return found == m_documents.end() ? nullptr : *found;
}

/// A journal that cannot be written is tried again at the next turn.
void Documents::FlushJournals() {
  std::string failure;
  bool written = false;
  uint64_t changes = 0;
  for (CQuillDoc* document : m_documents) {
    const IoResult flushed = document->File().FlushJournal();
    if (!flushed && failure.empty()) failure = flushed.Message();
    written = written || (flushed && document->File().MayHoldUnsavedText());
    changes += document->File().ChangeCount();
  }
  // Without anything to write, nothing is known.
  if (!failure.empty() || written) LogJournals(failure);
  const bool quiet = std::exchange(m_changesSeen, changes) == changes;
  if (!failure.empty() && quiet) Q_EMIT JournalsFail(failure);
}

/// A line when something changes: a failure may last for hours.
void Documents::LogJournals(const std::string& failure) {
  if (failure == m_journalFailure) return;
  m_journalFailure = failure;
  if (m_services.log == nullptr) return;
  m_services.log->Line(failure.empty() ? Text(StringId::kLogJournalsWork) : std::string_view(failure));
}

}  // namespace quill
