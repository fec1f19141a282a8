// The members of objects by the words that name them, from the layouts that the host knows, too.
#pragma once

#include "engine/korvel.h"
#include "engine/language/Names.h"

namespace korvel {

class MemberTable {
 public:
  /// Gives each word that names a member its number.
  explicit MemberTable(Names& names);

  /// The index of a kind's member by the number of its name, or -1.
  int Find(int kind, int name_number) const;

  const KorvelMember& row(int index) const { return *rows_[index]; }
  int count() const { return count_; }
  int name_count() const { return name_count_; }
  const char* name(int number) const { return names_[number]; }

 private:
  static constexpr int kMostRows = 160;
  static constexpr int kMostNames = 100;
  static constexpr int kKinds = 25;

  const KorvelMember* rows_[kMostRows] = {};
  const char* names_[kMostNames] = {};
  int16_t index_[kKinds][kMostNames];
  int count_ = 0;
  int name_count_ = 0;
};

}  // namespace korvel
