// What is wrong with a script, or went wrong in it: one sentence a place.
#pragma once

#include <cstdarg>
#include <string_view>

#include "engine/memory/Arena.h"

namespace korvel {

/// A file of the script and its text.
struct SourceFile {
  const char* name;    ///< without its folder, ends with a zero byte
  const char* folder;  ///< with a separator at its end, or empty
  std::string_view text;
  uint32_t index;
};

/// A line of a file; a null file is no place.
struct Place {
  const SourceFile* file = nullptr;
  uint32_t line = 0;
};

/// Who takes finished entries, without a line end.
class ErrorSink {
 public:
  virtual void TakeEntry(std::string_view place_and_sentence) = 0;

 protected:
  ~ErrorSink() = default;
};

/// Collects the errors of reading a script, then those of running it. The same sentence at the same place
/// counts once.
class Errors {
 public:
  Errors(Arena& arena, ErrorSink& sink) : seen_(arena), sink_(sink) {}

  static constexpr uint32_t kMostErrors = 100;

  /// Adds an error of reading, with printf's formats. After kMostErrors the rest is counted only.
  void Add(Place place, const char* format, ...) __attribute__((format(printf, 3, 4)));

  /// Adds a fault of the running script. After a thousand of them the rest is dropped.
  void Fault(Place place, std::string_view sentence);

  uint32_t count() const { return count_; }

 private:
  bool IsNew(Place place, std::string_view sentence);
  void Write(Place place, std::string_view sentence);

  struct Seen {
    uint64_t hash;
    uint32_t next;
  };
  List<Seen> seen_;
  uint32_t first_[256] = {};
  ErrorSink& sink_;
  uint32_t count_ = 0;
  uint32_t faults_ = 0;
};

}  // namespace korvel
