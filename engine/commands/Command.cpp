#include "engine/code/Command.h"

#include "engine/commands/Tables.h"

namespace korvel {

const CommandTable kCommandTables[] = {kControlCommands, kMathCommands,  kVectorCommands, kStringCommands,
                                       kTextCommands,    kPanelCommands, kEntityCommands, kViewCommands,
                                       kFileCommands,    kInputCommands, kDebugCommands,  kDrawCommands,
                                       kScreenCommands,  kSoundCommands, {nullptr, 0}};

uint32_t CommandCount() {
  uint32_t count = 0;
  for (const CommandTable* table = kCommandTables; table->rows != nullptr; ++table) count += table->count;
  return count;
}

const Command& CommandAt(uint32_t index) {
  const CommandTable* table = kCommandTables;
  while (index >= table->count) {
    index -= table->count;
    ++table;
  }
  return table->rows[index];
}

int LetterType(char letter) {
  switch (letter) {
    case 'n':
      return kTypeNumber;
    case 's':
    case 'S':
      return kKorvelString;
    case 'f':
      return kTypeFunction;
    case 'e':
      return kKorvelEntity;
    case 'b':
      return kKorvelBitmap;
    case 'p':
      return kKorvelPanel;
    case 't':
      return kKorvelText;
    case 'c':
      return kKorvelView;
    case 'k':
      return kKorvelSky;
    case 'w':
      return kKorvelWindow;
    case 'm':
      return kKorvelMaterial;
    case 'd':
      return kKorvelSound;
    case 'F':
      return kKorvelFont;
    case '-':
      return kTypeNothing;
    default:
      return kTypeAny;
  }
}

Signature ReadSignature(const char* text) {
  Signature signature{};
  if (*text == '*' || *text == '~') {
    signature.switches = true;
    signature.waits = *text == '~';
    ++text;
  }
  signature.result = static_cast<int8_t>(LetterType(*text));
  for (text += 2; *text != 0; ++text) {
    if (*text == '?') {
      signature.parameters[signature.count - 1].takes_null = true;
    } else {
      signature.parameters[signature.count++] = {*text, false};
    }
  }
  return signature;
}

}  // namespace korvel
