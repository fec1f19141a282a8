#include "engine/objects/Members.h"

namespace korvel {

MemberTable::MemberTable(Names& names) {
  for (auto& kind : index_) {
    for (int16_t& index : kind) index = -1;
  }
  for (const KorvelLayout& layout : korvel_layouts::kAll) {
    for (size_t i = 0; i < layout.count; ++i) {
      if (count_ == kMostRows) __builtin_trap();
      Name* name = names.Intern(layout.members[i].name);
      if (name->member < 0) {
        if (name_count_ == kMostNames) __builtin_trap();
        name->member = static_cast<int16_t>(name_count_);
        names_[name_count_++] = name->text;
      }
      rows_[count_] = &layout.members[i];
      index_[layout.kind][name->member] = static_cast<int16_t>(count_++);
    }
  }
}

int MemberTable::Find(int kind, int name_number) const {
  if (kind == kKorvelScreenEntity) kind = kKorvelEntity;
  if (kind < 0 || kind >= kKinds || name_number < 0) return -1;
  return index_[kind][name_number];
}

}  // namespace korvel
