#pragma once
#include <QListView>
#include <memory>

#include "intel/ui/OutlineListModel.h"
#include "res/Strings.h"

namespace quill {

/// One of the lists beside the Code Jumper's tree. A click or Enter chooses a row.
class OutlineList : public QListView {
  Q_OBJECT

 public:
  /// `emptyText` is shown when the script has nothing for this list.
  explicit OutlineList(StringId emptyText, QWidget* parent = nullptr);

  /// `keepPlace`: it is the same script as before, what is in sight stays there.
  void Show(std::shared_ptr<const ScriptFacts> facts, OutlineRows rows, bool isFiltered, bool keepPlace);
  /// False when there is none.
  bool SelectFirst();
  void ActivateCurrent() { Activate(currentIndex(), true); }

 Q_SIGNALS:
  void Jump(const quill::OutlineItem& item, quill::OutlineRoot root);
  /// `open`: not only where the script names it, the file itself is wanted.
  void FileChosen(const quill::NamedFile& file, bool open);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Activate(const QModelIndex& index, bool open);

  StringId m_emptyText;
  OutlineListModel m_model;
  bool m_showsScript = false;
  bool m_isFiltered = false;
};

}  // namespace quill
