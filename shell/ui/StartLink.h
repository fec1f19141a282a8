#pragma once
#include <QAbstractButton>

namespace quill {

/// A row of the start page: an icon, what it does, and a fainter remark behind it.
class StartLink : public QAbstractButton {
  Q_OBJECT

 public:
  StartLink(const QIcon& icon, const QString& text, const QString& remark, QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// Enter chooses, the arrows go to the row above or below.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString m_remark;
};

}  // namespace quill
