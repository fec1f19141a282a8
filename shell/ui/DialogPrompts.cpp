#include "shell/ui/DialogPrompts.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <utility>

#include "res/ui/UiText.h"
#include "shell/ui/AboutBox.h"
#include "shell/ui/RecoveryDialog.h"
#include "shell/ui/SaveListDialog.h"
#include "text/ui/PageSetupDialog.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kLineBoxWidth = 460;
constexpr int kProgressDelayMs = 700;

QString ScriptFilters() {
  return UiText(StringId::kScriptFilter) + ";;" + UiText(StringId::kAllFilesFilter);
}

/// A filter that is shown by its label alone. "*.*" stands for every file, also for those without a dot.
QString LabelledFilter(StringId label, StringId patterns) {
  const QString text = UiText(patterns);
  const QString list = text == "*.*" ? QStringLiteral("*") : QString(text).replace(u';', u' ').trimmed();
  return UiText(label) + " (" + list + u')';
}

QMessageBox::Icon IconOf(DocumentPrompt::Icon icon) {
  switch (icon) {
    case DocumentPrompt::Icon::kQuestion:
      return QMessageBox::Question;
    case DocumentPrompt::Icon::kWarning:
      return QMessageBox::Warning;
    case DocumentPrompt::Icon::kNone:
      return QMessageBox::NoIcon;
    case DocumentPrompt::Icon::kInformation:
      break;
  }
  return QMessageBox::Information;
}

/// Adds Save, Don't Save and Cancel, shows the box and returns the answer.
Prompts::Answer AskToSave(QMessageBox& box) {
  QPushButton* save = box.addButton(UiText(StringId::kSaveButton), QMessageBox::AcceptRole);
  QPushButton* discard = box.addButton(UiText(StringId::kDiscardButton), QMessageBox::DestructiveRole);
  QPushButton* cancel = box.addButton(UiText(StringId::kCancelButton), QMessageBox::RejectRole);
  box.setDefaultButton(save);
  box.setEscapeButton(cancel);
  box.exec();
  if (box.clickedButton() == save) return Prompts::Answer::kSave;
  return box.clickedButton() == discard ? Prompts::Answer::kDiscard : Prompts::Answer::kCancel;
}

/// Comes up only when the work takes its time.
class ProgressBox : public Prompts::Progress {
 public:
  ProgressBox(const QString& caption, std::function<void()> cancel, QWidget* parent)
      : m_box(new QProgressDialog(parent)) {
    m_box->setWindowTitle(caption);
    m_box->setCancelButtonText(UiText(StringId::kCancelButton));
    m_box->setMinimumDuration(kProgressDelayMs);
    m_box->setMinimumWidth(kLineBoxWidth);
    m_box->setAutoClose(false);
    m_box->setAutoReset(false);
    QObject::connect(m_box, &QProgressDialog::canceled, m_box, std::move(cancel));
  }
  /// Perhaps in the middle of what the box's own button does.
  ~ProgressBox() override {
    if (m_box == nullptr) return;
    m_box->disconnect();
    m_box->cancel();  // it does not come up late either
    m_box->deleteLater();
  }
  void Show(const std::string& text, int done, int all) override {
    if (m_box == nullptr) return;
    m_box->setLabelText(FromBytes(text));
    m_box->setMaximum(all);
    m_box->setValue(done);
  }

 private:
  QPointer<QProgressDialog> m_box;  ///< goes with its parent
};

}  // namespace

Prompts::Answer DialogPrompts::Ask(const DocumentPrompt& prompt) {
  QMessageBox box(m_parent);
  box.setIcon(IconOf(prompt.icon));
  box.setWindowTitle(FromBytes(prompt.caption));
  box.setTextFormat(Qt::PlainText);
  box.setText(FromBytes(prompt.text));
  box.setInformativeText(FromBytes(prompt.detail));
  switch (prompt.buttons) {
    case DocumentPrompt::Buttons::kSaveDiscardCancel:
      return AskToSave(box);
    case DocumentPrompt::Buttons::kYesNo:
      box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
      return box.exec() == QMessageBox::Yes ? Answer::kYes : Answer::kNo;
    case DocumentPrompt::Buttons::kOk:
      break;
  }
  box.setStandardButtons(QMessageBox::Ok);
  box.exec();
  return Answer::kOk;
}

