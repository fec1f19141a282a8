#include "intel/ui/VariableDlg.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "intel/ui/ScriptPreview.h"
#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kFieldWidth = 340;

/// Of a field, whose validator lets nothing in that the code page lacks.
std::string TextOf(const QLineEdit& field) {
  return ToCodePage(field.text()).value_or(std::string());
}

}  // namespace

CVariableDlg::CVariableDlg(const CQuillView& view, const std::string& type, QWidget* parent)
    : QDialog(parent) {
  setWindowTitle(UiText(StringId::kVariableTitle));
  Build(view);
  if (!type.empty()) m_type->setCurrentText(UiText(type));
  connect(m_type, &QComboBox::currentTextChanged, this, &CVariableDlg::Update);
  for (const QLineEdit* field : {m_name, m_value, m_comment}) {
    connect(field, &QLineEdit::textChanged, this, &CVariableDlg::Update);
  }
  connect(&view, &QObject::destroyed, this, &QDialog::reject);
  m_name->setFocus();
  Update();
}

void CVariableDlg::Build(const CQuillView& view) {
  auto* form = new QFormLayout;
  m_type = new QComboBox(this);
  for (const std::string_view type : VariableTypes()) m_type->addItem(UiText(type));
  m_type->setMaxVisibleItems(m_type->count());
  form->addRow(UiText(StringId::kVariableType), m_type);
  m_name = AddField(*form, StringId::kVariableName);
  m_value = AddField(*form, StringId::kVariableDefault);
  m_comment = AddField(*form, StringId::kVariableComment);
  m_name->setMinimumWidth(kFieldWidth);
  m_preview = new ScriptPreview(view, this);
  form->addRow(UiText(StringId::kVariablePreview), m_preview);

  auto* buttons = new QDialogButtonBox(this);
  m_insert = buttons->addButton(UiText(StringId::kInsertButton), QDialogButtonBox::AcceptRole);
  m_insert->setDefault(true);
  buttons->addButton(UiText(StringId::kCancelButton), QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* column = new QVBoxLayout(this);
  column->addLayout(form);
  column->addStretch();
  column->addWidget(buttons);
}

QLineEdit* CVariableDlg::AddField(QFormLayout& form, StringId label) {
  auto* field = new QLineEdit(this);
  field->setValidator(new CodePageValidator(field));
  form.addRow(UiText(label), field);
  return field;
}

VariableDraft CVariableDlg::Draft() const {
  return {m_type->currentText().toStdString(), TextOf(*m_name), TextOf(*m_value), TextOf(*m_comment)};
}

void CVariableDlg::done(int result) {
  QDialog::done(result);
  if (parentWidget() != nullptr) parentWidget()->activateWindow();
}

void CVariableDlg::Update() {
  const VariableDraft draft = Draft();
  const std::string problem = VariableProblem(draft);
  m_insert->setEnabled(problem.empty());
  if (problem.empty()) {
    m_preview->ShowScript(VariableDefinition(draft));
  } else {
    m_preview->ShowRemark(FromCodePage(problem) + u'.');
  }
}

}  // namespace quill
