#pragma once
#include <QByteArray>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "intel/jumper/OutlineLists.h"
#include "intel/outline/ScriptFacts.h"
#include "intel/ui/BackgroundTask.h"
#include "res/Strings.h"

class QKeyEvent;
class QLineEdit;
class QLabel;
class QSplitter;
class QTabWidget;

namespace quill {

class CCodeJumperTree;
class OutlineList;

/// The Code Jumper's tree and beside it the panes "Variables" and "Elements", below a field that filters
/// all three. In a tall bar the panes are below the tree, in a wide one to its right.
///
/// Keys: Down or Enter in the field goes to the tree or the list, Enter there jumps; typing in them goes to
/// the field; Escape clears the field, then goes back to the text.
class CodeJumperPane : public QWidget {
  Q_OBJECT

 public:
  explicit CodeJumperPane(QWidget* parent = nullptr);

  /// `keepPlace`: it is the same script as before. The rows of a large script come a little later.
  void Show(std::shared_ptr<const ScriptFacts> facts, RowOrder order, bool keepPlace);
  /// Of the panes; the tree is always alphabetical.
  void SetOrder(RowOrder order);

  CCodeJumperTree& Tree() { return *m_tree; }
  OutlineList& Variables() { return *m_variables; }
  OutlineList& Elements() { return *m_elements; }
  QLineEdit& Filter() { return *m_filter; }

  /// Says after a while that the script is being read.
  void SetReading(bool reading);

  /// How the user divided the bar.
  QByteArray SaveLayout() const;
  void RestoreLayout(const QByteArray& layout);

 Q_SIGNALS:
  void Jump(const quill::OutlineItem& item, quill::OutlineRoot root);
  void FileChosen(const quill::NamedFile& file, bool open);
  void RefreshRequested();
  /// Tree and lists show what is known of the script, or other rows of it.
  void RowsShown();
  /// The user wants to be in the text again.
  void BackToText();
  /// The user divided the bar in another way.
  void LayoutChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  OutlineList* AddList(StringId title, StringId emptyText);
  enum class Keep : uint8_t { kNothing, kMark, kPlace };
  void MakeRows(Keep keep);
  void ShowRows(const std::shared_ptr<const ScriptFacts>& facts, JumperRows rows, Keep keep);
  bool OnFilterKey(QKeyEvent* event);
  bool OnViewKey(QKeyEvent* event);
  /// The tree, or the list that has something when the tree has not.
  bool EnterFirstFit();
  OutlineList* CurrentList() const;

  QLineEdit* m_filter;
  QLabel* m_reading;
  QSplitter* m_splitter;
  CCodeJumperTree* m_tree;
  QTabWidget* m_lists;
  OutlineList* m_variables;
  OutlineList* m_elements;
  std::shared_ptr<const ScriptFacts> m_facts;  ///< null until a script was shown
  RowOrder m_order = RowOrder::kAlphabetical;
  QTimer m_readingLong;
  Keep m_keep = Keep::kPlace;  ///< of rows that are being made
  BackgroundTask m_task;       ///< the last one: it ends first
};

}  // namespace quill
