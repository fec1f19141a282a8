#include "text/parse/ColourTable.h"

namespace quill {
namespace {

constexpr ColourEntry kEntries[] = {
    {kColourBackground, "BackColor", 0, ColourRole::kSystemWindow},
    {kColourBackground2, "BackColor", 0, ColourRole::kSystemWindow},
    {kColourText, "PlainColor", 0x000000, ColourRole::kFixed},
    {kColourMarginText, "MarginTextColor", 0x000000, ColourRole::kFixed},
    {kColourFolding, "FuncFoldColor", 0x808080, ColourRole::kFixed},
    {kColourBrace, "BraceColor", 0x000000, ColourRole::kFixed},
    {kColourMargin, "MarginColor", 0, ColourRole::kSystemFace},
    {kColourSelectionBackground, "SelBackColor", 0xC56A31, ColourRole::kFixed},
    {kColourSelectionText, "SelForeColor", 0xFFFFFF, ColourRole::kFixed},
    {kColourIndentGuide, "IndentGuideColor", 0x808080, ColourRole::kFixed},
    {kColourKeyword, "KeywordColor", 0xFF0000, ColourRole::kFixed},
    {kColourCommand, "CommandColor", 0x000088, ColourRole::kFixed},
    {kColourFunction, "FunctionColor", 0x515151, ColourRole::kFixed},
    {kColourVariable, "VariableColor", 0x515151, ColourRole::kFixed},
    {kColourComment, "CommentColor", 0x008000, ColourRole::kFixed},
    {kColourNumber, "NumberColor", 0xA000A0, ColourRole::kFixed},
    {kColourUnused, nullptr, 0x000000, ColourRole::kFixed},
    {kColourString, "StringColor", 0x686868, ColourRole::kFixed},
    {kColourPreprocessor, "PreProcessorColor", 0xC08000, ColourRole::kFixed},
    {kColourCaretLine, "HighLightColor", 0x00FFFF, ColourRole::kFixed},
};

constexpr SyntaxClass kClasses[] = {
    {"Text", kColourText, "TextBold"},          {"Keyword", kColourKeyword, "KeywordBold"},
    {"Comment", kColourComment, "CommentBold"}, {"String", kColourString, "StringBold"},
    {"Number", kColourNumber, "NumberBold"},    {"Command", kColourCommand, "CommandBold"},
    {"Function", kColourFunction, "FuncBold"},  {"Variable", kColourVariable, "VarBold"},
};

constexpr uint32_t kColourBits = 0x00FFFFFF;

uint32_t DefaultOf(const ColourEntry& entry, const SystemColours& system) {
  switch (entry.role) {
    case ColourRole::kSystemWindow:
      return system.window;
    case ColourRole::kSystemFace:
      return system.face;
    case ColourRole::kFixed:
      break;
  }
  return entry.defaultColour;
}

}  // namespace

std::span<const ColourEntry> ColourEntries() {
  return kEntries;
}

std::span<const SyntaxClass> SyntaxClasses() {
  return kClasses;
}

ColourTable::ColourTable(const SystemColours& system) {
  for (const ColourEntry& entry : kEntries) m_defaults[Slot(entry.index)] = DefaultOf(entry, system);
  m_colours = m_defaults;
}

void ColourTable::Load(const ColourReader& reader, const SystemColours& system) {
  *this = ColourTable(system);
  for (const ColourEntry& entry : kEntries) {
    if (entry.valueName == nullptr) continue;
    uint32_t& colour = m_colours[Slot(entry.index)];
    colour = reader.colour(entry.valueName, colour) & kColourBits;
  }
  for (const SyntaxClass& syntaxClass : kClasses) {
    const bool bold = reader.flag(syntaxClass.boldValueName);
    m_bold[Slot(syntaxClass.index)] = bold;
    m_anyBold = m_anyBold || bold;
  }
}

}  // namespace quill
