#include "intel/ui/CodeJumperTree.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include "base/CodePage1252.h"
#include "intel/OutlineFilter.h"
#include "res/Strings.h"
#include "res/ui/IconSet.h"

namespace quill {
namespace {

constexpr int kRootRole = Qt::UserRole;       ///< number of the kind, on every item
constexpr int kIndexRole = Qt::UserRole + 1;  ///< among the kind's items; not on the rows of kinds

QString FromText(std::string_view text) {
  return QString::fromStdU16String(cp1252::ToUnicode(text));
}

QString Label(StringId id) {
  const std::string_view text = Text(id);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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
  setIndentation(14);
  connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { JumpTo(item); });
}

void CCodeJumperTree::LoadIcons() {
  if (!m_objectIcon.isNull()) return;
  m_objectIcon = LoadIcon("kind-object");
  m_functionIcon = LoadIcon("kind-function");
  m_actionIcon = LoadIcon("kind-action");
  for (size_t i = 0; i < kOutlineRootCount; ++i)
    m_icons[i] = LoadIcon(IconNameOf(static_cast<OutlineRoot>(i)));
}

void CCodeJumperTree::Show(std::shared_ptr<const Outline> outline) {
  m_outline = std::move(outline);
  m_function.reset();
  Rebuild();
}

void CCodeJumperTree::SetFilter(const std::string& typed) {
  m_filter = typed;
  Rebuild();
}

void CCodeJumperTree::Rebuild() {
  LoadIcons();
  setUpdatesEnabled(false);
  const OutlineFilter filter(m_filter);
  if (!m_showsFiltered) {
    for (int i = 0; i < topLevelItemCount(); ++i)
      m_expanded[static_cast<size_t>(i)] = topLevelItem(i)->isExpanded();
  }
  m_showsFiltered = !filter.IsEmpty();
  m_marked = nullptr;
  clear();
  const auto fitting = FilterOutline(*m_outline, filter);
  QList<QTreeWidgetItem*> rows;
  for (size_t i = 0; i < kOutlineRootCount; ++i) {
    const auto root = static_cast<OutlineRoot>(i);
    auto* row = new QTreeWidgetItem;
    row->setText(0, FromText(OutlineRootName(root)));
    row->setIcon(0, m_icons[i]);
    row->setData(0, kRootRole, static_cast<int>(i));
    const auto kind = ElementKindOf(root);
    const QIcon& icon = kind == element_kind::kFunction ? m_functionIcon
                        : kind == element_kind::kAction ? m_actionIcon
                                                        : m_objectIcon;
    QList<QTreeWidgetItem*> children;
    for (const uint32_t index : fitting[i]) {
      auto* child = new QTreeWidgetItem;
      child->setText(0, FromText(m_outline->Items(root)[index].text));
      child->setIcon(0, icon);
      child->setData(0, kRootRole, static_cast<int>(i));
      child->setData(0, kIndexRole, index);
      children.append(child);
    }
    row->addChildren(children);
    rows.append(row);
  }
  addTopLevelItems(rows);
  for (int i = 0; i < topLevelItemCount(); ++i) {
    QTreeWidgetItem* row = topLevelItem(i);
    row->setHidden(!filter.IsEmpty() && row->childCount() == 0);
    row->setExpanded(!filter.IsEmpty() || m_expanded[static_cast<size_t>(i)]);
  }
  MarkItem();
  setUpdatesEnabled(true);
}

void CCodeJumperTree::Mark(const EnclosingFunction::Entry* function) {
  m_function = function == nullptr ? std::nullopt : std::optional(*function);
  MarkItem();
}

void CCodeJumperTree::MarkItem() {
  QTreeWidgetItem* found = nullptr;
  if (m_function) {
    QTreeWidgetItem* row = topLevelItem(static_cast<int>(m_function->root));
    for (int i = 0; row != nullptr && i < row->childCount() && found == nullptr; ++i) {
      if (row->child(i)->data(0, kIndexRole).toULongLong() == m_function->index) found = row->child(i);
    }
  }
  if (found == m_marked) return;
  QFont bold = font();
  bold.setBold(true);
  if (m_marked != nullptr) m_marked->setFont(0, font());
  if (found != nullptr) found->setFont(0, bold);
  m_marked = found;
}

void CCodeJumperTree::ExpandRoots() {
  expandAll();
}

void CCodeJumperTree::CollapseRoots() {
  collapseAll();
}

void CCodeJumperTree::JumpTo(QTreeWidgetItem* item) {
  if (item == nullptr || !item->data(0, kIndexRole).isValid()) return;
  const auto root = static_cast<OutlineRoot>(item->data(0, kRootRole).toInt());
  const auto& items = m_outline->Items(root);
  const auto index = static_cast<size_t>(item->data(0, kIndexRole).toULongLong());
  if (index < items.size()) Q_EMIT Jump(items[index], root);
}

void CCodeJumperTree::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    JumpTo(currentItem());
  } else {
    QTreeWidget::keyPressEvent(event);
  }
}

void CCodeJumperTree::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  menu.addAction(Label(StringId::kExpandAll), this, [this] { ExpandRoots(); });
  menu.addAction(Label(StringId::kCollapseAll), this, [this] { CollapseRoots(); });
  menu.exec(event->globalPos());
}

}  // namespace quill
