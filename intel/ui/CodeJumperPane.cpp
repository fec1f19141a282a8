#include "intel/ui/CodeJumperPane.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/OutlineList.h"
#include "res/ui/UiText.h"
#include "text/ui/ClipboardData.h"

namespace quill {
namespace {

constexpr int kMargin = 2;
/// Of the bar, for the tree, while the user has not divided it himself.
constexpr int kTreeShare = 2;
constexpr int kListShare = 1;
constexpr int kWhole = 1000;  ///< a size of which the splitter keeps only the proportions
constexpr int kLayoutVersion = 1;
constexpr int kReadingLong = 500;  ///< milliseconds, after which it is told
/// Of a script with more definitions the rows are made on another thread.
constexpr size_t kMostRowsAtOnce = 20000;

/// Whether a key begins or goes on with a word to filter by.
bool TypesAWord(const QKeyEvent& key) {
  if ((key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return false;
  const QString text = key.text();
  return !text.isEmpty() && (text[0].isLetterOrNumber() || text[0] == u'_');
}

}  // namespace

CodeJumperPane::CodeJumperPane(QWidget* parent)
    : QWidget(parent),
      m_filter(new QLineEdit(this)),
      m_reading(new QLabel(UiText(StringId::kReadingScript), this)),
      m_splitter(new QSplitter(Qt::Vertical, this)),
      m_tree(new CCodeJumperTree(m_splitter)),
      m_lists(new QTabWidget(m_splitter)),
      m_variables(AddList(StringId::kPaneVariables, StringId::kEmptyVariables)),
      m_elements(AddList(StringId::kPaneElements, StringId::kEmptyElements)) {
  m_filter->setPlaceholderText(UiText(StringId::kOutlineFilter));
  m_filter->setAccessibleName(UiText(StringId::kOutlineFilter));
  m_filter->setClearButtonEnabled(true);
  m_tree->setAccessibleName(UiText(StringId::kBarCodeJumper));
  m_reading->hide();
  m_lists->setDocumentMode(true);
  m_splitter->setCollapsible(0, false);
  m_splitter->setStretchFactor(0, kTreeShare);
  m_splitter->setStretchFactor(1, kListShare);
  m_splitter->setSizes({kTreeShare * kWhole, kListShare * kWhole});
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kMargin);
  column->addWidget(m_filter);
  column->addWidget(m_reading);
  column->addWidget(m_splitter, 1);
  connect(m_splitter, &QSplitter::splitterMoved, this, &CodeJumperPane::LayoutChanged);
  connect(m_lists, &QTabWidget::currentChanged, this, &CodeJumperPane::LayoutChanged);
  connect(m_filter, &QLineEdit::textChanged, this, [this] {
    if (m_facts != nullptr) MakeRows(Keep::kMark);
  });
  m_readingLong.setSingleShot(true);
  connect(&m_readingLong, &QTimer::timeout, m_reading, &QWidget::show);
  connect(m_tree, &CCodeJumperTree::Jump, this, &CodeJumperPane::Jump);
  connect(m_tree, &CCodeJumperTree::RefreshRequested, this, &CodeJumperPane::RefreshRequested);
  m_filter->installEventFilter(this);
  m_tree->installEventFilter(this);
}

OutlineList* CodeJumperPane::AddList(StringId title, StringId emptyText) {
  auto* list = new OutlineList(emptyText, m_lists);
  m_lists->addTab(list, UiText(title));
  list->setAccessibleName(UiText(title));
  connect(list, &OutlineList::Jump, this, &CodeJumperPane::Jump);
  connect(list, &OutlineList::FileChosen, this, &CodeJumperPane::FileChosen);
  list->installEventFilter(this);
  return list;
}

OutlineList* CodeJumperPane::CurrentList() const {
  return m_lists->currentWidget() == m_elements ? m_elements : m_variables;
}

// Contents

void CodeJumperPane::Show(std::shared_ptr<const ScriptFacts> facts, RowOrder order, bool keepPlace) {
  m_facts = std::move(facts);
  m_order = order;
  MakeRows(keepPlace ? Keep::kPlace : Keep::kNothing);
}

void CodeJumperPane::SetOrder(RowOrder order) {
  if (order == m_order) return;
  m_order = order;
  if (m_facts != nullptr) MakeRows(Keep::kPlace);
}

void CodeJumperPane::MakeRows(Keep keep) {
  int replaced = 0;
  const OutlineFilter filter(clipboard_data::FromUnicode(m_filter->text(), replaced));
  // Rows that were being made are not shown: what they would not have kept is not kept.
  if (m_task.IsRunning()) keep = std::min(keep, m_keep);
  m_task.Cancel();
  if (m_facts->outline.Count() <= kMostRowsAtOnce) {
    return ShowRows(m_facts, MakeJumperRows(m_facts->outline, m_order, filter), keep);
  }
  m_keep = keep;
  m_task.Start([this, facts = m_facts, order = m_order, filter, keep](const std::atomic<bool>&) {
    auto rows = std::make_shared<JumperRows>(MakeJumperRows(facts->outline, order, filter));
    return [this, facts, rows, keep] { ShowRows(facts, std::move(*rows), keep); };
  });
}

void CodeJumperPane::ShowRows(const std::shared_ptr<const ScriptFacts>& facts, JumperRows rows, Keep keep) {
  const bool isFiltered = rows.isFiltered;
  const bool keepPlace = keep == Keep::kPlace;
  m_variables->Show(facts, std::move(rows.variables), isFiltered, keepPlace);
  m_elements->Show(facts, std::move(rows.elements), isFiltered, keepPlace);
  m_tree->Show(facts, std::move(rows), keepPlace, keep != Keep::kNothing);
  Q_EMIT RowsShown();
}

void CodeJumperPane::SetReading(bool reading) {
  if (!reading) {
    m_readingLong.stop();
    m_reading->hide();
  } else if (!m_readingLong.isActive() && m_reading->isHidden()) {
    m_readingLong.start(kReadingLong);
  }
}

// Keys

bool CodeJumperPane::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (watched == m_filter ? OnFilterKey(key) : OnViewKey(key)) return true;
  }
  return QWidget::eventFilter(watched, event);
}

