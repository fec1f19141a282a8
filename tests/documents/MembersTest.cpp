// What the manual's tables say of members is what the engine does with them.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "support/Paths.h"
#include "tests/engine/TestHost.h"

namespace documents {
namespace {

/// A row "| `a`, `b` | meaning | 0 to 100 | 50 |" of the table of a kind.
struct Row {
  std::string kind;
  std::vector<std::string> members;
  std::string range;
  std::string usual;
};

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream parts(line.substr(1));
  for (std::string cell; std::getline(parts, cell, '|');) {
    const size_t first = cell.find_first_not_of(' ');
    cells.push_back(first == std::string::npos ? ""
                                               : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
  }
  return cells;
}

std::vector<std::string> CodeIn(const std::string& cell) {
  std::vector<std::string> words;
  for (size_t at = cell.find('`'); at != std::string::npos;) {
    const size_t end = cell.find('`', at + 1);
    words.push_back(cell.substr(at + 1, end - at - 1));
    at = cell.find('`', end + 1);
  }
  return words;
}

/// Rows of members that scripts can write.
std::vector<Row> WritableMembers() {
  std::ifstream page(std::string(QUILL_SOURCE_DIR) + "/docs/manual/members.md");
  std::vector<Row> rows;
  std::string kind;
  for (std::string line; std::getline(page, line);) {
    if (!line.starts_with("|")) kind.clear();
    if (!line.starts_with("| `")) continue;
    const std::vector<std::string> cells = Cells(line);
    const std::vector<std::string> words = CodeIn(cells[0]);
    if (words.size() == 1 && words[0].ends_with('.')) {
      kind = cells.size() == 4 ? words[0].substr(0, words[0].size() - 1) : "";
    } else if (!kind.empty() && !cells[2].empty() && cells[1].find("only read") == std::string::npos &&
               !cells[1].starts_with("in a definition")) {
      rows.push_back({kind, words, cells[2], cells[3]});
    }
  }
  return rows;
}

std::string Three(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.3f", number);
  return text;
}

double NumberIn(std::string text) {
  std::erase(text, ',');
  return std::stod(text);
}

TEST(MembersPage, TellsUsualValuesAndRanges) {
  const std::vector<Row> rows = WritableMembers();
  EXPECT_GE(rows.size(), 35u);
  for (const Row& row : rows) {
    for (const std::string& member : row.members) {
      const std::string name = "thing." + member;
      korvel::GameInFolder game;
      std::istringstream lines(game.Run(row.kind + " thing { }\nfunction main() {\nprint_num(\"\", " + name +
                                            ");\n" + name + " = -2000000; print_num(\"\", " + name + ");\n" +
                                            name + " = 2000000; print_num(\"\", " + name + "); }\n",
                                        2));
      std::string usual, low, high;
      std::getline(lines, usual) && std::getline(lines, low) && std::getline(lines, high);
      const std::string place = row.kind + "." + member;
      EXPECT_EQ(game.Errors(), "") << place;
      if (std::isdigit(static_cast<unsigned char>(row.usual[0]))) {
        EXPECT_EQ(usual, ": " + Three(NumberIn(row.usual.substr(0, row.usual.find(", "))))) << place;
      }
      const size_t to = row.range.find(" to ");
      const bool any = row.range == "any";
      ASSERT_TRUE(any || to != std::string::npos) << place << ": " << row.range;
      EXPECT_EQ(low, ": " + Three(any ? -2000000 : NumberIn(row.range.substr(0, to)))) << place;
      EXPECT_EQ(high, ": " + Three(any ? 2000000 : NumberIn(row.range.substr(to + 4)))) << place;
    }
  }
}

}  // namespace
}  // namespace documents
