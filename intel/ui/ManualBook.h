#pragma once
#include <QByteArray>
#include <QUrl>
#include <memory>
#include <string>
#include <vector>

#include "intel/manual/ManualSearch.h"

class QHelpEngine;

namespace quill {

/// The compiled manual beside the program. It is only read: the folder need not be writable.
class ManualBook {
 public:
  /// Null when the files are missing or are no manual.
  static std::unique_ptr<ManualBook> Open(const QString& folder);
  ~ManualBook();

  /// For its contents and its index.
  QHelpEngine& Engine() const { return *m_engine; }
  /// `target` is a page's name, with "#anchor" behind it or not.
  static QUrl PageUrl(const QString& target);
  static QUrl StartPage();
  static bool IsPage(const QUrl& url);

  /// Whether a word in lower case is in the index.
  bool HasTopic(const std::string& topic) const;
  /// The start page for what is not in the index.
  QUrl TopicPage(const std::string& topic) const;
  /// Of a page, a style sheet or a picture; empty when there is none.
  QByteArray Read(const QUrl& url) const;
  /// All pages in sections. Takes some tens of milliseconds.
  std::vector<ManualSection> Sections() const;

 private:
  explicit ManualBook(const QString& collection);

  std::unique_ptr<QHelpEngine> m_engine;
};

}  // namespace quill
