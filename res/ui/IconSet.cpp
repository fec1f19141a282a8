#include "res/ui/IconSet.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <string>

#include "res/Icons.h"

// The resources lie in a static library: naming them here keeps the linker from dropping them.
static void RegisterResources() {
  Q_INIT_RESOURCE(quill);
}

namespace quill {
namespace {

constexpr qreal kDisabledOpacity = 0.4;
constexpr int kDarkLightness = 128;

QByteArray ReadSvg(std::string_view name) {
  RegisterResources();
  QFile file(":/icons/" + QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())) + ".svg");
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool IsDarkPalette() {
  return QApplication::palette().color(QPalette::Window).lightness() < kDarkLightness;
}

/// Draws an SVG with the shape's own proportions, centred; `size` in device pixels.
QPixmap Render(const QByteArray& svg, QSize size) {
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  QSvgRenderer renderer(svg);
  renderer.setAspectRatioMode(Qt::KeepAspectRatio);
  QPainter painter(&pixmap);
  renderer.render(&painter);
  return pixmap;
}

class SvgIconEngine : public QIconEngine {
 public:
  explicit SvgIconEngine(QByteArray svg) : m_light(std::move(svg)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : qreal(1);
    QPixmap pixmap = this->pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
    pixmap.setDevicePixelRatio(ratio);
    painter->drawPixmap(rect.topLeft(), pixmap);
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    if (size.isEmpty()) return {};
    const bool dark = IsDarkPalette();
    const bool disabled = mode == QIcon::Disabled;
    const QString key = QStringLiteral("quill-icon-%1-%2x%3-%4%5")
                            .arg(qHash(m_light), 0, 16)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(int(dark))
                            .arg(int(disabled));
    QPixmap result;
    if (QPixmapCache::find(key, &result)) return result;
    result = Render(dark ? DarkSvg() : m_light, size);
    if (disabled) result = Faded(result);
    QPixmapCache::insert(key, result);
    return result;
  }

  QIconEngine* clone() const override { return new SvgIconEngine(m_light); }
  bool isNull() override { return m_light.isEmpty(); }

 private:
  const QByteArray& DarkSvg() {
    if (m_dark.isEmpty()) m_dark = QByteArray::fromStdString(RecolourForDark(m_light.toStdString()));
    return m_dark;
  }

  static QPixmap Faded(const QPixmap& picture) {
    QPixmap faded(picture.size());
    faded.fill(Qt::transparent);
    QPainter painter(&faded);
    painter.setOpacity(kDisabledOpacity);
    painter.drawPixmap(0, 0, picture);
    return faded;
  }

  QByteArray m_light;
  QByteArray m_dark;
};

}  // namespace

QIcon LoadIcon(std::string_view name) {
  if (name.empty()) return {};
  QByteArray svg = ReadSvg(name);
  return svg.isEmpty() ? QIcon() : QIcon(new SvgIconEngine(std::move(svg)));
}

QPixmap LoadMark(std::string_view name, int size, qreal devicePixelRatio) {
  const QByteArray svg = ReadSvg(name);
  const int pixels = qRound(size * devicePixelRatio);
  if (svg.isEmpty() || pixels <= 0) return {};
  QPixmap mark = Render(svg, QSize(pixels, pixels));
  mark.setDevicePixelRatio(devicePixelRatio);
  return mark;
}

QIcon ProgramIcon() {
  const QByteArray svg = ReadSvg("quill");
  QIcon icon;
  for (int size : {16, 24, 32, 48, 64, 128, 256}) icon.addPixmap(Render(svg, QSize(size, size)));
  return icon;
}

}  // namespace quill
