#include "engine/scene/Scene.h"

namespace korvel {

Mark* Marks::Add(Mark::Kind kind) {
  if (list_.size() >= kMost) return nullptr;
  Mark mark{};
  mark.kind = kind;
  mark.color = color;
  list_.Add(mark);
  return &list_.back();
}

bool Marks::AddText(Mark& mark, std::string_view text) {
  const uint32_t begin = characters_.size();
  const auto length = static_cast<uint32_t>(text.size());
  if (begin + length > kMostCharacters) return false;
  characters_.Resize(begin + length);
  if (length > 0) std::memcpy(characters_.data() + begin, text.data(), length);
  mark.text = begin;
  mark.length = length;
  return true;
}

}  // namespace korvel
