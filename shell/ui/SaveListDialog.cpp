#include "shell/ui/SaveListDialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "res/ui/UiText.h"
#include "widgets/PlainNames.h"

namespace quill {
namespace {

constexpr QSize kPreferredSize{560, 360};
constexpr int kWidestName = 300;

QTreeWidgetItem* MakeRow(const std::string& name) {
  const QFileInfo file(FromBytes(name));
  const QStringList texts{file.fileName(), file.isAbsolute() ? file.path() : QString()};
  auto* row = new QTreeWidgetItem(texts);
  row->setCheckState(0, Qt::Checked);
  row->setToolTip(0, plain_names::ForTip(row->text(0)));
  row->setToolTip(1, plain_names::ForTip(row->text(1)));
  return row;
}

}  // namespace

SaveListDialog::SaveListDialog(const std::vector<std::string>& names, QWidget* parent)
    : QDialog(parent), m_list(new QTreeWidget(this)) {
  setWindowTitle(UiText(StringId::kProgramTitle));
  auto* question = new QLabel(UiText(StringId::kSaveAllChanges, {QString::number(names.size())}) + u'\n' +
                                  UiText(StringId::kSaveTickedHint),
                              this);
  question->setWordWrap(true);
  m_list->setAccessibleName(question->text());
  m_list->setRootIsDecorated(false);
  m_list->setTextElideMode(Qt::ElideMiddle);  // both ends tell alike folders apart
  m_list->setHeaderLabels({UiText(StringId::kRecoverColumnName), UiText(StringId::kRecoverColumnFolder)});
  for (const std::string& name : names) m_list->addTopLevelItem(MakeRow(name));
  m_list->setCurrentItem(m_list->topLevelItem(0));
  m_list->resizeColumnToContents(0);
  m_list->setColumnWidth(0, std::min(m_list->columnWidth(0), kWidestName));

  auto* buttons = new QDialogButtonBox(this);
  m_save = buttons->addButton(UiText(StringId::kSaveButton), QDialogButtonBox::AcceptRole);
  m_save->setDefault(true);
  connect(m_save, &QPushButton::clicked, this, [this] { Finish(true); });
  QPushButton* discard =
      buttons->addButton(UiText(StringId::kDiscardAllButton), QDialogButtonBox::DestructiveRole);
  connect(discard, &QPushButton::clicked, this, [this] { Finish(false); });
  buttons->addButton(UiText(StringId::kCancelButton), QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  // Saving nothing is the other button's, which says so.
  connect(m_list, &QTreeWidget::itemChanged, this, [this] { m_save->setEnabled(!Ticked().empty()); });

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(question);
  layout->addWidget(m_list);
  layout->addWidget(buttons);
  resize(kPreferredSize.boundedTo(screen()->availableSize()));
  m_list->setFocus();
}

std::vector<size_t> SaveListDialog::Ticked() const {
  std::vector<size_t> ticked;
  for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
    if (m_list->topLevelItem(i)->checkState(0) == Qt::Checked) ticked.push_back(static_cast<size_t>(i));
  }
  return ticked;
}

void SaveListDialog::Finish(bool save) {
  m_choice = save ? Ticked() : std::vector<size_t>();
  accept();
}

}  // namespace quill
