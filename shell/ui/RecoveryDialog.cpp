#include "shell/ui/RecoveryDialog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "res/ui/UiText.h"
#include "shell/RecoveryFolder.h"
#include "widgets/PlainNames.h"

namespace quill {
namespace {

constexpr QSize kPreferredSize{620, 320};

/// What the user should know before choosing; empty for a text that came back whole.
QString Remark(const RecoverableDocument& document) {
  switch (document.Kind()) {
    case RecoveredText::kBeginning:
      return UiText(StringId::kRecoverBeginning);
    case RecoveredText::kTypedOnly:
      return UiText(StringId::kRecoverTypedOnly);
    default:
      return document.FileChangedSince() ? UiText(StringId::kRecoverFileChanged) : QString();
  }
}

QTreeWidgetItem* MakeRow(const RecoverableDocument& document) {
  const QFileInfo file(FromBytes(document.Path()));
  const QString name = document.Path().empty() ? FromBytes(document.Title()) : file.fileName();
  const QString folder = document.Path().empty() ? QString() : file.path();
  const QString time =
      QLocale().toString(QDateTime::fromSecsSinceEpoch(document.Time()), QLocale::ShortFormat);
  auto* row = new QTreeWidgetItem({name, time, folder, Remark(document)});
  row->setCheckState(0, Qt::Checked);
  row->setToolTip(2, plain_names::ForTip(folder));
  row->setToolTip(3, plain_names::ForTip(row->text(3)));
  return row;
}

}  // namespace

RecoveryDialog::RecoveryDialog(const std::vector<RecoverableDocument>& found, QWidget* parent)
    : QDialog(parent), m_list(new QTreeWidget(this)) {
  setWindowTitle(UiText(StringId::kRecoverTitle));
  auto* question = new QLabel(UiText(StringId::kRecoverQuestion), this);
  question->setWordWrap(true);
  m_list->setAccessibleName(question->text());
  m_list->setRootIsDecorated(false);
  m_list->setHeaderLabels({UiText(StringId::kRecoverColumnName), UiText(StringId::kRecoverColumnTime),
                           UiText(StringId::kRecoverColumnFolder), UiText(StringId::kRecoverColumnRemark)});
  for (const RecoverableDocument& document : found) m_list->addTopLevelItem(MakeRow(document));
  for (int column = 0; column < m_list->columnCount(); ++column) m_list->resizeColumnToContents(column);

  auto* buttons = new QDialogButtonBox(this);
  const auto addButton = [&](StringId text, QDialogButtonBox::ButtonRole role,
                             Prompts::RecoveryAction action) {
    QPushButton* button = buttons->addButton(UiText(text), role);
    connect(button, &QPushButton::clicked, this, [this, action] { Finish(action); });
    return button;
  };
  addButton(StringId::kRecoverButton, QDialogButtonBox::AcceptRole, Prompts::RecoveryAction::kRecover)
      ->setDefault(true);
  addButton(StringId::kDiscardRecoveredButton, QDialogButtonBox::DestructiveRole,
            Prompts::RecoveryAction::kDiscard);
  addButton(StringId::kRecoverLaterButton, QDialogButtonBox::RejectRole, Prompts::RecoveryAction::kLater);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(question);
  layout->addWidget(m_list);
  layout->addWidget(buttons);
  resize(kPreferredSize);
}

void RecoveryDialog::Finish(Prompts::RecoveryAction action) {
  m_action = action;
  done(action == Prompts::RecoveryAction::kLater ? Rejected : Accepted);
}

Prompts::RecoveryChoice RecoveryDialog::Choice() const {
  Prompts::RecoveryChoice choice{m_action, {}};
  for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
    if (m_list->topLevelItem(i)->checkState(0) == Qt::Checked)
      choice.chosen.push_back(static_cast<size_t>(i));
  }
  return choice;
}

}  // namespace quill
