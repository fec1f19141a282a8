// Draws what a session shows into memory, without a display.
#pragma once

#include <sys/mman.h>

#include "engine/show/Recorder.h"
#include "engine/window/Painter.h"
#include "tests/engine/TestHost.h"

namespace korvel {

/// Memory as the engine shares it with its window.
class SharedMemory {
 public:
  SharedMemory()
      : memory_(mmap(nullptr, wire::kAllBytes, PROT_READ | PROT_WRITE,
                     MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
  ~SharedMemory() { munmap(memory_, wire::kAllBytes); }
  SharedMemory(const SharedMemory&) = delete;
  wire::Shared* get() const { return static_cast<wire::Shared*>(memory_); }

 private:
  void* memory_;
};

/// The picture of a game after some frames.
class Drawing {
 public:
  explicit Drawing(GameInFolder& game, const std::string& script, int frames = 3,
                   const std::string& errors = {}) {
    Session& session = game.Open(script);
    session.machine.budget = 50'000'000;
    for (int i = 0; i < frames && session.Frame(); ++i) {
    }
    recorder_ = session.arena.New<Recorder>(session.arena, memory_.get());
    Draw(session);
    EXPECT_EQ(game.Errors(), errors);
    session_ = &session;
  }

  void Draw(Session& session) {
    recorder_->Write(session, writer_.Begin(memory_.get()), ++sequence_);
    writer_.Publish(memory_.get());
    EXPECT_TRUE(reader_.Take(memory_.get()));
    painter_.Paint(*reader_.frame(memory_.get()), memory_.get());
  }

  /// RRGGBB.
  std::string At(int x, int y) const {
    char text[16];
    std::snprintf(text, sizeof text, "%06x", painter_.canvas().pixel(x, y));
    return text;
  }
  int Red(int x, int y) const { return painter_.canvas().pixel(x, y) >> 16; }
  int Green(int x, int y) const { return painter_.canvas().pixel(x, y) >> 8 & 255; }
  int Blue(int x, int y) const { return painter_.canvas().pixel(x, y) & 255; }

  /// The smallest rectangle around all pixels that are not of this color: left, top, right and bottom, all
  /// inside.
  std::vector<int> Around(const std::string& color) const {
    const Canvas& canvas = painter_.canvas();
    std::vector<int> around{canvas.width(), canvas.height(), -1, -1};
    for (int y = 0; y < canvas.height(); ++y) {
      for (int x = 0; x < canvas.width(); ++x) {
        if (At(x, y) == color) continue;
        around = {std::min(around[0], x), std::min(around[1], y), std::max(around[2], x),
                  std::max(around[3], y)};
      }
    }
    return around;
  }

  Session& session() { return *session_; }

 private:
  using Canvas = window::Canvas;
  SharedMemory memory_;
  wire::Writer writer_;
  wire::Reader reader_;
  Recorder* recorder_ = nullptr;
  window::Painter painter_;
  uint64_t sequence_ = 0;
  Session* session_ = nullptr;
};

/// A bitmap file of 24 bits; `rows` has a letter a pixel: r, g, b, w (white), k (black).
inline std::string PictureFile(const std::vector<std::string>& rows) {
  const auto number = [](uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
    return text;
  };
  std::string pixels;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    std::string line;
    for (const char c : *row) {
      line += c == 'b' || c == 'w' ? '\xff' : '\0';
      line += c == 'g' || c == 'w' ? '\xff' : '\0';
      line += c == 'r' || c == 'w' ? '\xff' : '\0';
    }
    while (line.size() % 4 != 0) line += '\0';
    pixels += line;
  }
  return "BM" + number(54 + static_cast<uint32_t>(pixels.size()), 4) + number(0, 4) + number(54, 4) +
         number(40, 4) + number(static_cast<uint32_t>(rows[0].size()), 4) +
         number(static_cast<uint32_t>(rows.size()), 4) + number(1, 2) + number(24, 2) +
         std::string(24, '\0') + pixels;
}

}  // namespace korvel
