#include "intel/ui/CodeJumperTree.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLocale>
#include <QMenu>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <memory>

#include "base/CodePage1252.h"
#include "intel/ui/OutlineLabels.h"
#include "intel/writing/CompletionNames.h"
#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kIndentation = 14;
constexpr size_t kPage = 256;       ///< names of a kind that get rows at a time
constexpr size_t kFewRows = 64;     ///< of a kind that is not expanded
constexpr size_t kMostRows = 1024;  ///< of a kind
constexpr int kMoreRole = Qt::UserRole;

/// Whether it is a row that stands for more names.
bool IsMore(const QTreeWidgetItem* item) {
  return item->data(0, kMoreRole).toBool();
}

QString MoreText(size_t names) {
  return UiText(StringId::kMoreNames, {QLocale().toString(static_cast<qulonglong>(names))});
}

/// "Actions" has the icon "root-actions".
std::string IconNameOf(OutlineRoot root) {
  return "root-" + cp1252::ToLower(OutlineRootName(root));
}

}  // namespace

CCodeJumperTree::CCodeJumperTree(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setFrameShape(QFrame::NoFrame);
  setIndentation(kIndentation);
  connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
    if (m_facts == nullptr || item->parent() != nullptr) return;
    FillRoot(static_cast<size_t>(RootRowOf(item)), true);
    MarkItem();
  });
  connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
    if (PlaceOf(item)) Activate(item);
  });
}

void CCodeJumperTree::LoadIcons() {
  if (!m_icons.front().isNull()) return;
  for (size_t i = 0; i < kOutlineRootCount; ++i) {
    const auto root = static_cast<OutlineRoot>(i);
    m_icons[i] = LoadIcon(IconNameOf(root));
    m_childIcons[i] = LoadIcon(root == OutlineRoot::kPaths ? "folder" : CompletionIcon(KindOfRoot(root)));
  }
}

// Contents

void CCodeJumperTree::Show(std::shared_ptr<const ScriptFacts> facts, JumperRows rows, bool keepPlace,
                           bool keepMark) {
  MakeRoots();
  const int scrolled = keepPlace ? verticalScrollBar()->value() : 0;
  const int current = RootRowOf(currentItem());
  const auto place = PlaceOf(currentItem());
  const auto text = place ? std::optional(ItemOf(*place).text) : std::nullopt;
  setUpdatesEnabled(false);
  if (!m_rows.isFiltered) {
    for (size_t i = 0; i < kOutlineRootCount; ++i) {
      m_expanded[i] = topLevelItem(static_cast<int>(i))->isExpanded();
    }
  }
  m_facts = std::move(facts);
  m_rows = std::move(rows);
  if (!keepPlace) {
    setCurrentItem(nullptr);
    m_windows = {};
  }
  m_function.reset();
  if (!keepMark) m_scrolledTo.clear();
  MarkItem();
  for (size_t i = 0; i < kOutlineRootCount; ++i) {
    const bool expanded = m_rows.isFiltered || m_expanded[i];
    FillRoot(i, expanded);
    QTreeWidgetItem* row = topLevelItem(static_cast<int>(i));
    row->setHidden(m_rows.isFiltered && CountOf(i) == 0);
    row->setExpanded(expanded);
  }
  setUpdatesEnabled(true);
  if (keepPlace && current >= 0) SelectAgain(current, text);
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(scrolled);
}

void CCodeJumperTree::SelectAgain(int root, const std::optional<std::string>& text) {
  QTreeWidgetItem* found = text ? nullptr : topLevelItem(root);
  if (text) {
    const Outline& outline = m_facts->outline;
    const auto kind = static_cast<OutlineRoot>(root);
    for (const OutlineRef ref : outline.WithText(kind, *text)) {
      if (outline.TextOf(ref) != *text) continue;
      found = ItemAt(kind, outline.IndexOf(ref));
      if (found != nullptr) break;
    }
  }
  setAutoScroll(false);  // which would expand the kind
  setCurrentItem(found);
  setAutoScroll(true);
}

void CCodeJumperTree::MakeRoots() {
  if (topLevelItemCount() > 0) return;
  LoadIcons();
  QList<QTreeWidgetItem*> rows;
  for (size_t i = 0; i < kOutlineRootCount; ++i) {
    auto* row = new QTreeWidgetItem;
    row->setText(0, UiText(OutlineRootName(static_cast<OutlineRoot>(i))));
    row->setIcon(0, m_icons[i]);
    rows.append(row);
  }
  addTopLevelItems(rows);
}

size_t CCodeJumperTree::CountOf(size_t root) const {
  return m_rows.isFiltered ? m_rows.fitting[root].size()
                           : m_facts->outline.Order(static_cast<OutlineRoot>(root)).size();
}

std::optional<size_t> CCodeJumperTree::PositionOf(OutlineRoot root, size_t index) const {
  if (!m_rows.isFiltered) return index;
  const std::vector<uint32_t>& fitting = m_rows.fitting[static_cast<size_t>(root)];
  const auto found = std::lower_bound(fitting.begin(), fitting.end(), index);
  if (found == fitting.end() || *found != index) return std::nullopt;
  return static_cast<size_t>(found - fitting.begin());
}

