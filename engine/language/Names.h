// The words of a script, each held once. What a word means is found by one look, whatever its case.
#pragma once

#include <string_view>

#include "engine/language/Keywords.h"
#include "engine/memory/Arena.h"

namespace korvel {

struct Macro;
struct Symbol;

/// One word. Words that differ only in the case of A to Z are the same.
struct Name {
  const char* text;  ///< as it was first written, ends with a zero byte
  uint32_t length;
  uint32_t hash;
  Keyword keyword;
  int16_t command;    ///< index in the list of commands, -1 when it is none
  int16_t member;     ///< number among the names of members, -1 when it is none
  Macro* macro;       ///< what the word stands for now, or null
  Macro* last_macro;  ///< what it stood for at any place
  Symbol* symbol;     ///< what is defined by this word, or null
  uint32_t local;     ///< stamp of the function in which it is a local, see the compiler
  uint32_t local_index;
  bool reported;  ///< an unknown name is complained about once
  Name* next;

  std::string_view view() const { return {text, length}; }
};

/// All words of a session.
class Names {
 public:
  explicit Names(Arena& arena);

  /// The word, made when it is new.
  Name* Intern(std::string_view text);

  /// The word, or null when nobody wrote it.
  Name* Find(std::string_view text) const;

  /// Calls with each word.
  template <class Do>
  void ForEach(Do&& act) const {
    for (uint32_t i = 0; i < buckets_.size(); ++i) {
      for (Name* name = buckets_[i]; name != nullptr; name = name->next) act(name);
    }
  }

 private:
  void Grow();

  Arena& arena_;
  List<Name*> buckets_;
  uint32_t count_ = 0;
};

constexpr char LowerOf(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
constexpr char UpperOf(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

/// True when two texts differ only in the case of A to Z.
bool SameWord(std::string_view a, std::string_view b);

/// A copy in the arena that ends with a zero byte.
char* CopyText(Arena& arena, std::string_view text);

}  // namespace korvel
