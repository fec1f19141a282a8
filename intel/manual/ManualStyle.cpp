#include "intel/manual/ManualStyle.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "base/CodePage1252.h"

namespace quill {
namespace {

constexpr std::string_view kGenericFamily = "monospace";

/// The digits that `text` begins with, when "pt" follows them; else empty.
std::string_view PointsAt(std::string_view text) {
  const auto end = std::find_if_not(text.begin(), text.end(), cp1252::IsAsciiDigit);
  const auto digits = static_cast<size_t>(end - text.begin());
  return text.substr(digits).starts_with("pt") ? text.substr(0, digits) : std::string_view();
}

constexpr std::string_view kPictureTag = "<img src=\"";
constexpr std::string_view kWidth = "\" width=\"";
constexpr std::string_view kHeight = "\" height=\"";

/// Takes `name` and the number behind it from the front of `text`; -1, and takes nothing, when they are not
/// there.
int TakeNumber(std::string_view& text, std::string_view name) {
  int number = -1;
  if (!text.starts_with(name)) return number;
  const std::string_view rest = text.substr(name.size());
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
  if (error != std::errc() || number < 0) return -1;
  text = rest.substr(static_cast<size_t>(end - rest.data()));
  return number;
}

}  // namespace

std::string ScaledStyleSheet(std::string_view css, int percent, std::string_view fixedFamily) {
  std::string scaled;
  while (!css.empty()) {
    size_t taken = 1;
    if (const std::string_view points = PointsAt(css); !points.empty()) {
      int size = 0;
      std::from_chars(points.data(), points.data() + points.size(), size);
      scaled += std::to_string(std::lround(size * percent / 100.0));
      taken = points.size();
    } else if (css.starts_with(kGenericFamily)) {
      scaled.append("'").append(fixedFamily).append("'");
      taken = kGenericFamily.size();
    } else {
      scaled += css.front();
    }
    css.remove_prefix(taken);
  }
  return scaled;
}

PageArea FittedPicture(PageArea own, int percent, int widest) {
  const auto scaled = [percent](int length) {
    return static_cast<int>(static_cast<int64_t>(length) * percent / 100);
  };
  const PageArea wanted{scaled(own.width), scaled(own.height)};
  if (wanted.width <= widest || widest <= 0) return wanted;
  const int height = static_cast<int>(static_cast<int64_t>(wanted.height) * widest / wanted.width);
  return {widest, std::max(height, 1)};
}

std::string WithFittedPictures(std::string_view html, int percent, int widest) {
  std::string fitted;
  while (!html.empty()) {
    const size_t tag = html.find(kPictureTag);
    const size_t nameEnd = tag == std::string_view::npos ? tag : html.find('"', tag + kPictureTag.size());
    if (nameEnd == std::string_view::npos) break;
    fitted += html.substr(0, nameEnd);
    html.remove_prefix(nameEnd);
    std::string_view sizes = html;
    const int width = TakeNumber(sizes, kWidth);
    const int height = TakeNumber(sizes, kHeight);
    if (width <= 0 || height <= 0) continue;
    const PageArea area = FittedPicture({width, height}, percent, widest);
    fitted.append(kWidth).append(std::to_string(area.width));
    fitted.append(kHeight).append(std::to_string(area.height));
    html = sizes;
  }
  return fitted.append(html);
}

}  // namespace quill