void CCodeJumperTree::FillRoot(size_t root, bool expanded) {
  const size_t count = CountOf(root);
  Window& window = m_windows[root];
  const size_t size = expanded ? std::max(window.last - window.first, kPage) : kFewRows;
  window.first = count > size ? std::min(window.first, count - size) : 0;
  window.last = std::min(window.first + size, count);

  const auto kind = static_cast<OutlineRoot>(root);
  const Outline& outline = m_facts->outline;
  QTreeWidgetItem* row = topLevelItem(static_cast<int>(root));
  QList<QTreeWidgetItem*> added;
  int next = 0;
  const auto show = [&](const QString& label, const QIcon& icon, bool isMore) {
    const bool isThere = next < row->childCount();
    QTreeWidgetItem* item = isThere ? row->child(next) : new QTreeWidgetItem;
    ++next;
    if (!isThere) added.append(item);
    if (item->text(0) != label) item->setText(0, label);
    if (!isThere || IsMore(item) != isMore) {
      item->setIcon(0, icon);
      item->setData(0, kMoreRole, isMore);
      item->setFlags(isMore ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    }
  };
  // Each row that is told to have changed costs as much as all of them.
  QSignalBlocker blocker(model());
  if (window.first > 0) show(MoreText(window.first), {}, true);
  for (size_t i = window.first; i < window.last; ++i) {
    const size_t index = m_rows.isFiltered ? m_rows.fitting[root][i] : i;
    show(OutlineLabel(outline.TextOf(outline.Order(kind)[index])), m_childIcons[root], false);
  }
  if (window.last < count) show(MoreText(count - window.last), {}, true);
  blocker.unblock();
  viewport()->update();
  while (row->childCount() > next) {
    const std::unique_ptr<QTreeWidgetItem> gone(row->takeChild(row->childCount() - 1));
    if (gone.get() == m_marked) m_marked = nullptr;
  }
  row->addChildren(added);
}

void CCodeJumperTree::MoveWindow(size_t root, Window window) {
  const auto current = PlaceOf(currentItem());
  m_windows[root] = window;
  FillRoot(root, topLevelItem(static_cast<int>(root))->isExpanded());
  MarkItem();
  // Rows stay and get other names.
  if (current && static_cast<size_t>(current->root) == root) {
    setAutoScroll(false);
    setCurrentItem(ItemAt(current->root, current->index));
    setAutoScroll(true);
  }
}

void CCodeJumperTree::CentreWindow(size_t root, size_t position) {
  const Window& window = m_windows[root];
  if (position >= window.first && position < window.last) return;
  const size_t first = position - std::min(position, kPage / 2);
  MoveWindow(root, {first, first + kPage});
}

int CCodeJumperTree::RootRowOf(QTreeWidgetItem* item) const {
  if (item == nullptr) return -1;
  return indexOfTopLevelItem(item->parent() == nullptr ? item : item->parent());
}

std::optional<CCodeJumperTree::Place> CCodeJumperTree::PlaceOf(QTreeWidgetItem* item) const {
  if (item == nullptr || item->parent() == nullptr || IsMore(item)) return std::nullopt;
  const auto root = static_cast<size_t>(RootRowOf(item));
  const Window& window = m_windows[root];
  const int above = window.first > 0 ? 1 : 0;
  const size_t position = window.first + static_cast<size_t>(item->parent()->indexOfChild(item) - above);
  return Place{static_cast<OutlineRoot>(root), m_rows.isFiltered ? m_rows.fitting[root][position] : position};
}

OutlineItem CCodeJumperTree::ItemOf(Place place) const {
  const Outline& outline = m_facts->outline;
  return outline.ItemOf(outline.Order(place.root)[place.index]);
}

QTreeWidgetItem* CCodeJumperTree::ItemAt(OutlineRoot root, size_t index) const {
  const std::optional<size_t> position = PositionOf(root, index);
  const Window& window = m_windows[static_cast<size_t>(root)];
  if (!position || *position < window.first || *position >= window.last) return nullptr;
  const size_t above = window.first > 0 ? 1 : 0;
  return topLevelItem(static_cast<int>(root))->child(static_cast<int>(*position - window.first + above));
}

// Rows for more names

QTreeWidgetItem* CCodeJumperTree::MoreInSight() const {
  for (QTreeWidgetItem* item = itemAt(1, 1); item != nullptr; item = itemBelow(item)) {
    if (visualItemRect(item).top() > viewport()->height()) return nullptr;
    if (IsMore(item)) return item;
  }
  return nullptr;
}

void CCodeJumperTree::ExtendInSight() {
  m_extends = false;
  QTreeWidgetItem* more = MoreInSight();
  if (more == nullptr) return;
  const auto root = static_cast<size_t>(RootRowOf(more));
  const Window was = m_windows[root];
  Window window = was;
  if (was.first > 0 && more->parent()->indexOfChild(more) == 0) {
    window.first -= std::min(window.first, kPage);
    window.last = std::min(window.last, window.first + kMostRows);
  } else {
    window.last = std::min(window.last + kPage, CountOf(root));
    window.first = std::max(window.first, window.last - std::min(window.last, kMostRows));
  }
  // What is in sight keeps its place, with other rows above it.
  const auto above = [](const Window& w) { return (w.first > 0 ? 1 : 0) - static_cast<int>(w.first); };
  const int scrolled = verticalScrollBar()->value() + above(window) - above(was);
  setUpdatesEnabled(false);
  MoveWindow(root, window);
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(scrolled);
  setUpdatesEnabled(true);
}

// The function around the caret

void CCodeJumperTree::Mark(const std::optional<EnclosingFunction::Entry>& function) {
  if (function == m_function) return;
  m_function = function;
  const std::string text = function ? ItemOf({function->root, function->index}).text : std::string();
  const bool isAnother = text != m_scrolledTo;
  m_scrolledTo = text;
  // Scrolling would expand a kind that is not.
  const bool scrolls =
      function && isAnother && !hasFocus() && topLevelItem(static_cast<int>(function->root))->isExpanded();
  const auto position = scrolls ? PositionOf(function->root, function->index) : std::nullopt;
  if (position) CentreWindow(static_cast<size_t>(function->root), *position);
  MarkItem();
  if (scrolls && m_marked != nullptr) scrollToItem(m_marked);
}

void CCodeJumperTree::MarkItem() {
  QTreeWidgetItem* found = m_function ? ItemAt(m_function->root, m_function->index) : nullptr;
  if (found == m_marked) return;
  QFont bold = font();
  bold.setBold(true);
  if (m_marked != nullptr) m_marked->setData(0, Qt::FontRole, {});
  if (found != nullptr) found->setFont(0, bold);
  m_marked = found;
}

// What the user does

void CCodeJumperTree::ExpandRoots() {
  expandAll();
}

void CCodeJumperTree::CollapseRoots() {
  collapseAll();
}

bool CCodeJumperTree::SelectFirst() {
  for (int i = 0; i < topLevelItemCount(); ++i) {
    if (topLevelItem(i)->childCount() == 0 || !topLevelItem(i)->isExpanded()) continue;
    setCurrentItem(topLevelItem(i)->child(0));
    return true;
  }
  return false;
}

void CCodeJumperTree::Activate(QTreeWidgetItem* item) {
  if (const auto place = PlaceOf(item)) {
    // A copy: jumping may read the script anew.
    const OutlineItem chosen = ItemOf(*place);
    Q_EMIT Jump(chosen, place->root);
  } else if (item != nullptr) {
    item->setExpanded(!item->isExpanded());
  }
}

QString CCodeJumperTree::NameOf(Place place) const {
  const std::string text = ItemOf(place).text;
  const std::string_view word = DefinedWord(text);
  return FromCodePage(place.root == OutlineRoot::kPaths || word.empty() ? std::string_view(text) : word);
}

bool CCodeJumperTree::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTreeWidget::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  QTreeWidgetItem* item = itemAt(help->pos());
  if (const auto place = PlaceOf(item)) {
    const OutlineItem shown = ItemOf(*place);
    QToolTip::showText(help->globalPos(), OutlineTip(shown.text, shown.at, shown.file, *m_facts), viewport(),
                       visualItemRect(item));
  } else {
    QToolTip::hideText();
  }
  return true;
}

