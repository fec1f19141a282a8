#include "shell/ui/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include "shell/ui/ChromeStyle.h"

namespace quill {
namespace {

constexpr const char* kSchemeVariable = "QUILL_COLOUR_SCHEME";

QPalette DarkPalette() {
  const QColor window(0x2b, 0x2d, 0x30);
  const QColor base(0x1e, 0x1f, 0x22);
  const QColor button(0x36, 0x39, 0x3d);
  const QColor text(0xdf, 0xe1, 0xe5);
  const QColor faint(0x8b, 0x8f, 0x96);
  const QColor accent(0x35, 0x74, 0xd4);
  QPalette palette(text, button, button.lighter(130), window.darker(150), window.darker(120), text, Qt::white,
                   base, window);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::ToolTipBase, button);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::PlaceholderText, faint);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, accent.lighter(140));
  palette.setColor(QPalette::LinkVisited, accent.lighter(120));
  for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, faint.darker(115));
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, button);
  // The style draws it below disabled texts.
  palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  return palette;
}

}  // namespace

void PrepareAppearance() {
  QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void ApplyAppearance() {
  QApplication::setStyle(new ChromeStyle);
  const QByteArray scheme = qgetenv(kSchemeVariable);
  if (scheme == "dark") {
    QApplication::setPalette(DarkPalette());
  } else if (scheme == "light") {
    QApplication::setPalette(QApplication::style()->standardPalette());
  } else {
    // Some dark desktops leave this role at the light default, where nobody can read it.
    const QPalette desktop = QApplication::palette();
    QColor faint = desktop.color(QPalette::Text);
    faint.setAlpha(150);
    QPalette palette;
    palette.setColor(QPalette::PlaceholderText, faint);
    QApplication::setPalette(palette);
  }
}

}  // namespace quill
