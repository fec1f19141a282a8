#include "settings/SqliteSettingsStore.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <latch>
#include <memory>
#include <thread>

#include "settings/MemorySettingsStore.h"
#include "settings/Settings.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

using namespace std::string_literals;

/// First column of every row of a query on a file, by a connection of its own.
std::vector<std::string> Query(const std::string& path, const char* sql) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  std::vector<std::string> rows;
  const auto add = [](void* target, int, char** columns, char**) {
    static_cast<std::vector<std::string>*>(target)->emplace_back(columns[0] == nullptr ? "NULL" : columns[0]);
    return 0;
  };
  char* error = nullptr;
  if (sqlite3_exec(db, sql, add, &rows, &error) != SQLITE_OK) rows.emplace_back(error);
  sqlite3_free(error);
  sqlite3_close(db);
  return rows;
}

class SqliteSettingsStoreTest : public ::testing::Test {
 protected:
  TempFolder m_folder;
  std::string m_path = m_folder.Path("new/quill/settings.db");
};

TEST_F(SqliteSettingsStoreTest, TheFileHoldsKeyNameTypeAndBytes) {
  SqliteSettingsStore store(m_path);
  WriteFlag(store, settings::kAutoIndent, true);
  WriteText(store, settings::kLanguage, "French");
  AppProfile(store).WriteInteger("Quill\\Find", "WholeWord", 1);
  const std::string user = "HKEY_CURRENT_USER\\Software\\Quill\\";
  EXPECT_EQ(Query(m_path,
                  "SELECT path||'|'||name||'|'||type||'|'||typeof(bytes)||'|'||hex(bytes) FROM registry "
                  "ORDER BY name"),
            (std::vector<std::string>{user + "Settings|AutoIndent|3|blob|01000000",
                                      user + "Settings|Language|1|blob|4672656E636800",
                                      user + "Vesper Editor\\Quill\\Find|WholeWord|4|blob|01000000"}));
  EXPECT_EQ(std::filesystem::status(m_folder.Path("new/quill")).permissions(),
            std::filesystem::perms::owner_all);
}

TEST(SettingsStores, BehaveAlike) {
  TempFolder folder;
  std::unique_ptr<SettingsStore> stores[] = {std::make_unique<MemorySettingsStore>(),
                                             std::make_unique<SqliteSettingsStore>(folder.Path("s.db"))};
  const std::string odd = "R\\\xFF\xC4 'odd\" %?";
  for (const auto& store : stores) {
    EXPECT_FALSE(store->KeyExists("R"));
    EXPECT_TRUE(store->Write(odd, "n\xE4me", RegistryType::kExpandString, "\0\xFF"s));
    EXPECT_TRUE(store->Write(odd, "", RegistryType::kBinary, ""));
    EXPECT_TRUE(store->Write(odd, "", RegistryType::kBinary, {})) << "written twice, there once";
    EXPECT_EQ(store->Read(odd, "n\xE4me"), (SettingsValue{RegistryType::kExpandString, "\0\xFF"s}));
    EXPECT_EQ(store->Read(odd, ""), (SettingsValue{RegistryType::kBinary, ""}));
    EXPECT_EQ(store->Read(odd, "N\xC4ME"), std::nullopt);
    EXPECT_TRUE(store->CreateKey("R\\a\\b\\c"));
    EXPECT_TRUE(store->CreateKey("R2\\x"));
    EXPECT_EQ(store->SubKeys("R"), (std::vector<std::string>{"a", odd.substr(2)}));
    EXPECT_TRUE(store->KeyExists("R\\a\\b"));

    std::string seen;
    store->ForEachValue(odd, [&](std::string_view name, RegistryType type, std::string_view bytes) {
      seen += std::string(name) + ":" + std::to_string(static_cast<int>(type)) + ":" +
              std::to_string(bytes.size()) + " ";
    });
    EXPECT_EQ(seen, ":3:0 n\xE4me:2:2 ");
    EXPECT_TRUE(store->Delete(odd, ""));
    EXPECT_FALSE(store->Delete(odd, ""));
    EXPECT_FALSE(store->Delete("missing", "x"));
    EXPECT_TRUE(store->Flush());
  }
}

