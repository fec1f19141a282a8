#include "shell/ui/ToolBarImages.h"

#include <QFile>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <filesystem>

#include "res/Menus.h"
#include "res/PcxImage.h"
#include "res/ui/UiText.h"
#include "shell/ui/CommandRouter.h"

namespace quill {
namespace {

constexpr const char* kFileName = "buttons_qil.pcx";
/// A larger file is no strip of buttons.
constexpr qint64 kMaxFileSize = qint64{8} << 20;

int ButtonCount() {
  int count = 0;
  for (const ToolBar& bar : ToolBars()) {
    for (CommandId id : bar.buttons) count += id != CommandId::kNone ? 1 : 0;
  }
  return count;
}

/// The strip is cut evenly when it divides by the buttons, else into squares.
int ImageWidth(const PcxImage& strip) {
  const int buttons = ButtonCount();
  return strip.width % buttons == 0 ? strip.width / buttons : strip.height;
}

QImage CutImage(const PcxImage& strip, int left, int width) {
  QImage image(width, strip.height, QImage::Format_ARGB32);
  const uint32_t transparent = strip.At(0, 0);
  for (int y = 0; y < strip.height; ++y) {
    for (int x = 0; x < width; ++x) {
      const uint32_t colour = strip.At(left + x, y);
      image.setPixel(x, y, colour == transparent ? qRgba(0, 0, 0, 0) : colour);
    }
  }
  return image;
}

}  // namespace

void LoadToolBarImages(const std::string& programFolder, CommandRouter& router) {
  QFile file(FromBytes((std::filesystem::path(programFolder) / kFileName).string()));
  if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileSize) return;
  const std::optional<PcxImage> strip = DecodePcx(file.readAll().toStdString());
  if (!strip) return;
  const int width = ImageWidth(*strip);
  for (const ToolBar& bar : ToolBars()) {
    for (CommandId id : bar.buttons) {
      const int left = ToolBarImageIndex(id) * width;
      if (id == CommandId::kNone || left + width > strip->width) continue;
      router.SetIcon(id, QIcon(QPixmap::fromImage(CutImage(*strip, left, width))));
    }
  }
}

}  // namespace quill
