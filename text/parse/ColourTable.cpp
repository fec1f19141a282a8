#include "text/parse/ColourTable.h"

namespace quill {
namespace {

constexpr uint32_t kColourBits = 0x00FFFFFF;

}  // namespace

ColourTable::ColourTable(const DesktopColours& desktop) {
  for (const ColourSetting* setting : settings::kColours) {
    m_defaults[Slot(setting->index)] = setting->Fallback(desktop);
  }
  m_defaults[Slot(kColourBackground2)] = m_defaults[Slot(kColourBackground)];
  m_colours = m_defaults;
}

void ColourTable::Load(const ColourReader& reader, const DesktopColours& desktop) {
  *this = ColourTable(desktop);
  for (const ColourSetting* setting : settings::kColours) {
    const size_t slot = Slot(setting->index);
    m_colours[slot] = reader.colour(*setting, desktop) & kColourBits;
    m_bold[slot] = setting->bold != nullptr && reader.flag(*setting->bold);
    m_anyBold = m_anyBold || m_bold[slot];
  }
  m_colours[Slot(kColourBackground2)] = m_colours[Slot(kColourBackground)];
}

}  // namespace quill
