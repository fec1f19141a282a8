#include <gtest/gtest.h>

#include "intel/vocabulary/KeywordDatabase.h"
#include "intel/vocabulary/KeywordFile.h"
#include "intel/vocabulary/KeywordList.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

using Strings = std::vector<std::string>;

Strings EntriesOf(const std::string& bytes) {
  TempFolder folder;
  Strings entries;
  EXPECT_TRUE(
      ReadKeywordFile(folder.Write("words", bytes), [&](std::string e) { entries.push_back(std::move(e)); }));
  return entries;
}

TEST(KeywordFile, EveryPieceLosesItsLastCharacter) {
  const std::string x1022(1022, 'x'), x1023(1023, 'x');
  const struct {
    std::string bytes;
    Strings entries;
  } rows[] = {
      {"", {}},
      {"if\r\nelse\r\n", {"if", "else"}},
      {"if\nwhile", {"if", "whil"}},
      {"if\r\n\r\nfor\r\n", {"if", "", "for"}},
      {"go to\r\n tab\t\r\n", {"go to", " tab\t"}},
      {"a\rb\r\r\nc\r", {"a\rb\r", "c"}},
      {x1022 + "\r\nif\r\n", {x1022, "if"}},
      {x1023 + "\r\nif\r\n", {x1022, "", "if"}},
      {x1023 + "yz\r\n", {x1022, "yz"}},
  };
  for (const auto& row : rows) EXPECT_EQ(EntriesOf(row.bytes), row.entries) << row.bytes.substr(0, 20);
  // Longer than any buffer of the reader.
  EXPECT_EQ(EntriesOf(std::string(10 * 1023, 'x')), Strings(10, x1022));
}

class KeywordDatabaseTest : public testing::Test {
 protected:
  void Write(const std::string& script, const std::string& c) {
    m_folder.Write(kKeywordsFileName, script);
    m_folder.Write(kCKeywordsFileName, c);
  }
  DatabaseResult Load() { return m_database.LoadKeywordSets(m_folder.Path("")); }

  TempFolder m_folder;
  KeywordDatabase m_database;
};

TEST_F(KeywordDatabaseTest, TheDocumentsExtensionChoosesTheSet) {
  Write("if\r\nbmap\r\nElse\r\n", "if\r\nstruct\r\n");
  ASSERT_TRUE(Load());
  const struct {
    const char* path;
    bool isC;
  } rows[] = {{"a.c", true},        {"dir.vsl/b.h", true}, {"c", false},        {"a.hc", false},
              {"dir/test.H", true}, {".C", true},          {"a.fx", false},     {"a.vsl", false},
              {"readme", false},    {"", false},           {"a.c/main", false}, {"a.h.vsl", false},
              {"a.cpp", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(m_database.IsKeyword(row.path, "struct"), row.isC) << row.path;
    EXPECT_EQ(m_database.IsKeyword(row.path, "BMap"), !row.isC) << row.path;
    EXPECT_EQ(&m_database.SetFor(row.path) == &m_database.CKeywords(), row.isC) << row.path;
  }
  for (const char* word : {"if", "If", "IF"}) EXPECT_TRUE(m_database.IsKeyword("a.vsl", word));
  for (const char* word : {"else", "Else"}) EXPECT_FALSE(m_database.IsKeyword("a.vsl", word));
}

TEST_F(KeywordDatabaseTest, AReloadReplacesScriptKeywordsAndKeepsCKeywords) {
  Write("if\r\nwhile\r\n", "int\r\nfloat\r\n");
  ASSERT_TRUE(Load());
  Write("if\r\nskill\r\n", "int\r\ndouble\r\n");
  ASSERT_TRUE(Load());
  EXPECT_EQ(m_database.ScriptKeywords().Words(), (Strings{"if", "skill"}));
  EXPECT_EQ(m_database.CKeywords().Words(), (Strings{"int", "float", "double"}));
}

TEST_F(KeywordDatabaseTest, AMissingFileIsReportedInTheFixedWords) {
  m_folder.Write(kCKeywordsFileName, "int\r\n");
  EXPECT_EQ(Load().state, DatabaseResult::State::kMissing);
  EXPECT_EQ(m_database.CKeywords().Size(), 0u);
  std::filesystem::remove(m_folder.Path(kCKeywordsFileName));
  m_folder.Write(kKeywordsFileName, "if\r\n");
  const DatabaseResult result = Load();
  EXPECT_EQ(result.state, DatabaseResult::State::kMissing);
  EXPECT_EQ(result.message, "Keywords does not exist, please reinstall Vesper Editor");
  std::filesystem::create_directory(m_folder.Path(kCKeywordsFileName));
  EXPECT_EQ(Load().state, DatabaseResult::State::kUnreadable);
}

TEST(KeywordList, AddsInOrderEditsInPlaceAndWritesAsShown) {
  TempFolder folder;
  const std::string path = folder.Write(kKeywordsFileName, "while\r\nIf\r\nbmap\r\n");
  KeywordList list;
  ASSERT_TRUE(list.Load(path));
  EXPECT_EQ(list.Entries(), (Strings{"bmap", "If", "while"}));
  EXPECT_EQ(list.Add("IF"), std::nullopt);
  EXPECT_EQ(list.Add("Else"), 1u);
  EXPECT_EQ(list.Add(""), 0u);
  EXPECT_EQ(list.Edit(2, "zero"), 2u);
  EXPECT_EQ(list.Edit(std::nullopt, "zero"), 5u);
  list.Remove(std::nullopt);
  list.Remove(0);
  EXPECT_THROW(list.Remove(5), std::invalid_argument);
  ASSERT_TRUE(list.Save(path));
  EXPECT_EQ(folder.Read(kKeywordsFileName), "bmap\r\nzero\r\nIf\r\nwhile\r\nzero\r\n");
}

}  // namespace
}  // namespace quill
