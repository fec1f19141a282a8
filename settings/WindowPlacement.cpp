#include "settings/WindowPlacement.h"

#include "settings/SettingsBytes.h"

namespace quill {

std::string WindowPlacement::ToBytes() const {
  std::string bytes;
  for (const uint32_t field :
       {static_cast<uint32_t>(kBytes), flags, showState, static_cast<uint32_t>(minimisedX),
        static_cast<uint32_t>(minimisedY), static_cast<uint32_t>(maximisedX),
        static_cast<uint32_t>(maximisedY), static_cast<uint32_t>(left), static_cast<uint32_t>(top),
        static_cast<uint32_t>(right), static_cast<uint32_t>(bottom)}) {
    bytes += settings_bytes::FromUint32(field);
  }
  return bytes;
}

std::optional<WindowPlacement> WindowPlacement::FromBytes(std::string_view bytes) {
  if (bytes.size() != kBytes) return std::nullopt;
  const auto field = [&](size_t index) {
    return settings_bytes::ToUint32(bytes.substr(index * 4, 4)).value_or(0);
  };
  if (field(0) != kBytes) return std::nullopt;
  const auto number = [&](size_t index) { return static_cast<int32_t>(field(index)); };
  return WindowPlacement{field(1),  field(2),  number(3), number(4), number(5),
                         number(6), number(7), number(8), number(9), number(10)};
}

}  // namespace quill