bool CodeJumperPane::EnterFirstFit() {
  m_task.Wait();
  if (m_tree->SelectFirst()) {
    m_tree->setFocus();
    return true;
  }
  for (OutlineList* list : {CurrentList(), m_variables, m_elements}) {
    if (!list->SelectFirst()) continue;
    m_lists->setCurrentWidget(list);
    list->setFocus();
    return true;
  }
  return false;
}

bool CodeJumperPane::OnFilterKey(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_PageDown:
      if (m_filter->text().isEmpty() || !EnterFirstFit()) m_tree->setFocus();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (m_filter->text().isEmpty()) {
        m_tree->setFocus();
      } else if (EnterFirstFit()) {
        if (m_tree->hasFocus()) {
          m_tree->ActivateCurrent();
        } else {
          CurrentList()->ActivateCurrent();
        }
      }
      return true;
    case Qt::Key_Escape:
      if (m_filter->text().isEmpty()) {
        Q_EMIT BackToText();
      } else {
        m_filter->clear();
      }
      return true;
    default:
      return false;
  }
}

bool CodeJumperPane::OnViewKey(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT BackToText();
    return true;
  }
  const bool shortens = event->key() == Qt::Key_Backspace && !m_filter->text().isEmpty();
  if (!TypesAWord(*event) && !shortens) return false;
  m_filter->setFocus();
  QCoreApplication::sendEvent(m_filter, event);
  return true;
}

// Layout

void CodeJumperPane::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  const Qt::Orientation wanted = width() > height() ? Qt::Horizontal : Qt::Vertical;
  if (m_splitter->orientation() != wanted) m_splitter->setOrientation(wanted);
}

QByteArray CodeJumperPane::SaveLayout() const {
  QByteArray layout;
  QDataStream stream(&layout, QIODevice::WriteOnly);
  stream << kLayoutVersion << m_lists->currentIndex() << m_splitter->saveState();
  return layout;
}

void CodeJumperPane::RestoreLayout(const QByteArray& layout) {
  QDataStream stream(layout);
  int version = 0;
  int tab = 0;
  QByteArray splitter;
  stream >> version >> tab >> splitter;
  if (stream.status() != QDataStream::Ok || version != kLayoutVersion) return;
  m_lists->setCurrentIndex(tab);
  m_splitter->restoreState(splitter);
}

}  // namespace quill
