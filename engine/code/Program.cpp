#include "engine/code/Program.h"

#include <algorithm>

namespace korvel {

const char* TypeName(int type) {
  switch (type) {
    case kTypeNumber:
      return "a number";
    case kTypeFunction:
      return "a function";
    case kTypeArray:
      return "an array";
    case kTypeNull:
      return "null";
    case kKorvelSound:
      return "a sound";
    case kKorvelBitmap:
      return "a bitmap";
    case kKorvelEntity:
    case kKorvelScreenEntity:
      return "an entity";
    case kKorvelPanel:
      return "a panel";
    case kKorvelText:
      return "a text object";
    case kKorvelFont:
      return "a font";
    case kKorvelView:
      return "a view";
    case kKorvelString:
      return "a string";
    case kKorvelMaterial:
      return "a material";
    case kKorvelSky:
      return "a sky";
    case kKorvelWindow:
      return "a window";
    case kTypeNothing:
      return "nothing";
    default:
      return "a value";
  }
}

Function* Program::FunctionAt(uint32_t pc) const {
  // Functions are compiled in their order, so their code lies in this order, too.
  auto* after = std::upper_bound(functions.begin(), functions.end(), pc,
                                 [](uint32_t at, const Function* function) { return at < function->entry; });
  return after == functions.begin() ? nullptr : after[-1];
}

}  // namespace korvel
