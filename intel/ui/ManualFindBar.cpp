#include "intel/ui/ManualFindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "intel/ui/ManualPage.h"
#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"

namespace quill {
namespace {

constexpr int kFieldWidth = 240;
constexpr int kMargin = 4;

}  // namespace

ManualFindBar::ManualFindBar(ManualPage& page, QWidget* parent)
    : QWidget(parent), m_page(page), m_text(new QLineEdit(this)), m_status(new QLabel(this)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  m_text->setPlaceholderText(UiText(StringId::kManualFindPrompt));
  m_text->setAccessibleName(UiText(StringId::kManualFindPrompt));
  m_text->setClearButtonEnabled(true);
  m_text->setMaximumWidth(kFieldWidth);
  row->addWidget(m_text, 1);
  connect(AddButton("find-previous", UiText(StringId::kManualFindPrevious) + " (Shift+F3)"),
          &QToolButton::clicked, this, [this] { GoOn(true); });
  connect(AddButton("find-next", UiText(StringId::kManualFindNext) + " (F3)"), &QToolButton::clicked, this,
          [this] { GoOn(false); });
  row->addWidget(m_status);
  row->addStretch(1);
  connect(AddButton("close-bar", UiText(StringId::kManualFindClose) + " (Esc)"), &QToolButton::clicked, this,
          &ManualFindBar::Close);
  connect(m_text, &QLineEdit::textChanged, this, &ManualFindBar::OnTextChanged);
  // Another page: what is typed is looked for there when the user goes on.
  connect(&page, &QTextBrowser::sourceChanged, this, [this] {
    if (!isVisible()) return;
    m_count = m_page.MarkText(m_text->text());
    m_status->clear();
  });
  hide();
}

QToolButton* ManualFindBar::AddButton(const char* icon, const QString& tip) {
  auto* button = new QToolButton(this);
  button->setIcon(LoadIcon(icon));
  button->setToolTip(tip);
  button->setAccessibleName(tip);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  layout()->addWidget(button);
  return button;
}

void ManualFindBar::Open() {
  const QString selected = m_page.textCursor().selectedText();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) m_text->setText(selected);
  show();
  m_text->setFocus();
  m_text->selectAll();
  m_count = m_page.MarkText(m_text->text());
}

void ManualFindBar::Close() {
  hide();
  m_page.MarkText(QString());
  m_page.setFocus();
}

void ManualFindBar::GoOn(bool backwards) {
  if (!isVisible() || m_text->text().isEmpty()) return Open();
  ShowNumber(m_page.GoToMark(backwards, false));
}

void ManualFindBar::OnTextChanged() {
  m_count = m_page.MarkText(m_text->text());
  ShowNumber(m_page.GoToMark(false, true));
}

void ManualFindBar::ShowNumber(int number) {
  if (m_text->text().isEmpty()) return m_status->clear();
  m_status->setText(m_count == 0
                        ? UiText(StringId::kManualNothingFound)
                        : UiText(StringId::kMatchCount, {QString::number(number), QString::number(m_count)}));
}

void ManualFindBar::keyPressEvent(QKeyEvent* event) {
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!isEnter) return QWidget::keyPressEvent(event);
  GoOn((event->modifiers() & Qt::ShiftModifier) != 0);
}

}  // namespace quill
