#include "shell/ui/StartPage.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "shell/ui/StartLink.h"

namespace quill {
namespace {

// Pixels.
constexpr int kColumnWidth = 460;
constexpr int kMargin = 24;
constexpr int kSectionGap = 22;
constexpr int kTitleGap = 4;
constexpr int kLogoSize = 48;
constexpr double kTitleScale = 1.9;
constexpr float kFaint = 0.62F;

QLabel* FaintLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setTextFormat(Qt::PlainText);
  QPalette colours = label->palette();
  QColor faint = colours.color(QPalette::WindowText);
  faint.setAlphaF(kFaint);
  colours.setColor(QPalette::WindowText, faint);
  label->setPalette(colours);
  return label;
}

}  // namespace

StartPage::StartPage(QWidget* parent) : QWidget(parent) {
  setObjectName("StartPage");
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* area = new QScrollArea(this);
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setFocusPolicy(Qt::NoFocus);
  area->viewport()->setBackgroundRole(QPalette::Base);
  layout->addWidget(area);
}

void StartPage::Show(const std::vector<Section>& sections) {
  auto* area = findChild<QScrollArea*>();
  m_first = nullptr;
  m_contents = new QWidget;
  m_contents->setBackgroundRole(QPalette::Base);
  auto* across = new QHBoxLayout(m_contents);
  across->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  auto* middle = new QWidget(m_contents);
  middle->setMaximumWidth(kColumnWidth);
  auto* column = new QVBoxLayout(middle);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  across->addStretch(1);
  across->addWidget(middle, kColumnWidth);  // wins over the stretches up to its greatest width
  across->addStretch(1);
  // A third of the free height above, two thirds below: where the eye looks first.
  column->addStretch(1);
  AddHead(*column);
  for (const Section& section : sections) {
    if (!section.rows.empty()) AddSection(*column, section);
  }
  column->addStretch(2);
  area->setWidget(m_contents);  // the old contents go
}

void StartPage::AddHead(QVBoxLayout& column) {
  auto* head = new QHBoxLayout;
  head->setSpacing(kMargin / 2);
  auto* logo = new QLabel(m_contents);
  logo->setPixmap(ProgramIcon().pixmap(QSize(kLogoSize, kLogoSize), devicePixelRatioF()));
  head->addWidget(logo);
  auto* words = new QVBoxLayout;
  words->setSpacing(0);
  auto* title = new QLabel(UiText(StringId::kProgramTitle), m_contents);
  QFont font = title->font();
  font.setPointSizeF(font.pointSizeF() * kTitleScale);
  title->setFont(font);
  words->addWidget(title);
  words->addWidget(FaintLabel(
      UiText(StringId::kStartIntroduction) + QStringLiteral("  \u00B7  ") + UiText(StringId::kVersionText),
      m_contents));
  head->addLayout(words, 1);
  column.addLayout(head);
}

void StartPage::AddSection(QVBoxLayout& column, const Section& section) {
  column.addSpacing(kSectionGap);
  QLabel* title = FaintLabel(section.title, m_contents);
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  column.addWidget(title);
  column.addSpacing(kTitleGap);
  for (const Row& row : section.rows) {
    auto* link = new StartLink(row.icon, row.text, row.remark, m_contents);
    link->setMinimumWidth(0);
    // Later: what is begun may take this page away.
    connect(
        link, &StartLink::clicked, this, [run = row.run] { run(); }, Qt::QueuedConnection);
    column.addWidget(link);
    if (m_first == nullptr) m_first = link;
  }
}

void StartPage::FocusFirst() {
  if (m_first != nullptr) m_first->setFocus();
}

}  // namespace quill
