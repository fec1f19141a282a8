#include "intel/ui/CodeJumperTree.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "base/CodePage1252.h"
#include "intel/ui/OutlineLabels.h"
#include "intel/writing/CompletionNames.h"
#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kIndentation = 14;

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

void CCodeJumperTree::Show(std::shared_ptr<const ScriptFacts> facts, bool keepPlace) {
  const int scrolled = keepPlace ? verticalScrollBar()->value() : 0;
  const int root = RootRowOf(currentItem());
  const auto place = PlaceOf(currentItem());
  const std::string text = place ? ItemOf(*place).text : std::string();
  m_facts = std::move(facts);
  m_function.reset();
  if (!keepPlace) m_scrolledTo.clear();
  Rebuild();
  if (keepPlace && root >= 0) SelectAgain(root, place ? std::optional(text) : std::nullopt);
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(scrolled);
}

void CCodeJumperTree::SelectAgain(int root, const std::optional<std::string>& text) {
  QTreeWidgetItem* row = topLevelItem(root);
  QTreeWidgetItem* found = text ? nullptr : row;
  for (int i = 0; text && found == nullptr && i < row->childCount(); ++i) {
    const uint32_t index = m_fitting[static_cast<size_t>(root)][static_cast<size_t>(i)];
    if (ItemOf({static_cast<OutlineRoot>(root), index}).text == *text) found = row->child(i);
  }
  setAutoScroll(false);  // which would expand the kind
  setCurrentItem(found);
  setAutoScroll(true);
}

void CCodeJumperTree::SetFilter(const OutlineFilter& filter) {
  m_filter = filter;
  if (m_facts != nullptr) Rebuild();
}

void CCodeJumperTree::Rebuild() {
  LoadIcons();
  setUpdatesEnabled(false);
  if (!m_showsFiltered) {
    for (int i = 0; i < topLevelItemCount(); ++i)
      m_expanded[static_cast<size_t>(i)] = topLevelItem(i)->isExpanded();
  }
  m_showsFiltered = !m_filter.IsEmpty();
  m_marked = nullptr;
  clear();
  m_fitting = FilterOutline(m_facts->outline, m_filter);
  QList<QTreeWidgetItem*> rows;
  for (size_t i = 0; i < kOutlineRootCount; ++i) rows.append(MakeRoot(static_cast<OutlineRoot>(i)));
  addTopLevelItems(rows);
  for (int i = 0; i < topLevelItemCount(); ++i) {
    QTreeWidgetItem* row = topLevelItem(i);
    row->setHidden(m_showsFiltered && row->childCount() == 0);
    row->setExpanded(m_showsFiltered || m_expanded[static_cast<size_t>(i)]);
  }
  MarkItem();
  setUpdatesEnabled(true);
}

QTreeWidgetItem* CCodeJumperTree::MakeRoot(OutlineRoot root) {
  auto* row = new QTreeWidgetItem;
  row->setText(0, UiText(OutlineRootName(root)));
  row->setIcon(0, m_icons[static_cast<size_t>(root)]);
  QList<QTreeWidgetItem*> children;
  for (const uint32_t index : m_fitting[static_cast<size_t>(root)]) {
    auto* child = new QTreeWidgetItem;
    child->setText(0, OutlineLabel(m_facts->outline.Items(root)[index].text));
    child->setIcon(0, m_childIcons[static_cast<size_t>(root)]);
    children.append(child);
  }
  row->addChildren(children);
  return row;
}

int CCodeJumperTree::RootRowOf(QTreeWidgetItem* item) const {
  if (item == nullptr) return -1;
  return indexOfTopLevelItem(item->parent() == nullptr ? item : item->parent());
}

std::optional<CCodeJumperTree::Place> CCodeJumperTree::PlaceOf(QTreeWidgetItem* item) const {
  if (item == nullptr || item->parent() == nullptr) return std::nullopt;
  const auto root = static_cast<size_t>(RootRowOf(item));
  return Place{static_cast<OutlineRoot>(root),
               m_fitting[root][static_cast<size_t>(item->parent()->indexOfChild(item))]};
}

const OutlineItem& CCodeJumperTree::ItemOf(Place place) const {
  return m_facts->outline.Items(place.root)[place.index];
}

QTreeWidgetItem* CCodeJumperTree::ItemAt(OutlineRoot root, size_t index) const {
  const std::vector<uint32_t>& fitting = m_fitting[static_cast<size_t>(root)];
  const auto found = std::lower_bound(fitting.begin(), fitting.end(), index);
  if (found == fitting.end() || *found != index) return nullptr;
  return topLevelItem(static_cast<int>(root))->child(static_cast<int>(found - fitting.begin()));
}

// The function around the caret

void CCodeJumperTree::Mark(const EnclosingFunction::Entry* function) {
  const auto wanted = function == nullptr ? std::nullopt : std::optional(*function);
  if (wanted == m_function) return;
  m_function = wanted;
  MarkItem();
  const std::string text = wanted ? ItemOf({wanted->root, wanted->index}).text : std::string();
  const bool isAnother = text != m_scrolledTo;
  m_scrolledTo = text;
  // Scrolling would expand a kind that is not.
  if (isAnother && m_marked != nullptr && m_marked->parent()->isExpanded() && !hasFocus()) {
    scrollToItem(m_marked);
  }
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
  const std::string_view text = ItemOf(place).text;
  const std::string_view word = DefinedWord(text);
  return FromCodePage(place.root == OutlineRoot::kPaths || word.empty() ? text : word);
}

bool CCodeJumperTree::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTreeWidget::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  QTreeWidgetItem* item = itemAt(help->pos());
  if (const auto place = PlaceOf(item)) {
    const OutlineItem& shown = ItemOf(*place);
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
  const bool shows =
      std::any_of(m_fitting.begin(), m_fitting.end(), [](const auto& f) { return !f.empty(); });
  if (m_facts == nullptr) {
    PaintEmptyText(*this, UiText(StringId::kEmptyCodeJumper));
  } else if (m_showsFiltered && !shows) {
    PaintEmptyText(*this, UiText(StringId::kNothingFits));
  }
}

}  // namespace quill
