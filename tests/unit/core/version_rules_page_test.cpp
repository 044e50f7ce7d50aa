#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "core/default_update_policy.h"

namespace korvixsdk::test {
namespace {

constexpr std::size_t kFewestRows = 40;
constexpr char kTableHead[] = "| current | candidate | newer? | why |";

struct Row {
  int line = 0;
  std::string current;
  std::string candidate;
  std::string newer;
};

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::size_t begin = line.find('|');
  for (std::size_t end = 0; begin != std::string::npos; begin = end) {
    end = line.find('|', begin + 1);
    if (end == std::string::npos) break;
    std::string cell = line.substr(begin + 1, end - begin - 1);
    const std::size_t first = cell.find_first_not_of(' ');
    if (first == std::string::npos) {
      cells.emplace_back();
    } else {
      cells.push_back(cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
  }
  return cells;
}

/// The text between the backticks; "(empty)" stands for the empty text, which has no code form.
std::string VersionOf(const std::string& cell) {
  if (cell == "(empty)") return {};
  const bool is_code = cell.size() > 2 && cell.front() == '`' && cell.back() == '`';
  EXPECT_TRUE(is_code) << "not a version in backticks: " << cell;
  return is_code ? cell.substr(1, cell.size() - 2) : cell;
}

/// The rows of every table of the page that has the head above.
std::vector<Row> Rows() {
  std::ifstream page(KORVIXSDK_VERSIONS_PAGE, std::ios::binary);
  EXPECT_TRUE(page.is_open()) << KORVIXSDK_VERSIONS_PAGE;
  std::vector<Row> rows;
  std::string line;
  bool in_table = false;
  for (int number = 1; std::getline(page, line); ++number) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line == kTableHead) {
      in_table = true;
    } else if (line.empty() || line.front() != '|') {
      in_table = false;
    } else if (in_table && line.find("---") == std::string::npos) {
      const std::vector<std::string> cells = Cells(line);
      EXPECT_EQ(cells.size(), 4u) << "line " << number;
      if (cells.size() < 3) continue;
      rows.push_back({number, VersionOf(cells[0]), VersionOf(cells[1]), cells[2]});
    }
  }
  return rows;
}

TEST(VersionTable, IsWhatThePolicyDoes) {
  DefaultUpdatePolicy policy;
  for (const Row& row : Rows()) {
    SCOPED_TRACE("line " + std::to_string(row.line));
    ASSERT_TRUE(row.newer == "yes" || row.newer == "no") << row.newer;
    EXPECT_EQ(policy.IsNewerVersion(row.current, row.candidate), row.newer == "yes")
        << row.current << " | " << row.candidate;
  }
}

TEST(VersionTable, HasManyRowsWithBothAnswers) {
  std::size_t newer = 0;
  const std::vector<Row> rows = Rows();
  for (const Row& row : rows) newer += row.newer == "yes" ? 1u : 0u;
  EXPECT_GE(rows.size(), kFewestRows);
  EXPECT_GE(newer, rows.size() / 4);
  EXPECT_GE(rows.size() - newer, rows.size() / 4);
}

}  // namespace
}  // namespace korvixsdk::test
