#include "intel/ui/HintTipWindow.h"

#include <QAbstractTextDocumentLayout>
#include <QAccessibleWidget>
#include <QPainter>
#include <QToolTip>
#include <cmath>

#include "intel/ui/Popup.h"
#include "intel/vocabulary/HelpText.h"

namespace quill {
namespace {

constexpr int kMargin = 4;        ///< pixels around the text
constexpr int kWidestText = 600;  ///< pixels; longer texts are broken

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  auto* tip = qobject_cast<HintTipWindow*>(object);
  return tip == nullptr ? nullptr : new QAccessibleWidget(tip, QAccessible::ToolTip);
}

}  // namespace

HintTipWindow::HintTipWindow(QWidget* owner) : QWidget(owner) {
  MakePopup(*this);
  [[maybe_unused]] static const bool once = [] {
    QAccessible::installFactory(MakeInterface);
    return true;
  }();
  setAttribute(Qt::WA_TransparentForMouseEvents);
  m_document.setDocumentMargin(kMargin);
}

void HintTipWindow::SetText(const std::string& text, TextPart bold, const QFont& font) {
  const auto part = [&text](size_t start, size_t end) {
    return QString::fromStdString(EscapeHtml(std::string_view(text).substr(start, end - start)));
  };
  m_document.setDefaultFont(font);
  m_document.setTextWidth(-1);
  m_document.setHtml(part(0, bold.start) + QStringLiteral("<b>") + part(bold.start, bold.end) +
                     QStringLiteral("</b>") + part(bold.end, text.size()));
  if (const QString name = m_document.toPlainText(); name != accessibleName()) setAccessibleName(name);
  if (m_document.idealWidth() > kWidestText) m_document.setTextWidth(kWidestText);
  update();
}

void HintTipWindow::ShowBeside(const QRect& line, PopupSide wanted) {
  const QSize size(static_cast<int>(std::ceil(m_document.idealWidth())),
                   static_cast<int>(std::ceil(m_document.size().height())));
  setGeometry(PopupRect(line, size, *parentWidget(), wanted));
  const bool appears = !isVisible();
  show();
  raise();
  if (!appears) return;
  // The toolkit tells nobody of windows of this kind.
  QAccessibleEvent event(this, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&event);
}

void HintTipWindow::paintEvent(QPaintEvent*) {
  const QPalette colours = QToolTip::palette();
  const QColor text = colours.color(QPalette::Inactive, QPalette::ToolTipText);
  const QColor base = colours.color(QPalette::Inactive, QPalette::ToolTipBase);
  QPainter painter(this);
  PaintPopup(painter, rect(), base, text);
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, text);
  m_document.documentLayout()->draw(&painter, context);
}

}  // namespace quill
