#pragma once
#include <QTreeWidget>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "intel/jumper/OutlineFilter.h"
#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/ScriptFacts.h"

namespace quill {

/// The outline of the active script as a tree: a fixed row for every kind of object, and below it the
/// names that the script defines. A click or Enter on a name chooses it.
class CCodeJumperTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit CCodeJumperTree(QWidget* parent = nullptr);

  /// Rebuilds the tree; which rows are expanded stays as it was. `keepPlace`: it is the same script as
  /// before, what is in sight stays there.
  void Show(std::shared_ptr<const ScriptFacts> facts, bool keepPlace);
  /// Shows only what fits; an empty filter shows everything.
  void SetFilter(const OutlineFilter& filter);
  /// Marks the item of the function around the caret, null for none, and brings it into sight when its
  /// kind is expanded and nobody is at work in the tree.
  void Mark(const EnclosingFunction::Entry* function);
  void ExpandRoots();
  void CollapseRoots();
  /// The first name, not one of the kinds; false when there is none.
  bool SelectFirst();
  void ActivateCurrent() { Activate(currentItem()); }

 Q_SIGNALS:
  void Jump(const quill::OutlineItem& item, quill::OutlineRoot root);
  void RefreshRequested();

 protected:
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// One of the names; none for the row of a kind.
  struct Place {
    OutlineRoot root = OutlineRoot::kActions;
    size_t index = 0;  ///< among the root's items
  };
  std::optional<Place> PlaceOf(QTreeWidgetItem* item) const;
  const OutlineItem& ItemOf(Place place) const;
  /// -1 for no item.
  int RootRowOf(QTreeWidgetItem* item) const;
  QTreeWidgetItem* ItemAt(OutlineRoot root, size_t index) const;

  void Rebuild();
  QTreeWidgetItem* MakeRoot(OutlineRoot root);
  /// Makes a name current, or the row of the kind for none.
  void SelectAgain(int root, const std::optional<std::string>& text);
  void MarkItem();
  void Activate(QTreeWidgetItem* item);
  QString NameOf(Place place) const;
  void LoadIcons();

  std::shared_ptr<const ScriptFacts> m_facts;  ///< null until a script was shown
  OutlineFilter m_filter;
  std::array<std::vector<uint32_t>, kOutlineRootCount> m_fitting;  ///< the items that are shown
  std::array<bool, kOutlineRootCount> m_expanded{};                ///< without a filter
  std::array<QIcon, kOutlineRootCount> m_icons;
  std::array<QIcon, kOutlineRootCount> m_childIcons;
  std::optional<EnclosingFunction::Entry> m_function;  ///< the one to be marked
  QTreeWidgetItem* m_marked = nullptr;
  std::string m_scrolledTo;  ///< the last one that was brought into sight
  bool m_showsFiltered = false;
};

}  // namespace quill
