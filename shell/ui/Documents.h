#pragma once
#include <QObject>
#include <QTimer>
#include <string>
#include <vector>

#include "shell/DocumentFile.h"
#include "shell/UntitledNames.h"

namespace quill {

class CQuillDoc;

/// The open documents. Writes their recovery journals once a second.
class Documents : public QObject {
  Q_OBJECT

 public:
  /// What every document works with.
  explicit Documents(DocumentServices services, QObject* parent = nullptr);
  ~Documents() override;

  /// A document without text and file; the caller fills it or removes it again.
  CQuillDoc& Create();
  /// Fills a document with an empty text and the next title.
  void MakeNew(CQuillDoc& document);
  void Remove(CQuillDoc& document);

  const std::vector<CQuillDoc*>& All() const { return m_documents; }
  /// The document that holds the file; null when none does.
  CQuillDoc* Find(const std::string& path) const;

  void FlushJournals();

  static constexpr int kJournalPeriod = 1000;  ///< milliseconds

 Q_SIGNALS:
  void Created(CQuillDoc* document);
  void Removed(CQuillDoc* document);
  /// At each turn at which journals cannot be written and nobody has typed since the last: why.
  void JournalsFail(const std::string& why);

 private:
  void LogJournals(const std::string& failure);

  DocumentServices m_services;
  UntitledNames m_names;
  std::vector<CQuillDoc*> m_documents;
  QTimer m_journal;
  std::string m_journalFailure;  ///< empty while journals can be written
  uint64_t m_changesSeen = 0;
};

}  // namespace quill