std::optional<std::vector<size_t>> DialogPrompts::ChooseWhatToSave(const std::vector<std::string>& names) {
  SaveListDialog dialog(names, m_parent);
  dialog.exec();
  return dialog.Choice();
}

std::vector<std::string> DialogPrompts::ChooseFilesToOpen(const std::string& folder) {
  std::vector<std::string> files;
  for (const QString& file : QFileDialog::getOpenFileNames(m_parent, UiText(StringId::kOpenTitle),
                                                           FromBytes(folder), ScriptFilters())) {
    files.push_back(ToBytes(file));
  }
  return files;
}

std::string DialogPrompts::ChooseFileToSave(const std::string& suggestedPath) {
  return ToBytes(QFileDialog::getSaveFileName(m_parent, UiText(StringId::kSaveAsTitle),
                                              FromBytes(suggestedPath), ScriptFilters()));
}

std::string DialogPrompts::ChoosePdfFile(const std::string& suggestedPath) {
  return ToBytes(QFileDialog::getSaveFileName(m_parent, UiText(StringId::kPrintToPdfTitle),
                                              FromBytes(suggestedPath), UiText(StringId::kPdfFilter)));
}

std::string DialogPrompts::ChooseImage(const std::string& folder) {
  const QString filters = LabelledFilter(StringId::kImageFilter, StringId::kImagePattern) + ";;" +
                          LabelledFilter(StringId::kAnyFileFilter, StringId::kAnyFilePattern);
  return ToBytes(QFileDialog::getOpenFileName(m_parent, UiText(StringId::kInsertImageTitle),
                                              FromBytes(folder), filters, nullptr,
                                              QFileDialog::HideNameFilterDetails));
}

std::string DialogPrompts::ChooseFolder(StringId title, const std::string& folder) {
  return ToBytes(QFileDialog::getExistingDirectory(m_parent, UiText(title), FromBytes(folder)));
}

std::optional<std::string> DialogPrompts::AskForScriptLine(StringId title, StringId prompt) {
  QInputDialog box(m_parent);
  box.setInputMode(QInputDialog::TextInput);
  box.setWindowTitle(UiText(title));
  box.setLabelText(UiText(prompt));
  box.resize(kLineBoxWidth, box.sizeHint().height());
  auto* field = box.findChild<QLineEdit*>();
  field->setValidator(new CodePageValidator(field));
  if (box.exec() != QDialog::Accepted) return std::nullopt;
  return ToCodePage(box.textValue());
}

std::optional<int32_t> DialogPrompts::ChooseLine(int32_t current, int32_t count) {
  bool accepted = false;
  const int line = QInputDialog::getInt(m_parent, UiText(StringId::kGoToLineTitle),
                                        UiText(StringId::kGoToLinePrompt, {QString::number(count)}), current,
                                        1, count, 1, &accepted);
  return accepted ? std::optional<int32_t>(line) : std::nullopt;
}

bool DialogPrompts::ChoosePrinter(QPrinter& printer) {
  return QPrintDialog(&printer, m_parent).exec() == QDialog::Accepted;
}

std::optional<PageMargins> DialogPrompts::ChooseMargins(const PageMargins& current) {
  PageSetupDialog dialog(current, m_parent);
  return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Margins()) : std::nullopt;
}

Prompts::RecoveryChoice DialogPrompts::ChooseRecovery(const std::vector<RecoverableDocument>& found) {
  RecoveryDialog dialog(found, m_parent);
  dialog.exec();
  return dialog.Choice();
}

void DialogPrompts::ShowAbout() {
  AboutBox(m_parent).exec();
}

std::unique_ptr<Prompts::Progress> DialogPrompts::ShowProgress(StringId caption,
                                                               std::function<void()> cancel) {
  return std::make_unique<ProgressBox>(UiText(caption), std::move(cancel), m_parent);
}

}  // namespace quill
