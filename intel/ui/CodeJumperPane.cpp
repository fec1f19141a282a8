#include "intel/ui/CodeJumperPane.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "intel/ui/CodeJumperTree.h"
#include "res/Strings.h"
#include "text/ui/ClipboardData.h"

namespace quill {

CodeJumperPane::CodeJumperPane(QWidget* parent)
    : QWidget(parent), m_filter(new QLineEdit(this)), m_tree(new CCodeJumperTree(this)) {
  const std::string_view label = Text(StringId::kOutlineFilter);
  m_filter->setPlaceholderText(QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size())));
  m_filter->setClearButtonEnabled(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(2, 2, 2, 2);
  column->setSpacing(2);
  column->addWidget(m_filter);
  column->addWidget(m_tree);
  connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
    int replaced = 0;
    m_tree->SetFilter(clipboard_data::FromUnicode(text, replaced));
  });
  connect(m_filter, &QLineEdit::returnPressed, m_tree, [this] { m_tree->setFocus(); });
}

}  // namespace quill
