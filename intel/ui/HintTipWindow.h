#pragma once
#include <QTextDocument>
#include <QWidget>
#include <string>

#include "intel/writing/ArgumentList.h"
#include "intel/writing/PopupPlace.h"

namespace quill {

/// The tip that shows a command's parameters beside the caret, one of them in bold.
class HintTipWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HintTipWindow(QWidget* owner);

  /// `bold` is the part that is set in bold; `font` is that of the script.
  void SetText(const std::string& text, TextPart bold, const QFont& font);
  /// Shows it beside `line`, which it never covers: the caret's place on the screen, as high as the line.
  void ShowBeside(const QRect& line, PopupSide wanted);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QTextDocument m_document{this};
};

}  // namespace quill
