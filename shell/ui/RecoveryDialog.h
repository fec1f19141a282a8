#pragma once
#include <QDialog>

#include "shell/ui/Prompts.h"

class QTreeWidget;

namespace quill {

/// Lists what an earlier run left unsaved and lets the user bring back or throw away what is ticked.
class RecoveryDialog : public QDialog {
 public:
  RecoveryDialog(const std::vector<RecoverableDocument>& found, QWidget* parent);

  /// Valid after the dialog has closed.
  Prompts::RecoveryChoice Choice() const;

 private:
  void Finish(Prompts::RecoveryAction action);

  QTreeWidget* m_list;
  Prompts::RecoveryAction m_action = Prompts::RecoveryAction::kLater;
};

}  // namespace quill
