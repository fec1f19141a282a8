#include "engine/window/Fonts.h"

#include <SDL_ttf.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace korvel::window {
namespace {

constexpr int kLargestCell = 1000;
/// Sizes and faces that are kept; a game that uses more draws them anew.
constexpr size_t kMostCells = 64;

std::string Plain(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    if (c >= 'A' && c <= 'Z') plain += static_cast<char>(c - 'A' + 'a');
    if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) plain += c;
  }
  return plain;
}

// What code page 1252 has at 0x80 to 0x9f.
constexpr uint16_t kUpper[32] = {0x20ac, 0xfffd, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                 0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0xfffd, 0x017d, 0xfffd,
                                 0xfffd, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0xfffd, 0x017e, 0x0178};

// Fixed faces in the order in which they stand in for others.
constexpr const char* kFixed[] = {"dejavusansmono", "liberationmonoregular",
                                  "liberationmono", "notosansmonoregular",
                                  "freemono",       "ubuntumonor"};

}  // namespace

struct Fonts::Face {
  TTF_Font* font = nullptr;
  int size = 0;
  ~Face() {
    if (font != nullptr) TTF_CloseFont(font);
  }
};

Fonts::Fonts() : works_(TTF_Init() == 0) {
  const char* home = std::getenv("HOME");
  const char* data = std::getenv("XDG_DATA_DIRS");
  if (home != nullptr) {
    List(std::string(home) + "/.local/share/fonts", 6);
    List(std::string(home) + "/.fonts", 6);
  }
  std::string folders = data != nullptr && *data != 0 ? data : "/usr/local/share:/usr/share";
  for (size_t at = 0; at < folders.size();) {
    const size_t end = std::min(folders.find(':', at), folders.size());
    List(folders.substr(at, end - at) + "/fonts", 6);
    at = end + 1;
  }
}

Fonts::~Fonts() {
  faces_.clear();
  if (works_) TTF_Quit();
}

void Fonts::List(const std::string& folder, int depth) {
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code ignored;
    if (entry->is_directory(ignored)) {
      if (depth > 0) List(entry->path().string(), depth - 1);
      continue;
    }
    const std::string ending = Plain(entry->path().extension().string());
    if (ending == "ttf" || ending == "otf" || ending == "ttc")
      files_.emplace(Plain(entry->path().stem().string()), entry->path().string());
  }
}

// The face itself, or its regular form, or the system's own fixed one.
Fonts::Face* Fonts::Find(std::string_view name) {
  if (const auto known = faces_.find(name); known != faces_.end()) return known->second.get();
  const std::string plain = Plain(name);
  auto file = files_.end();
  if (!plain.empty()) file = files_.find(plain);
  if (!plain.empty() && file == files_.end()) file = files_.find(plain + "regular");
  for (const char* fixed : kFixed) {
    if (file == files_.end()) file = files_.find(fixed);
  }
  for (auto any = files_.begin(); file == files_.end() && any != files_.end(); ++any) {
    if (any->first.find("mono") != std::string::npos) file = any;
  }
  auto face = std::make_unique<Face>();
  if (works_ && file != files_.end()) face->font = TTF_OpenFont(file->second.c_str(), 16);
  return (faces_[std::string(name)] = std::move(face)).get();
}

Mask Fonts::Letter(std::string_view face, int width, int height, uint8_t letter) {
  if (width < 1 || height < 1 || width > kLargestCell || height > kLargestCell) return {};
  const std::string key = std::string(face) + "/" + std::to_string(width) + "x" + std::to_string(height);
  auto& cells = cells_[key];
  if (cells == nullptr) {
    if (cells_.size() > kMostCells) {
      cells_.clear();
      return Letter(face, width, height, letter);
    }
    cells = std::make_unique<Cells>();
  }
  if (!cells->drawn[letter]) {
    cells->drawn[letter] = true;
    Face* found = Find(face);
    if (found->font != nullptr) Draw(*found, width, height, letter, cells->letters[letter]);
  }
  const std::vector<uint8_t>& cell = cells->letters[letter];
  return cell.empty() ? Mask{} : Mask{cell.data(), width, height};
}

// Large enough for the cell's height, and narrow enough for its width.
void Fonts::Draw(Face& face, int width, int height, uint8_t letter, std::vector<uint8_t>& cell) {
  constexpr int kSample = 100;
  if (face.size != kSample) TTF_SetFontSize(face.font, face.size = kSample);
  int advance = 0;
  if (TTF_GlyphMetrics32(face.font, 'n', nullptr, nullptr, nullptr, nullptr, &advance) != 0 || advance < 1)
    advance = kSample / 2;
  const double by_height = static_cast<double>(height) / std::max(TTF_FontHeight(face.font), 1);
  const double by_width = static_cast<double>(width) / advance;
  const int size = static_cast<int>(kSample * std::min(by_height, by_width * 1.05) + 0.5);
  TTF_SetFontSize(face.font, face.size = std::max(size, 1));

  const uint32_t code = letter >= 0x80 && letter < 0xa0 ? kUpper[letter - 0x80] : letter;
  SDL_Surface* glyph =
      code < 32 ? nullptr : TTF_RenderGlyph32_Shaded(face.font, code, {255, 255, 255, 255}, {0, 0, 0, 255});
  if (glyph == nullptr) return;
  cell.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 0);
  // Wider letters than the cell are made narrower; others stand in its middle.
  const int shown = std::min(glyph->w, width);
  const int left = (width - shown) / 2;
  const int top = (height - glyph->h) / 2;
  for (int y = 0; y < glyph->h; ++y) {
    if (top + y < 0 || top + y >= height) continue;
    const auto* line = static_cast<const uint8_t*>(glyph->pixels) + y * glyph->pitch;
    for (int x = 0; x < shown; ++x) {
      cell[static_cast<size_t>(top + y) * static_cast<size_t>(width) + static_cast<size_t>(left + x)] =
          line[x * glyph->w / shown];
    }
  }
  SDL_FreeSurface(glyph);
}

}  // namespace korvel::window
