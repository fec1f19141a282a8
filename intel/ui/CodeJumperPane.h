#pragma once
#include <QWidget>

class QLineEdit;

namespace quill {

class CCodeJumperTree;

/// The Code Jumper's tree below a field that filters it.
class CodeJumperPane : public QWidget {
  Q_OBJECT

 public:
  explicit CodeJumperPane(QWidget* parent = nullptr);
  CCodeJumperTree& Tree() { return *m_tree; }
  QLineEdit& Filter() { return *m_filter; }

 private:
  QLineEdit* m_filter;
  CCodeJumperTree* m_tree;
};

}  // namespace quill
