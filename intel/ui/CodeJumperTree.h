#pragma once
#include <QTreeWidget>
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "intel/EnclosingFunction.h"
#include "intel/Outline.h"

namespace quill {

/// The outline of the active script as a tree: a fixed row for every kind of object, and below it the
/// names that the script defines.
class CCodeJumperTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit CCodeJumperTree(QWidget* parent = nullptr);

  /// Rebuilds the tree; which rows are expanded stays as it was.
  void Show(std::shared_ptr<const Outline> outline);
  /// Shows only what fits; an empty text shows everything.
  void SetFilter(const std::string& typed);
  /// Marks the item of the function around the caret; null for none.
  void Mark(const EnclosingFunction::Entry* function);
  void ExpandRoots();
  void CollapseRoots();

 Q_SIGNALS:
  void Jump(const quill::OutlineItem& item, quill::OutlineRoot root);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void Rebuild();
  void MarkItem();
  void JumpTo(QTreeWidgetItem* item);
  void LoadIcons();

  std::shared_ptr<const Outline> m_outline = std::make_shared<Outline>();
  std::string m_filter;
  std::array<bool, kOutlineRootCount> m_expanded{};  ///< without a filter
  std::array<QIcon, kOutlineRootCount> m_icons;
  QIcon m_objectIcon;
  QIcon m_functionIcon;
  QIcon m_actionIcon;
  std::optional<EnclosingFunction::Entry> m_function;  ///< the one to be marked
  QTreeWidgetItem* m_marked = nullptr;
  bool m_showsFiltered = false;
};

}  // namespace quill
