#include "engine/language/Names.h"

namespace korvel {
namespace {

uint32_t HashOf(std::string_view text) {
  uint32_t hash = 2166136261u;
  for (char c : text) hash = (hash ^ static_cast<uint8_t>(LowerOf(c))) * 16777619u;
  return hash ^ (hash >> 15);
}

}  // namespace

bool SameWord(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (LowerOf(a[i]) != LowerOf(b[i])) return false;
  }
  return true;
}

char* CopyText(Arena& arena, std::string_view text) {
  char* copy = static_cast<char*>(arena.Allocate(text.size() + 1));
  if (!text.empty()) std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = 0;
  return copy;
}

Names::Names(Arena& arena) : arena_(arena), buckets_(arena) {
  buckets_.Resize(4096);
  for (const KeywordText& word : kKeywords) Intern(word.text)->keyword = word.keyword;
}

Name* Names::Find(std::string_view text) const {
  const uint32_t hash = HashOf(text);
  for (Name* name = buckets_[hash & (buckets_.size() - 1)]; name != nullptr; name = name->next) {
    if (name->hash == hash && SameWord(name->view(), text)) return name;
  }
  return nullptr;
}

Name* Names::Intern(std::string_view text) {
  if (Name* known = Find(text)) return known;
  if (count_ >= buckets_.size() * 2) Grow();
  Name* name = arena_.New<Name>();
  name->text = CopyText(arena_, text);
  name->length = static_cast<uint32_t>(text.size());
  name->hash = HashOf(text);
  name->command = -1;
  name->member = -1;
  Name*& first = buckets_[name->hash & (buckets_.size() - 1)];
  name->next = first;
  first = name;
  ++count_;
  return name;
}

void Names::Grow() {
  List<Name*> larger(arena_);
  larger.Resize(buckets_.size() * 4);
  for (uint32_t i = 0; i < buckets_.size(); ++i) {
    for (Name* name = buckets_[i]; name != nullptr;) {
      Name* next = name->next;
      Name*& first = larger[name->hash & (larger.size() - 1)];
      name->next = first;
      first = name;
      name = next;
    }
  }
  buckets_ = larger;
}

}  // namespace korvel
