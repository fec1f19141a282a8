#pragma once
#include <QDialog>
#include <optional>
#include <string>
#include <vector>

class QPushButton;
class QTreeWidget;

namespace quill {

/// Lists documents with unsaved text that are about to be closed, and lets the user tick what to save.
class SaveListDialog : public QDialog {
 public:
  /// `names`: paths, or titles of documents without a file.
  SaveListDialog(const std::vector<std::string>& names, QWidget* parent);

  /// After the dialog has closed: the indices of those to be saved; nothing when none is to be closed.
  std::optional<std::vector<size_t>> Choice() const { return m_choice; }

 private:
  void Finish(bool save);
  std::vector<size_t> Ticked() const;

  QTreeWidget* m_list;
  QPushButton* m_save;
  std::optional<std::vector<size_t>> m_choice;
};

}  // namespace quill
