#pragma once
#include <QProxyStyle>

namespace quill {

/// Fusion, with the small buttons of bars, tabs and inner windows drawn as plain strokes in the
/// palette's text colour (sharp at every pixel ratio, and nothing has to be loaded for them), and flat
/// scroll bars.
class ChromeStyle : public QProxyStyle {
  Q_OBJECT

 public:
  ChromeStyle();

  QIcon standardIcon(StandardPixmap pixmap, const QStyleOption* option, const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  /// The buttons of dialogs carry no icons.
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
  QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                       const QWidget* widget) const override;
};

}  // namespace quill
