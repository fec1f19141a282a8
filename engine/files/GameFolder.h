// The files of a game. Names ignore the case of A to Z, and "\" is "/".
#pragma once

#include "engine/language/Preprocessor.h"

namespace korvel {

inline constexpr size_t kLongestPath = 1200;

/// Descriptors that a session holds. They outlive it when it is ended by force, until the next one closes
/// them.
struct OpenDescriptors {
  static constexpr int kMost = 36;
  int numbers[kMost];
  int count;
};

/// One file that a script reads or writes.
struct GameFile {
  int32_t handle = 0;  ///< 0 when the place is free
  int descriptor = -1;
  bool writes = false;
  bool at_end = false;
  uint32_t begin = 0, end = 0;  ///< what of the buffer is still to be read
  char buffer[4096];
};

class GameFolder : public ScriptFiles, public ErrorSink {
 public:
  GameFolder(Arena& arena, OpenDescriptors& descriptors);

  /// Takes the folder of the main script, and reads the script. Null when it is missing or too large.
  const SourceFile* OpenMain(std::string_view path, bool* too_large);

  const SourceFile* OpenScript(std::string_view name, const char* folder, bool* too_large) override;
  void AddPath(std::string_view folder) override;

  /// The path of a picture, sound or level: in `folder`, beside the main script, then in the path folders.
  bool FindMedia(std::string_view name, const char* folder, char (&path)[kLongestPath]);

  /// A whole file in memory of the arena, empty when it cannot be read; GiveBack takes the memory.
  std::string_view ReadWhole(const char* path, Arena& arena);
  void GiveBack(std::string_view bytes, Arena& arena);
  size_t ReadBegin(const char* path, char* to, size_t size);

  // What commands may touch: files in the main script's folder or below it, by links neither.
  enum class Access { kRead, kWrite, kAppend };
  /// A handle from 1, or 0.
  int32_t Open(std::string_view name, Access access);
  void Close(int32_t handle);
  GameFile* Find(int32_t handle);
  /// The next byte, -1 at the end; Peek leaves it there.
  int Peek(GameFile& file);
  int Next(GameFile& file);
  bool Write(GameFile& file, std::string_view bytes);
  bool Exists(std::string_view name);
  bool Remove(std::string_view name);

  /// Removes the error list of an earlier run.
  void RemoveErrorFile();
  void TakeEntry(std::string_view entry) override;

  const char* folder() const { return folder_; }

 private:
  struct Split;
  bool FindIn(std::string_view base, std::string_view name, char (&path)[kLongestPath]);
  const SourceFile* ReadScript(const char* path, bool* too_large);
  int OpenInside(std::string_view name, Access access, bool* is_file);
  int OpenParent(std::string_view name, char (&last)[256]);
  void Keep(int descriptor);
  void CloseKept(int descriptor);

  Arena& arena_;
  OpenDescriptors& descriptors_;
  const char* folder_ = "";  ///< of the main script, with a separator at its end, or empty
  List<const char*> paths_;
  uint32_t source_count_ = 0;
  size_t source_bytes_ = 0;
  uint32_t entries_ = 0;
  int32_t next_handle_ = 1;
  GameFile* files_;
};

}  // namespace korvel