TEST(SettingsStores, ATransactionIsStoredAsAWholeOrNotAtAll) {
  TempFolder folder;
  std::unique_ptr<SettingsStore> stores[] = {std::make_unique<MemorySettingsStore>(),
                                             std::make_unique<SqliteSettingsStore>(folder.Path("s.db"))};
  for (const auto& store : stores) {
    WriteInt(*store, settings::kTabSize, 4);
    {
      SettingsTransaction outer(*store);
      WriteInt(*store, settings::kTabSize, 5);
      {
        SettingsTransaction inner(*store);
        WriteInt(*store, settings::kFontSize, 20);
        EXPECT_EQ(ReadInt(*store, settings::kFontSize), 20) << "own writes are seen at once";
      }
      EXPECT_FALSE(outer.Commit()) << "the nested one was given up";
    }
    EXPECT_EQ(ReadInt(*store, settings::kTabSize), 4);
    EXPECT_EQ(ReadInt(*store, settings::kFontSize), 12);
    SettingsTransaction last(*store);
    store->Delete("missing", "x");
    WriteInt(*store, settings::kTabSize, 6);
    EXPECT_TRUE(last.Commit()) << "a value that was not there to delete is no failure";
    EXPECT_EQ(ReadInt(*store, settings::kTabSize), 6);
  }
}

TEST_F(SqliteSettingsStoreTest, AnotherCopysWriteIsSeenByTheNextRead) {
  SqliteSettingsStore here(m_path);
  SqliteSettingsStore there(m_path);
  for (int size : {5, 6, 7}) {
    WriteInt(here, settings::kTabSize, size);
    EXPECT_EQ(ReadInt(there, settings::kTabSize), size);
    WriteInt(there, settings::kFontSize, size);
    EXPECT_EQ(ReadInt(here, settings::kFontSize), size);
  }
  there.Delete("HKEY_CURRENT_USER\\Software\\Quill\\Settings", "TabSize");
  EXPECT_EQ(ReadInt(here, settings::kTabSize), 3);
}

#ifndef NDEBUG
TEST_F(SqliteSettingsStoreTest, IsNotUsedByAThreadThatDidNotMakeIt) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        SqliteSettingsStore store(m_path);
        std::thread([&] { AppProfile(store).WriteInteger("S", "n", 1); }).join();
      },
      "only for its maker's thread");
}
#endif

TEST_F(SqliteSettingsStoreTest, CopiesThatCreateAndWriteAtOnceLoseNothing) {
  constexpr int kCopies = 4;
  constexpr int kWrites = 100;
  std::latch start(kCopies);
  std::vector<std::thread> copies;
  copies.reserve(kCopies);
  std::atomic<int> failures = 0;
  for (int copy = 0; copy < kCopies; ++copy) {
    copies.emplace_back([&, copy] {
      start.arrive_and_wait();
      SqliteSettingsStore store(m_path);
      AppProfile profile(store);
      for (int i = 0; i < kWrites; ++i) {
        failures += !profile.WriteInteger("S", std::to_string(copy * kWrites + i), i);
        SettingsTransaction transaction(store);
        profile.WriteInteger("Sum", "n", profile.ReadInteger("Sum", "n", 0) + 1);
        failures += !transaction.Commit();
      }
    });
  }
  for (std::thread& copy : copies) copy.join();
  EXPECT_EQ(failures, 0);
  SqliteSettingsStore store(m_path);
  EXPECT_EQ(AppProfile(store).ReadInteger("Sum", "n", 0), kCopies * kWrites);
  EXPECT_EQ(Query(m_path, "SELECT count(*) FROM registry"), (std::vector<std::string>{"401"}));
}

