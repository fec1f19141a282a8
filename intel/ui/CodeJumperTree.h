#pragma once
#include <QTreeWidget>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "intel/jumper/OutlineLists.h"
#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/ScriptFacts.h"

namespace quill {

/// The outline of the active script as a tree: a fixed row for every kind of object, and below it the
/// names that the script defines. A click or Enter on a name chooses it.
class CCodeJumperTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit CCodeJumperTree(QWidget* parent = nullptr);

  /// Shows `rows.fitting`, or without a filter everything; which kinds are expanded stays as it was.
  /// `keepPlace`: it is the same script as before, what is in sight stays there. `keepMark`: so does the
  /// function that was brought into sight last.
  void Show(std::shared_ptr<const ScriptFacts> facts, JumperRows rows, bool keepPlace, bool keepMark);
  /// What is shown; null until a script was shown.
  const std::shared_ptr<const ScriptFacts>& Facts() const { return m_facts; }
  /// Marks the item of the function around the caret, if there is one, and brings it into sight when its
  /// kind is expanded and nobody is at work in the tree.
  void Mark(const std::optional<EnclosingFunction::Entry>& function);
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
  /// Of a kind's names not more than some hundred have rows at a time: those in sight and some around them.
  /// Above and below stand rows that tell how many more there are, and bring them when they are seen.
  struct Window {
    size_t first = 0;  ///< among the names of the kind that are shown
    size_t last = 0;   ///< behind the last one
  };

  std::optional<Place> PlaceOf(QTreeWidgetItem* item) const;
  OutlineItem ItemOf(Place place) const;
  /// -1 for no item.
  int RootRowOf(QTreeWidgetItem* item) const;
  /// Null while it has no row.
  QTreeWidgetItem* ItemAt(OutlineRoot root, size_t index) const;
  /// The names of a kind that are shown, whether or not they have rows.
  size_t CountOf(size_t root) const;
  /// The place of an item among them; nothing when it is not shown.
  std::optional<size_t> PositionOf(OutlineRoot root, size_t index) const;

  void MakeRoots();
  /// Gives a kind the rows of its window; those that are there already stay.
  void FillRoot(size_t root, bool expanded);
  /// The current name stays the current one.
  void MoveWindow(size_t root, Window window);
  void CentreWindow(size_t root, size_t position);
  /// Makes rows where the user sees that there are more.
  void ExtendInSight();
  QTreeWidgetItem* MoreInSight() const;
  /// Makes a name current, or the row of the kind for none.
  void SelectAgain(int root, const std::optional<std::string>& text);
  void MarkItem();
  void Activate(QTreeWidgetItem* item);
  QString NameOf(Place place) const;
  void LoadIcons();

  std::shared_ptr<const ScriptFacts> m_facts;  ///< null until a script was shown
  JumperRows m_rows;
  std::array<Window, kOutlineRootCount> m_windows;
  std::array<bool, kOutlineRootCount> m_expanded{};  ///< without a filter
  std::array<QIcon, kOutlineRootCount> m_icons;
  std::array<QIcon, kOutlineRootCount> m_childIcons;
  std::optional<EnclosingFunction::Entry> m_function;  ///< the one to be marked
  QTreeWidgetItem* m_marked = nullptr;
  std::string m_scrolledTo;  ///< the last one that was brought into sight
  bool m_extends = false;    ///< more rows are asked for
};

}  // namespace quill