void CCodeJumperTree::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    ActivateCurrent();
  } else {
    QTreeWidget::keyPressEvent(event);
  }
}

void CCodeJumperTree::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  if (const auto place = PlaceOf(currentItem())) {
    // The name, not the place: while the menu is open the tree may be rebuilt.
    menu.addAction(UiText(StringId::kCopyName), this,
                   [name = NameOf(*place)] { QApplication::clipboard()->setText(name); });
    menu.addSeparator();
  }
  menu.addAction(UiText(StringId::kExpandAll), this, [this] { ExpandRoots(); });
  menu.addAction(UiText(StringId::kCollapseAll), this, [this] { CollapseRoots(); });
  menu.addAction(UiText(StringId::kRefreshOutline), this, &CCodeJumperTree::RefreshRequested);
  menu.exec(event->globalPos());
}

void CCodeJumperTree::paintEvent(QPaintEvent* event) {
  QTreeWidget::paintEvent(event);
  if (m_facts == nullptr) return PaintEmptyText(*this, UiText(StringId::kEmptyCodeJumper));
  const auto& fitting = m_rows.fitting;
  const bool shows =
      std::any_of(fitting.begin(), fitting.end(), [](const auto& ofRoot) { return !ofRoot.empty(); });
  if (m_rows.isFiltered && !shows) PaintEmptyText(*this, UiText(StringId::kNothingFits));
  if (!m_extends && MoreInSight() != nullptr) {
    m_extends = true;  // not while it is painted
    QTimer::singleShot(0, this, &CCodeJumperTree::ExtendInSight);
  }
}

}  // namespace quill
