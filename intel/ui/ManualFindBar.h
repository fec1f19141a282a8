#pragma once
#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;

namespace quill {

class ManualPage;

/// The bar below a page of the manual that finds a text in it. It is closed at first.
class ManualFindBar : public QWidget {
  Q_OBJECT

 public:
  /// The page outlives the bar.
  explicit ManualFindBar(ManualPage& page, QWidget* parent = nullptr);

  /// Shows the bar ready for typing.
  void Open();
  /// Hides the bar and its marks, and gives the keyboard to the page.
  void Close();
  /// Opens a bar that is closed and without a text.
  void GoOn(bool backwards);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QToolButton* AddButton(const char* icon, const QString& tip);
  void OnTextChanged();
  void ShowNumber(int number);

  ManualPage& m_page;
  QLineEdit* m_text;
  QLabel* m_status;
  int m_count = 0;
};

}  // namespace quill