TEST_F(SqliteSettingsStoreTest, ADamagedFileIsSetAsideAndReportedOnce) {
  { WriteInt(*std::make_unique<SqliteSettingsStore>(m_path), settings::kTabSize, 9); }
  const std::string healthy = m_folder.Read("new/quill/settings.db");
  const struct {
    const char* what;
    std::string bytes;
  } rows[] = {
      {"no database", "These are not the bytes that you are looking for."},
      {"zeros", std::string(8192, '\0')},
      {"cut in the middle", healthy.substr(0, healthy.size() / 2)},
      {"overwritten pages", healthy.substr(0, 4096) + std::string(healthy.size() - 4096, '\x5A')},
      {"overwritten schema", healthy.substr(0, 100) + std::string(3996, '\x5A') + healthy.substr(4096)},
  };
  int asides = 0;
  for (const auto& row : rows) {
    m_folder.Write("new/quill/settings.db", row.bytes);
    SqliteSettingsStore store(m_path);
    const std::string aside =
        "new/quill/settings.db.damaged" + (++asides == 1 ? "" : "-" + std::to_string(asides));
    EXPECT_NE(store.TakeMessage().find(m_folder.Path(aside)), std::string::npos) << row.what;
    EXPECT_EQ(store.TakeMessage(), "") << row.what;
    EXPECT_EQ(m_folder.Read(aside), row.bytes) << row.what;
    EXPECT_EQ(ReadInt(store, settings::kTabSize), 3) << row.what;
    EXPECT_TRUE(WriteInt(store, settings::kTabSize, 8)) << row.what;
    EXPECT_EQ(ReadInt(store, settings::kTabSize), 8) << row.what;
  }
}

TEST_F(SqliteSettingsStoreTest, SomebodyElsesDatabaseIsSetAsideToo) {
  const std::string path = m_folder.Path("other.db");
  Query(path, "CREATE TABLE entries(a, b); CREATE TABLE keys(z)");
  SqliteSettingsStore store(path);
  EXPECT_NE(store.TakeMessage(), "");
  EXPECT_TRUE(WriteInt(store, settings::kTabSize, 8));
}

