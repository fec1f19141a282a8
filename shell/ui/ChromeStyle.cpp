#include "shell/ui/ChromeStyle.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "res/ui/IconSet.h"
#include "shell/ui/ChromeScrollBar.h"
#include "widgets/PlainNames.h"

namespace quill {
namespace {

enum class Shape { kCross, kTwoSquares, kSquare, kLine };

void Draw(Shape shape, QPainter& painter, const QRectF& rect, const QColor& colour) {
  const double side = std::min(rect.width(), rect.height()) * 0.5;
  const QRectF box(rect.center().x() - side / 2, rect.center().y() - side / 2, side, side);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, std::max(1.2, side / 6), Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
  painter.setBrush(Qt::NoBrush);
  switch (shape) {
    case Shape::kCross:
      painter.drawLine(box.topLeft(), box.bottomRight());
      painter.drawLine(box.topRight(), box.bottomLeft());
      break;
    case Shape::kTwoSquares:
      painter.drawRect(box.adjusted(side * 0.3, 0, 0, -side * 0.3));
      painter.drawRect(box.adjusted(0, side * 0.3, -side * 0.3, 0));
      break;
    case Shape::kSquare:
      painter.drawRect(box);
      break;
    case Shape::kLine:
      painter.drawLine(box.bottomLeft(), box.bottomRight());
      break;
  }
  painter.restore();
}

class ShapeEngine : public QIconEngine {
 public:
  explicit ShapeEngine(Shape shape) : m_shape(shape) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    Draw(m_shape, *painter, rect, QApplication::palette().color(group, QPalette::ButtonText));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }
  QIconEngine* clone() const override { return new ShapeEngine(m_shape); }

 private:
  Shape m_shape;
};

}  // namespace

ChromeStyle::ChromeStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

QIcon ChromeStyle::standardIcon(StandardPixmap pixmap, const QStyleOption* option,
                                const QWidget* widget) const {
  switch (pixmap) {
    case SP_DockWidgetCloseButton:
    case SP_TitleBarCloseButton:
      return QIcon(new ShapeEngine(Shape::kCross));
    case SP_TitleBarNormalButton:
      return QIcon(new ShapeEngine(Shape::kTwoSquares));
    case SP_TitleBarMaxButton:
      return QIcon(new ShapeEngine(Shape::kSquare));
    case SP_TitleBarMinButton:
      return QIcon(new ShapeEngine(Shape::kLine));
    case SP_MessageBoxQuestion:
      return LoadIcon("help");
    case SP_MessageBoxInformation:
      return LoadIcon("about");
    case SP_MessageBoxWarning:
    case SP_MessageBoxCritical:
      return LoadIcon("warning");
    default:
      return QProxyStyle::standardIcon(pixmap, option, widget);
  }
}

void ChromeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  if (element != PE_IndicatorTabClose) {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    return;
  }
  const QRectF rect(option->rect);
  QColor colour = option->palette.color(QPalette::WindowText);
  if (option->state.testFlag(State_Raised) && option->state.testFlag(State_MouseOver)) {
    QColor behind = colour;
    behind.setAlpha(40);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(behind);
    painter->drawRoundedRect(rect, 3, 3);
    painter->restore();
  } else if (!option->state.testFlag(State_Selected)) {
    colour.setAlpha(120);
  }
  Draw(Shape::kCross, *painter, rect, colour);
}

void ChromeStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
  if (element != CE_TabBarTabLabel || tab == nullptr || !plain_names::KeepsAmpersand(tab->text)) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  QStyleOptionTab named = *tab;
  named.text.replace(u'&', "&&");
  QProxyStyle::drawControl(element, &named, painter, widget);
}

int ChromeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* result) const {
  if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
  return QProxyStyle::styleHint(hint, option, widget, result);
}

void ChromeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_ScrollBar && slider != nullptr) {
    chrome_scroll_bar::Draw(*slider, *painter);
  } else {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
}

QRect ChromeStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const {
  const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
  if (control == CC_ScrollBar && slider != nullptr) return chrome_scroll_bar::SubControlRect(*slider, part);
  return QProxyStyle::subControlRect(control, option, part, widget);
}

}  // namespace quill
