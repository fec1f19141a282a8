#pragma once
#include <string>
#include <string_view>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/ui/CrystalEditView.h"

namespace quill {

/// A dialog's field for a plain text of any length, in the code page: edits like the text view, looks like
/// the desktop's own fields.
class PlainTextField : public CCrystalEditView {
  Q_OBJECT

 public:
  explicit PlainTextField(QWidget* parent = nullptr);
  ~PlainTextField() override;

  /// "\n" stands between lines.
  void SetText(std::string_view text);
  std::string Text() const;

 protected:
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void TakeAppearance();
  void AddActions();

  CCrystalTextBuffer m_buffer;
};

}  // namespace quill
