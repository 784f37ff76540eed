#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "compress/zip/zip_reader.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

// A row of the list of archives: archive, number, name in hex, name, UTF-8 flag, method, flags, packed size,
// size, CRC, DOS time, UT time, attributes, reading.
using Row = std::vector<std::string>;

std::vector<Row> Rows() {
  std::vector<Row> rows;
  const auto file = FindData("zip/CONTENTS.csv");
  if (!file) return rows;
  std::istringstream lines(ReadBytes(*file));
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Row row;
    for (std::size_t at = 0; row.size() < 13; at = line.find(',', at) + 1) {
      row.push_back(line.substr(at, line.find(',', at) - at));
    }
    std::size_t at = 0;
    for (int i = 0; i < 13; ++i) at = line.find(',', at) + 1;
    row.push_back(line.substr(at));
    rows.push_back(row);
  }
  return rows;
}

std::string Hex(const std::string& bytes) {
  std::string hex;
  for (const char c : bytes) {
    char two[3];
    std::snprintf(two, sizeof two, "%02x", static_cast<unsigned char>(c));
    hex += two;
  }
  return hex;
}

// Whether an entry is one that is read here: method 12 is none of the two that archives of the suite use.
bool ShouldRead(const Row& row) {
  return row[13] == "ok" && (row[5] == "0" || row[5] == "8");
}

TEST(ZipData, EveryArchiveGivesWhatItsListSays) {
  const auto rows = Rows();
  for (const Row& row : rows) {
    ZipReader zip;
    const auto path = FindData("zip/" + row[0]);
    ASSERT_TRUE(path);
    const bool opens = row[13].rfind("not opened", 0) != 0;
    ASSERT_EQ(zip.Open(path->string().c_str()), opens ? kZipOk : kZipCorrupt) << row[0];
    if (!opens || row[13] == "no entries") continue;
    const int index = std::stoi(row[1]);
    ZipEntry entry;
    ASSERT_EQ(zip.GetItem(index, entry), kZipOk) << row[0] << " " << index;
    // A name that is marked as UTF-8 is given in the system's code page: 世界 in GBK.
    EXPECT_EQ(Hex(entry.name), row[4] == "0" ? row[2] : "cac0bde7") << row[0] << " " << index;
    EXPECT_EQ(std::to_string(entry.size), row[8]) << row[0] << " " << index;
    const DWORD result = zip.UnzipItem(index, [](std::span<const unsigned char>) { return true; });
    EXPECT_EQ(result == kZipOk, ShouldRead(row)) << row[0] << " " << index << " gives " << result;
  }
}

TEST(ZipData, CountsAreThoseOfTheList) {
  std::map<std::string, int> counts;
  for (const Row& row : Rows()) {
    if (!row[1].empty()) counts[row[0]] = std::max(counts[row[0]], std::stoi(row[1]) + 1);
  }
  for (const auto& [name, count] : counts) {
    ZipReader zip;
    if (zip.Open(FindData("zip/" + name)->string().c_str()) != kZipOk) continue;
    ZipEntry entry;
    zip.GetItem(-1, entry);
    EXPECT_EQ(entry.index, name == "entries_1006.zip" ? 1006 : count) << name;
  }
}

TEST(ZipData, TimesOfTheUtFieldAreRead) {
  constexpr std::int64_t kEpoch = 116444736000000000;
  for (const Row& row : Rows()) {
    if (row[11].empty() || row[13] != "ok") continue;
    ZipReader zip;
    zip.Open(FindData("zip/" + row[0])->string().c_str());
    ZipEntry entry;
    ASSERT_EQ(zip.GetItem(std::stoi(row[1]), entry), kZipOk);
    EXPECT_EQ((entry.write_time - kEpoch) / 10000000, std::stoll(row[11])) << row[0] << " " << row[1];
  }
}

TEST(ZipData, AllEntriesOfTheLargeArchiveAreRead) {
  const auto path = FindData("zip/entries_1006.zip");
  if (!path) return;
  ZipReader zip;
  ASSERT_EQ(zip.Open(path->string().c_str()), kZipOk);
  for (int i = 0; i < 1006; ++i) {
    EXPECT_EQ(zip.UnzipItem(i, [](std::span<const unsigned char>) { return true; }), kZipOk) << i;
  }
}

}  // namespace
}  // namespace lorv::test
