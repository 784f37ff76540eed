#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "tests/support/data.h"
#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

// Asked of and holding within 1 %, by relation.
using Counts = std::map<std::string, std::pair<int, int>>;

constexpr const char* kModels[] = {"fzk_house", "office_small", "flats_limestone_walls",
                                   "carwash_steel_concrete"};

Counts Wanted(const std::string& table, const std::string& model) {
  Counts counts;
  std::istringstream in(table);
  for (std::string line; std::getline(in, line);) {
    std::vector<std::string> cells;
    std::istringstream row(line);
    for (std::string cell; std::getline(row, cell, ',');) cells.push_back(cell);
    if (cells[0] == model + ".csv") counts[cells[6]] = {std::stoi(cells[7]), std::stoi(cells[8])};
  }
  return counts;
}

// The members of a JSON comparison, read as they are printed.
Counts Found(const std::string& printed) {
  const std::string json = printed.substr(0, printed.find("\"differences\""));
  Counts counts;
  const auto member = [&](const char* key, std::size_t from) {
    return json.find(std::string("\"") + key + "\": ", from) + std::string(key).size() + 4;
  };
  for (std::size_t at = json.find("\"comparison\"");
       (at = json.find("\"name\": \"", at)) != std::string::npos;) {
    at += 9;
    const std::string name = json.substr(at, json.find('"', at) - at);
    counts[name] = {std::stoi(json.substr(member("asked", at))), std::stoi(json.substr(member("agree", at)))};
  }
  return counts;
}

TEST(RealModels, AgreeAsOftenAsTheModelsAllow) {
  const auto relations = FindData("components/relations.csv");
  if (!relations) return;
  for (const std::string model : kModels) {
    const auto file = FindData("components/" + model + ".csv");
    ASSERT_TRUE(file) << model;
    const std::string rules = (ProjectFolder() / "examples/real" / (model + "_rules.csv")).string();
    const ToolRun run = RunTool({"work", file->string(), "--rules", rules, "--compare", "--json"});
    EXPECT_EQ(run.code, 0) << run.err;
    const Counts wanted = Wanted(ReadBytes(*relations), model), found = Found(run.out);
    EXPECT_FALSE(wanted.empty());
    for (const auto& [relation, counts] : wanted) {
      ASSERT_TRUE(found.contains(relation)) << model << ": " << relation;
      EXPECT_EQ(found.at(relation).first, counts.first) << model << ": " << relation;
      // Evaluated in millimetres, the three decimals cost no component.
      EXPECT_EQ(found.at(relation).second, counts.second) << model << ": " << relation;
    }
  }
}

}  // namespace
}  // namespace lorv::test
