#include "intel/ui/ManualSearchPane.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include "intel/ui/ListSteering.h"
#include "intel/ui/ManualBook.h"
#include "intel/ui/ManualResultDelegate.h"
#include "res/Commands.h"
#include "res/ui/UiText.h"

namespace quill {
namespace {

constexpr size_t kMostResults = 200;

/// The matches in characters instead of bytes.
QList<int> MatchPlaces(const ManualExcerpt& excerpt) {
  QList<int> places;
  const auto characters = [&](size_t bytes) {
    return static_cast<int>(QString::fromUtf8(excerpt.text.data(), static_cast<qsizetype>(bytes)).size());
  };
  for (const ManualExcerpt::Match& match : excerpt.matches)
    places << characters(match.start) << characters(match.end);
  return places;
}

QListWidgetItem* ItemOf(const ManualSection& section, const ManualExcerpt& excerpt) {
  auto* item = new QListWidgetItem(QString::fromStdString(section.heading));
  if (section.page != section.heading)
    item->setData(ManualResultDelegate::kPage, QString::fromStdString(section.page));
  item->setData(ManualResultDelegate::kExcerpt, QString::fromStdString(excerpt.text));
  item->setData(ManualResultDelegate::kMatches, QVariant::fromValue(MatchPlaces(excerpt)));
  item->setData(ManualResultDelegate::kTarget, ManualBook::PageUrl(QString::fromStdString(section.target)));
  return item;
}

}  // namespace

ManualSearchPane::ManualSearchPane(const ManualBook& book, QWidget* parent)
    : QWidget(parent),
      m_book(book),
      m_field(new QLineEdit(this)),
      m_status(new QLabel(this)),
      m_results(new QListWidget(this)) {
  m_field->setPlaceholderText(UiText(StringId::kManualSearchPrompt));
  m_field->setAccessibleName(UiText(StringId::kManualSearchPrompt));
  m_field->setClearButtonEnabled(true);
  m_results->setAccessibleName(UiText(PlainLabel(Text(StringId::kManualSearch))));
  m_results->setFrameShape(QFrame::NoFrame);
  m_results->setUniformItemSizes(true);
  m_results->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_results->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  m_results->setItemDelegate(new ManualResultDelegate(m_results));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(2, 4, 2, 2);
  column->addWidget(m_field);
  column->addWidget(m_results, 1);
  column->addWidget(m_status);
  new ListSteering(*m_field, *m_results);
  connect(m_field, &QLineEdit::textChanged, this, &ManualSearchPane::Search);
  connect(m_field, &QLineEdit::returnPressed, this, &ManualSearchPane::OpenCurrent);
  connect(m_results, &QListWidget::itemActivated, this, &ManualSearchPane::OpenCurrent);
  connect(m_results, &QListWidget::itemClicked, this, &ManualSearchPane::OpenCurrent);
}

void ManualSearchPane::FocusField() {
  m_field->setFocus();
  m_field->selectAll();
}

void ManualSearchPane::Search() {
  if (!m_search) {
    m_search.emplace();
    m_search->Add(m_book.Sections());
  }
  m_results->clear();
  const std::string query = m_field->text().toStdString();
  const std::vector<size_t> found = m_search->Find(query);
  for (size_t i = 0; i < std::min(found.size(), kMostResults); ++i)
    m_results->addItem(ItemOf(m_search->Section(found[i]), m_search->Excerpt(found[i], query)));
  m_results->setCurrentRow(0);
  if (QueryWords(query).empty()) return m_status->clear();
  m_status->setText(found.empty()       ? UiText(StringId::kManualNothingFound)
                    : found.size() == 1 ? UiText(StringId::kManualFoundOne)
                                        : UiText(StringId::kManualFound, {QString::number(found.size())}));
}

void ManualSearchPane::OpenCurrent() {
  const QListWidgetItem* item = m_results->currentItem();
  if (item == nullptr) return;
  QStringList words;
  for (const std::string& word : QueryWords(m_field->text().toStdString()))
    words << QString::fromStdString(word);
  Q_EMIT Chosen(item->data(ManualResultDelegate::kTarget).toUrl(), words);
}

}  // namespace quill
