#pragma once
#include <QUrl>
#include <QWidget>

class QHelpEngine;
class QHelpIndexWidget;
class QLineEdit;

namespace quill {

/// The index of the manual below a field that filters it.
class ManualIndexPane : public QWidget {
  Q_OBJECT

 public:
  explicit ManualIndexPane(QHelpEngine& engine, QWidget* parent = nullptr);
  void FocusField();

 Q_SIGNALS:
  void Chosen(const QUrl& page);

 private:
  QLineEdit* m_field;
  QHelpIndexWidget* m_list;
};

}  // namespace quill