TEST_F(SqliteSettingsStoreTest, DamageThatTwoRunningCopiesMeetIsHandledByOne) {
  {
    SqliteSettingsStore store(m_path);
    for (int i = 0; i < 10; ++i) {  // too large to be checked as a whole when opened
      store.Write("S", std::to_string(i), RegistryType::kBinary, std::string(600'000, 'x'));
    }
  }
  std::string bytes = m_folder.Read("new/quill/settings.db");
  std::fill(bytes.begin() + 4096, bytes.end(), '\x5A');
  m_folder.Write("new/quill/settings.db", bytes);

  SqliteSettingsStore first(m_path);
  SqliteSettingsStore second(m_path);
  EXPECT_EQ(first.TakeMessage() + second.TakeMessage(), "");
  EXPECT_EQ(ReadInt(first, settings::kTabSize), 3);
  EXPECT_NE(first.TakeMessage(), "");
  EXPECT_EQ(ReadInt(second, settings::kTabSize), 3);
  EXPECT_EQ(second.TakeMessage(), "");
  EXPECT_EQ(m_folder.Read("new/quill/settings.db.damaged"), bytes);
  EXPECT_FALSE(std::filesystem::exists(m_path + ".damaged-2"));
  WriteInt(first, settings::kTabSize, 7);
  EXPECT_EQ(ReadInt(second, settings::kTabSize), 7) << "both have the new file";
}

TEST_F(SqliteSettingsStoreTest, WritingGoesOnWhenTheFileIsRemovedMeanwhile) {
  SqliteSettingsStore store(m_path);
  WriteInt(store, settings::kTabSize, 9);
  std::filesystem::remove_all(m_folder.Path("new"));
  EXPECT_TRUE(WriteInt(store, settings::kFontSize, 10));
  EXPECT_EQ(ReadInt(store, settings::kTabSize), 3);
  EXPECT_EQ(SqliteSettingsStore(m_path).TakeMessage(), "");
  EXPECT_EQ(ReadInt(store, settings::kFontSize), 10);
}

TEST_F(SqliteSettingsStoreTest, AFileThatIsResetFromOutsideIsReadAnewAndWritten) {
  const auto removeFile = [this] { std::filesystem::remove_all(m_folder.Path("new/quill")); };
  const std::function<int()> resets[] = {
      [&] {
        Query(m_path, "DELETE FROM entries; DELETE FROM keys");
        return 3;
      },
      [&] {
        removeFile();
        return 3;
      },
      [&] {
        std::filesystem::remove(m_path);  // its log stays behind
        return 3;
      },
      [&] {
        removeFile();
        WriteInt(*std::make_unique<SqliteSettingsStore>(m_path), settings::kTabSize, 7);
        return 7;
      },
  };
  const std::string key = "HKEY_CURRENT_USER\\Software\\Quill\\Settings";
  for (size_t i = 0; i < std::size(resets); ++i) {
    SqliteSettingsStore store(m_path);
    ASSERT_TRUE(WriteInt(store, settings::kTabSize, 9));
    ASSERT_TRUE(WriteInt(store, settings::kFontSize, 20));
    EXPECT_EQ(ReadInt(store, settings::kTabSize), 9);
    const int expected = resets[i]();
    EXPECT_EQ(ReadInt(store, settings::kTabSize), expected) << i;
    EXPECT_EQ(ReadInt(store, settings::kFontSize), 12) << i;
    EXPECT_TRUE(WriteInt(store, settings::kFontSize, 11)) << i;
    EXPECT_EQ(ReadInt(store, settings::kTabSize), expected) << i;
    EXPECT_TRUE(store.KeyExists(key)) << i;
    EXPECT_EQ(store.TakeMessage(), "") << i;
    SqliteSettingsStore other(m_path);
    EXPECT_EQ(ReadInt(other, settings::kFontSize), 11) << i;
    EXPECT_EQ(ReadInt(other, settings::kTabSize), expected) << i;
  }
}

TEST_F(SqliteSettingsStoreTest, AFolderThatCannotBeMadeGivesDefaultsInSilence) {
  const std::string file = m_folder.Write("file", "x");
  for (const std::string& path : {file + "/quill/settings.db", m_folder.Path("."), ""s}) {
    SqliteSettingsStore store(path);
    EXPECT_EQ(ReadInt(store, settings::kTabSize), 3) << path;
    EXPECT_FALSE(WriteInt(store, settings::kTabSize, 5)) << path;
    EXPECT_EQ(store.SubKeys("HKEY_CURRENT_USER"), std::vector<std::string>()) << path;
    EXPECT_FALSE(store.Flush()) << path;
    EXPECT_EQ(store.TakeMessage(), "") << path;
  }
}

/// Holds the write lock of a settings file as a copy does that hangs in a transaction.
class HeldLock {
 public:
  explicit HeldLock(const std::string& path) {
    sqlite3_open(path.c_str(), &m_db);
    EXPECT_EQ(sqlite3_exec(m_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;
  ~HeldLock() { sqlite3_close(m_db); }

 private:
  sqlite3* m_db = nullptr;
};

constexpr char kDump[] = "SELECT path||'|'||name||'|'||hex(bytes) FROM registry ORDER BY path, name";

TEST_F(SqliteSettingsStoreTest, WhatIsWrittenWhileAnotherCopyHoldsTheLockIsReadAtOnceAndStoredLater) {
  SqliteSettingsStore store(m_path, std::chrono::seconds(2));
  store.Write("R\\a", "old", RegistryType::kBinary, "1");
  store.Write("R\\a", "gone", RegistryType::kBinary, "1");
  const auto before = Query(m_path, kDump);
  const auto contents = [&store] {
    std::string seen;
    for (const std::string& key : store.SubKeys("R")) {
      seen += key + ":";
      store.ForEachValue("R\\" + key, [&seen](std::string_view name, RegistryType, std::string_view bytes) {
        seen += " " + std::string(name) + "=" + std::string(bytes);
      });
      seen += "; ";
    }
    return seen;
  };
  {
    const HeldLock lock(m_path);
    for (int i = 0; i < 300; ++i) {  // only the first one waits, or the test would take ten minutes
      EXPECT_TRUE(store.Write("R\\a", "new", RegistryType::kBinary, std::to_string(i)));
    }
    EXPECT_TRUE(store.Write("R\\b\\c", "deep", RegistryType::kBinary, "1"));
    EXPECT_TRUE(store.CreateKey("R\\d"));
    EXPECT_TRUE(store.Delete("R\\a", "gone"));
    EXPECT_FALSE(store.Delete("R\\a", "gone"));
    EXPECT_FALSE(store.Write("R\\a", "huge", RegistryType::kBinary, std::string(17 << 20, 'x')));
    {
      SettingsTransaction given(store);
      store.Write("R\\a", "new", RegistryType::kBinary, "given up");
      store.Write("R\\a", "old", RegistryType::kBinary, "given up");
    }
    SettingsTransaction kept(store);
    store.Write("R\\a", "old", RegistryType::kBinary, "2");
    EXPECT_EQ(store.Read("R\\a", "old")->bytes, "2");
    EXPECT_TRUE(kept.Commit());
    EXPECT_EQ(contents(), "a: new=299 old=2; b:; d:; ");
    EXPECT_EQ(store.Read("R\\a", "gone"), std::nullopt);
    EXPECT_TRUE(store.KeyExists("R\\b") && store.KeyExists("R\\d"));
    EXPECT_FALSE(store.StoreKept());
    EXPECT_EQ(Query(m_path, kDump), before);
  }
  EXPECT_TRUE(store.StoreKept());
  const std::vector<std::string> after = {"R\\a|new|323939", "R\\a|old|32", "R\\b\\c|deep|31"};
  EXPECT_EQ(Query(m_path, kDump), after);
  EXPECT_EQ(contents(), "a: new=299 old=2; b:; d:; ");
}

TEST_F(SqliteSettingsStoreTest, WhatIsKeptGoesWithTheNextTransactionOrWithTheEndOfTheProgram) {
  auto store = std::make_unique<SqliteSettingsStore>(m_path, std::chrono::milliseconds(0));
  store->Write("R", "a", RegistryType::kBinary, "1");
  {
    const HeldLock lock(m_path);
    store->Write("R", "a", RegistryType::kBinary, "2");
    store->Write("R", "b", RegistryType::kBinary, "2");
  }
  {
    SettingsTransaction given(*store);
    store->Write("R", "c", RegistryType::kBinary, "3");
  }
  EXPECT_EQ(Query(m_path, kDump), (std::vector<std::string>{"R|a|31"}));
  EXPECT_EQ(store->Read("R", "b")->bytes, "2") << "that one was given up, not what was kept before";
  store->Write("R", "a", RegistryType::kBinary, "3");
  EXPECT_EQ(Query(m_path, kDump), (std::vector<std::string>{"R|a|33", "R|b|32"}));
  {
    const HeldLock lock(m_path);
    store->Write("R", "a", RegistryType::kBinary, "4");
  }
  store.reset();
  EXPECT_EQ(Query(m_path, kDump), (std::vector<std::string>{"R|a|34", "R|b|32"}));
}

TEST(SettingsFile, LiesInTheUsersConfigurationFolder) {
  using settings_file::DefaultPath;
  EXPECT_EQ(DefaultPath("/cfg", "/home/u"), "/cfg/quill/settings.db");
  for (const char* ignored : {static_cast<const char*>(nullptr), "", "relative"}) {
    EXPECT_EQ(DefaultPath(ignored, "/home/u"), "/home/u/.config/quill/settings.db");
  }
  EXPECT_EQ(DefaultPath("", nullptr), "");
}

}  // namespace
}  // namespace quill
