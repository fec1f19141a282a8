// Writes what a game shows and lets be heard as a frame for the window.
#pragma once

#include "engine/language/Fixed.h"
#include "engine/scene/PixelStore.h"

namespace korvel {

class Session;

class Recorder {
 public:
  Recorder(Arena& arena, wire::Shared* shared) : pixels_(arena, shared), order_(arena) {}

  /// Fills a frame; what does not fit is left out.
  void Write(Session& session, wire::Frame* frame, uint64_t sequence);

  const PixelStore& pixels() const { return pixels_; }

 private:
  /// Something that has a layer, and which one of its kind it is.
  struct Layered {
    Fixed layer;
    uint32_t number;
    const KorvelHead* object;
  };

  template <class T>
  T* Add(wire::Kind kind, size_t more_bytes = 0);
  void AddSounds(Session& session);
  void AddViews(Session& session);
  void AddBody(const Entity& entity);
  void AddOverlays(Session& session);
  void AddScreenEntity(Session& session, const Entity& entity);
  void AddPanel(const Panel& panel);
  void AddText(const Text& text);
  void AddLine(const wire::Text& line, std::string_view face, std::string_view text);
  void AddMarks(Session& session);
  void AddDebug(Session& session);
  void Collect(const List<KorvelHead*>& objects);
  void Sort();
  wire::View ViewOf(Session& session, const View& view) const;

  PixelStore pixels_;
  List<Layered> order_;
  char* begin_ = nullptr;
  uint32_t used_ = 0;
  uint64_t sequence_ = 0;
};

}  // namespace korvel
