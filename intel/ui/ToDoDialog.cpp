#include "intel/ui/ToDoDialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "text/ui/PlainTextField.h"
#include "widgets/FrameGeometry.h"

namespace quill {
namespace {

constexpr QSize kPreferredSize{520, 420};

std::string PlaceSection() {
  return std::string(Text(StringId::kToDoTitle));
}

}  // namespace

ToDoDialog::ToDoDialog(const std::string& programFolder, AppProfile profile, QWidget* parent)
    : QDialog(parent), m_list(programFolder), m_profile(profile), m_field(new PlainTextField(this)) {
  setWindowTitle(UiText(StringId::kToDoTitle));
  m_field->setAccessibleName(UiText(StringId::kToDoTitle));
  setSizeGripEnabled(true);
  Build();
  const auto kept = frame_geometry::Kept(m_profile, PlaceSection());
  resize(kPreferredSize);
  if (kept) frame_geometry::Restore(*this, *kept, kPreferredSize);
  QApplication::setOverrideCursor(Qt::WaitCursor);
  m_field->SetText(m_list.Load());
  QApplication::restoreOverrideCursor();
}

void ToDoDialog::Build() {
  auto* hint = new QLabel(this);
  hint->setTextFormat(Qt::PlainText);
  hint->setWordWrap(true);
  // Tab is a character of the list: these have keys of their own.
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  buttons->addButton(UiText(StringId::kToDoOkButton), QDialogButtonBox::AcceptRole);
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | enter), this);
    connect(shortcut, &QShortcut::activated, this, &QDialog::accept);
  }
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(hint, 1);
  bottom->addWidget(buttons);
  auto* column = new QVBoxLayout(this);
  column->addWidget(m_field, 1);
  column->addLayout(bottom);
  m_field->setFocus();
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(m_field, &CCrystalEditView::Hint, hint, &QLabel::setText);
  connect(m_field, &CCrystalTextView::CaretMoved, hint, &QLabel::clear);
}

/// A file that cannot be written stays as it was, and nothing is said about it.
void ToDoDialog::accept() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const IoResult ignored = m_list.Save(m_field->Text());
  static_cast<void>(ignored);
  QApplication::restoreOverrideCursor();
  QDialog::accept();
}

void ToDoDialog::done(int result) {
  frame_geometry::Keep(m_profile, PlaceSection(), *this);
  QDialog::done(result);
  if (parentWidget() != nullptr) parentWidget()->activateWindow();
}

}  // namespace quill
