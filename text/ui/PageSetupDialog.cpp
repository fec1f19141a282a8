#include "text/ui/PageSetupDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPageLayout>
#include <QPrinter>
#include <QVBoxLayout>
#include <cmath>
#include "res/ui/UiText.h"

namespace quill {
namespace {

constexpr double kHundredthsPerMillimetre = 100.0;
constexpr double kLargestMargin = 100.0;  ///< millimetres

}  // namespace

PageSetupDialog::PageSetupDialog(const PageMargins& margins, QWidget* parent) : QDialog(parent) {
  setWindowTitle(UiText(StringId::kPageSetupTitle));
  auto* paperBox = new QGroupBox(UiText(StringId::kPaperGroup), this);
  auto* paperForm = new QFormLayout(paperBox);
  const QPageLayout layout = QPrinter().pageLayout();
  auto* paper = new QComboBox(paperBox);
  paper->addItem(layout.pageSize().name());
  paper->setEnabled(false);
  auto* orientation = new QComboBox(paperBox);
  orientation->addItem(layout.orientation() == QPageLayout::Portrait ? UiText(StringId::kPaperPortrait)
                                                                     : UiText(StringId::kPaperLandscape));
  orientation->setEnabled(false);
  paperForm->addRow(UiText(StringId::kPaperSize), paper);
  paperForm->addRow(UiText(StringId::kPaperOrientation), orientation);
  paperBox->setToolTip(UiText(StringId::kPaperHint));

  auto* marginBox = new QGroupBox(UiText(StringId::kMarginsGroup), this);
  auto* marginForm = new QFormLayout(marginBox);
  const std::array<QString, 4> labels = {UiText(StringId::kLeftMargin), UiText(StringId::kRightMargin),
                                         UiText(StringId::kTopMargin), UiText(StringId::kBottomMargin)};
  const std::array<int32_t, 4> values = {margins.left, margins.right, margins.top, margins.bottom};
  for (size_t i = 0; i < m_fields.size(); ++i) {
    m_fields[i] = new QDoubleSpinBox(marginBox);
    m_fields[i]->setRange(0, kLargestMargin);
    m_fields[i]->setDecimals(2);
    m_fields[i]->setSuffix(UiText(StringId::kMillimetres));
    m_fields[i]->setValue(values[i] / kHundredthsPerMillimetre);
    marginForm->addRow(labels[i], m_fields[i]);
  }

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addWidget(paperBox);
  column->addWidget(marginBox);
  column->addWidget(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  m_fields[0]->setFocus();
  m_fields[0]->selectAll();
}

PageMargins PageSetupDialog::Margins() const {
  const auto value = [this](size_t i) {
    return static_cast<int32_t>(std::lround(m_fields[i]->value() * kHundredthsPerMillimetre));
  };
  return {value(0), value(1), value(2), value(3)};
}

}  // namespace quill
