#include "intel/ui/ManualIndexPane.h"

#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QLineEdit>
#include <QVBoxLayout>

#include "intel/ui/ListSteering.h"
#include "intel/ui/RoomyDelegate.h"
#include "res/Commands.h"
#include "res/ui/UiText.h"

namespace quill {

ManualIndexPane::ManualIndexPane(QHelpEngine& engine, QWidget* parent)
    : QWidget(parent), m_field(new QLineEdit(this)), m_list(engine.indexWidget()) {
  m_field->setPlaceholderText(UiText(StringId::kManualIndexPrompt));
  m_field->setAccessibleName(UiText(StringId::kManualIndexPrompt));
  m_field->setClearButtonEnabled(true);
  m_list->setAccessibleName(UiText(PlainLabel(Text(StringId::kManualIndex))));
  m_list->setFrameShape(QFrame::NoFrame);
  m_list->setUniformItemSizes(true);
  m_list->setItemDelegate(new RoomyDelegate(m_list));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(2, 4, 2, 2);
  column->addWidget(m_field);
  column->addWidget(m_list);
  new ListSteering(*m_field, *m_list);
  connect(m_field, &QLineEdit::textChanged, m_list,
          [this](const QString& text) { m_list->filterIndices(text.trimmed()); });
  connect(m_field, &QLineEdit::returnPressed, m_list, &QHelpIndexWidget::activateCurrentItem);
  connect(m_list, &QAbstractItemView::clicked, m_list, &QHelpIndexWidget::activateCurrentItem);
  connect(m_list, &QHelpIndexWidget::documentActivated, this,
          [this](const QHelpLink& link) { Q_EMIT Chosen(link.url); });
}

void ManualIndexPane::FocusField() {
  m_field->setFocus();
  m_field->selectAll();
}

}  // namespace quill
