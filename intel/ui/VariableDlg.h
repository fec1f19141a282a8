#pragma once
#include <QDialog>

#include "intel/writing/ScriptTools.h"
#include "res/Strings.h"

class QComboBox;
class QFormLayout;
class QLineEdit;
class QPushButton;

namespace quill {

class CQuillView;
class ScriptPreview;

/// Asks for what a variable's definition is made of, and shows the definition as it will stand in the
/// script, or why there is none yet.
class CVariableDlg : public QDialog {
  Q_OBJECT

 public:
  /// Shows the definition as `view` would. Closes with the view. An empty `type` is the first one.
  CVariableDlg(const CQuillView& view, const std::string& type, QWidget* parent = nullptr);

  VariableDraft Draft() const;
  void done(int result) override;

 private:
  void Build(const CQuillView& view);
  QLineEdit* AddField(QFormLayout& form, StringId label);
  void Update();

  QComboBox* m_type;
  QLineEdit* m_name;
  QLineEdit* m_value;
  QLineEdit* m_comment;
  ScriptPreview* m_preview;
  QPushButton* m_insert;
};

}  // namespace quill
