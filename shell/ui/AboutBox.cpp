#include "shell/ui/AboutBox.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"

namespace quill {
namespace {

constexpr int kIconSize = 64;
constexpr int kSpacing = 16;
constexpr double kHeadingScale = 1.4;

}  // namespace

AboutBox::AboutBox(QWidget* parent) : QDialog(parent) {
  setWindowTitle(UiText(StringId::kAboutTitle));
  auto* icon = new QLabel(this);
  icon->setPixmap(ProgramIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
  // The first line is the heading.
  const QString text = UiText(StringId::kAboutText, {UiText(StringId::kVersionText)});
  auto* heading = new QLabel(text.section(u'\n', 0, 0), this);
  QFont font = heading->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * kHeadingScale);
  heading->setFont(font);
  auto* description = new QLabel(text.section(u'\n', 1), this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(kSpacing, kSpacing, kSpacing, kSpacing);
  layout->setHorizontalSpacing(kSpacing);
  layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
  layout->addWidget(heading, 0, 1, Qt::AlignBottom);
  layout->addWidget(description, 1, 1, Qt::AlignTop);
  layout->setRowMinimumHeight(2, kSpacing);
  layout->addWidget(buttons, 3, 0, 1, 2);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace quill
