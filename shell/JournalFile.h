#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/IoResult.h"

namespace quill {

/// The bytes of an open file as memory; empty when they cannot be had.
class MappedBytes {
 public:
  explicit MappedBytes(int descriptor);
  MappedBytes(const MappedBytes&) = delete;
  MappedBytes& operator=(const MappedBytes&) = delete;
  ~MappedBytes();
  std::string_view View() const { return m_bytes; }

 private:
  std::string_view m_bytes;
};

/// A file of the recovery folder, locked as long as it is open: a lock that cannot be had means that a
/// running copy of the program works with the file. It is written under a temporary name and gets its
/// own in one step; a process that dies leaves what was written and no lock.
class JournalFile {
 public:
  /// A name not used so far, without extension.
  static std::string NewName();
  static std::string PathOf(const std::string& folder, const std::string& name);

  JournalFile() = default;
  JournalFile(JournalFile&& other) noexcept;
  JournalFile& operator=(JournalFile&& other) noexcept;
  /// Closes; an unpublished file goes away, a published one stays.
  ~JournalFile();

  /// Makes the folder when missing, for its owner only.
  IoResult Create(const std::string& folder, const std::string& name);
  /// Takes an existing journal that no running copy has; false otherwise.
  bool Adopt(const std::string& folder, const std::string& name);
  /// A failed write leaves the file as it was.
  IoResult Append(std::string_view bytes);
  /// Gives the file its name, over an earlier one of that name.
  IoResult Publish();
  /// Waits until the disk has all of it.
  IoResult Sync();
  /// The whole contents, without copying them into memory.
  MappedBytes Map() const { return MappedBytes(m_descriptor); }
  /// Closes and deletes the file and its kept base.
  void Remove();
  void Close();

  /// Makes a second link to a file, to be removed with this one, so that its contents stay whatever
  /// replaces the file; returns the link's file name, empty when the system cannot do it here.
  std::string KeepBase(const std::string& path);
  void DropBase();

  bool IsOpen() const { return m_descriptor >= 0; }
  uint64_t Size() const { return m_size; }
  /// Time of the last write.
  int64_t Time() const;
  const std::string& Folder() const { return m_folder; }
  const std::string& Name() const { return m_name; }

  /// Deletes what processes that died half-way left in a folder beside its journals, and returns the
  /// names of the journals.
  static std::vector<std::string> ListAndClean(const std::string& folder);

 private:
  std::string TemporaryPath() const;
  std::string BasePath() const;
  IoResult Fail(StringId what, int errorNumber);

  std::string m_folder;
  std::string m_name;
  int m_descriptor = -1;
  uint64_t m_size = 0;
  bool m_published = false;
};

}  // namespace quill
