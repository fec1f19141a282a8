#pragma once
#include <QDialog>

namespace quill {

/// Name, version and icon of the program.
class AboutBox : public QDialog {
 public:
  explicit AboutBox(QWidget* parent);
};

}  // namespace quill
