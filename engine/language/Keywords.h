// The words with a meaning of their own.
#pragma once

#include <cstdint>
#include <string_view>

namespace korvel {

// Word as written, and its name here.
// clang-format off
#define KORVEL_KEYWORDS(X) \
  X("action", kAction) \
  X("bmap", kBmap) \
  X("break", kBreak) \
  X("case", kCase) \
  X("continue", kContinue) \
  X("default", kDefault) \
  X("define", kDefine) \
  X("do", kDo) \
  X("else", kElse) \
  X("endif", kEndif) \
  X("entity", kEntity) \
  X("false", kFalse) \
  X("font", kFont) \
  X("for", kFor) \
  X("function", kFunction) \
  X("goto", kGoto) \
  X("if", kIf) \
  X("ifdef", kIfdef) \
  X("ifndef", kIfndef) \
  X("include", kInclude) \
  X("material", kMaterial) \
  X("me", kMe) \
  X("null", kNull) \
  X("panel", kPanel) \
  X("path", kPath) \
  X("return", kReturn) \
  X("sizeof", kSizeof) \
  X("skill", kSkill) \
  X("sky", kSky) \
  X("sound", kSound) \
  X("starter", kStarter) \
  X("string", kString) \
  X("switch", kSwitch) \
  X("text", kText) \
  X("true", kTrue) \
  X("undef", kUndef) \
  X("var", kVar) \
  X("var_info", kVarInfo) \
  X("var_nsave", kVarNsave) \
  X("view", kView) \
  X("while", kWhile) \
  X("window", kWindow) \
  X("you", kYou)
// clang-format on

enum class Keyword : uint8_t {
  kNone,
#define KORVEL_ONE(text, name) name,
  KORVEL_KEYWORDS(KORVEL_ONE)
#undef KORVEL_ONE
};

struct KeywordText {
  std::string_view text;
  Keyword keyword;
};

inline constexpr KeywordText kKeywords[] = {
#define KORVEL_ONE(text, name) {text, Keyword::name},
    KORVEL_KEYWORDS(KORVEL_ONE)
#undef KORVEL_ONE
};

}  // namespace korvel
