#pragma once
#include <QDialog>
#include <string>

#include "intel/writing/ToDoList.h"
#include "settings/AppProfile.h"

namespace quill {

class PlainTextField;

/// Shows the to-do list and lets the user edit it; OK keeps it.
class ToDoDialog : public QDialog {
  Q_OBJECT

 public:
  ToDoDialog(const std::string& programFolder, AppProfile profile, QWidget* parent = nullptr);

  void accept() override;
  void done(int result) override;

 private:
  void Build();

  ToDoList m_list;
  AppProfile m_profile;
  PlainTextField* m_field;
};

}  // namespace quill
