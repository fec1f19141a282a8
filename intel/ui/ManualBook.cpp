#include "intel/ui/ManualBook.h"

#include <QDir>
#include <QFile>
#include <QHelpEngine>
#include <QHelpLink>

#include "intel/manual/ManualNames.h"

namespace quill {
namespace {

const QString kScheme = QStringLiteral("qthelp");

QString Space() {
  return QString::fromLatin1(manual::kHelpNamespace);
}

QString Folder() {
  return u'/' + QString::fromLatin1(manual::kHelpFolder) + u'/';
}

}  // namespace

ManualBook::ManualBook(const QString& collection) : m_engine(std::make_unique<QHelpEngine>(collection)) {
  m_engine->setReadOnly(true);
}

ManualBook::~ManualBook() = default;

std::unique_ptr<ManualBook> ManualBook::Open(const QString& folder) {
  const QDir beside(folder);
  const QString collection = beside.filePath(QString::fromLatin1(manual::kCollectionName));
  if (!QFile::exists(collection)) return nullptr;
  std::unique_ptr<ManualBook> book(new ManualBook(collection));
  const bool usable = book->m_engine->setupData() && !book->Read(StartPage()).isEmpty();
  return usable ? std::move(book) : nullptr;
}

QUrl ManualBook::PageUrl(const QString& target) {
  QUrl url;
  url.setScheme(kScheme);
  url.setHost(Space());
  url.setPath(Folder() + target.section(u'#', 0, 0));
  const QString anchor = target.section(u'#', 1);
  if (!anchor.isEmpty()) url.setFragment(anchor);
  return url;
}

QUrl ManualBook::StartPage() {
  return PageUrl(QString::fromLatin1(manual::kStartPageName));
}

bool ManualBook::IsPage(const QUrl& url) {
  return url.scheme() == kScheme && url.host() == Space();
}

bool ManualBook::HasTopic(const std::string& topic) const {
  return !m_engine->documentsForIdentifier(QString::fromLatin1(topic)).isEmpty();
}

QUrl ManualBook::TopicPage(const std::string& topic) const {
  if (topic.empty()) return StartPage();
  const QList<QHelpLink> links = m_engine->documentsForIdentifier(QString::fromLatin1(topic));
  return links.isEmpty() ? StartPage() : links.first().url;
}

QByteArray ManualBook::Read(const QUrl& url) const {
  return IsPage(url) ? m_engine->fileData(url) : QByteArray();
}

std::vector<ManualSection> ManualBook::Sections() const {
  std::vector<ManualSection> all;
  for (const QUrl& url : m_engine->files(Space(), QStringList(), QStringLiteral("html"))) {
    const std::string html = m_engine->fileData(url).toStdString();
    std::vector<ManualSection> sections = SectionsOf(url.fileName().toStdString(), html);
    all.insert(all.end(), std::make_move_iterator(sections.begin()), std::make_move_iterator(sections.end()));
  }
  return all;
}

}  // namespace quill
