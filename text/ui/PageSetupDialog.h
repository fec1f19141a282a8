#pragma once
#include <QDialog>
#include <array>

#include "text/view/PrintLayout.h"

class QDoubleSpinBox;

namespace quill {

/// Asks for the margins of printed pages. Paper and orientation are shown but belong to the printer.
class PageSetupDialog : public QDialog {
  Q_OBJECT

 public:
  explicit PageSetupDialog(const PageMargins& margins, QWidget* parent = nullptr);

  /// As edited.
  PageMargins Margins() const;

 private:
  std::array<QDoubleSpinBox*, 4> m_fields{};  ///< left, right, top, bottom in millimetres
};

}  // namespace quill
