#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "TEXPRESSCAL/express.h"
#include "tests/support/data.h"
#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

using Component = std::map<std::string, std::string>;
using Totals = std::map<std::string, double>;

std::vector<std::string> Cells(const std::string& line) {
  std::vector<std::string> cells;
  std::istringstream in(line + ",");
  for (std::string cell; std::getline(in, cell, ',');) cells.push_back(cell);
  return cells;
}

// The sample holds no quotes, so that a test can read it with its own eyes.
std::vector<Component> Components() {
  std::istringstream in(ReadBytes(ProjectFolder() / "examples/house/components.csv"));
  std::string line;
  std::getline(in, line);
  const auto titles = Cells(line);
  std::vector<Component> components;
  while (std::getline(in, line)) {
    const auto cells = Cells(line);
    components.emplace_back();
    for (std::size_t i = 0; i < titles.size(); ++i)
      components.back()[titles[i]] = i < cells.size() ? cells[i] : "";
  }
  return components;
}

double Of(const Component& component, const char* column) {
  const std::string& cell = component.at(column);
  return cell.empty() ? 0 : std::stod(cell);
}

// What an estimator would work out by hand, written down without the tool's formulas.
class Hand {
 public:
  void Add(const Component& c) {
    component_ = &c;
    const std::string& kind = c.at("class");
    const double length = Of(c, "长"), width = Of(c, "宽"), height = Of(c, "高"), slab = Of(c, "板厚"),
                 area = Of(c, "面积");
    const double round = Of(c, "周长"), net = length * height - Of(c, "opening");
    if (kind == "独立基础") Footing(length, width, height, Of(c, "depth"));
    if (kind == "基础梁") Concrete(length * width * height, 2 * length * height);
    if (kind == "柱") Concrete(length * width * height, 2 * (length + width) * (height - slab));
    if (kind == "梁") Concrete(length * width * (height - slab), length * (width + 2 * (height - slab)));
    if (kind == "板") Concrete(area * slab, area);
    if (kind == "楼梯") Stair(length, width, height, slab, Of(c, "踏步数"));
    if (kind == "Lintel") Concrete(length * width * height, (length - 0.5) * width + 2 * length * height);
    if (kind == "地面") Put("混凝土 m3", area * slab);
    if (kind == "散水") Put("混凝土 m3", (round * width + 4 * width * width) * slab);
    if (kind == "Wall" || kind == "Partition") Masonry(kind, net, width, Of(c, "opening"));
    if (kind == "Door" || kind == "Window") Opening(kind, width, height);
    if (kind == "Room") Room(c.at("name"), area, round, height, Of(c, "opening"));
    if (kind == "屋面") {
      Put("瓦 roof tiles m2", length * width / std::cos(Of(c, "坡度") / 180 * 3.14159265358979));
      Put("脊瓦 ridge m", length / 2);
    }
  }
  const Totals& Sums() const { return sums_; }

 private:
  void Put(const std::string& quantity, double value) {
    const Component& c = *component_;
    const double count = c.at("count").empty() ? 1 : Of(c, "count");
    sums_[c.at("class") + "/" + c.at("storey") + "/" + quantity] += value * count;
  }
  void Concrete(double volume, double formwork) {
    Put("混凝土 m3", volume);
    Put("模板 m2", formwork);
  }
  void Footing(double length, double width, double height, double depth) {
    const double dug = (length + 0.6) * (width + 0.6) * (depth + 0.1),
                 bed = (length + 0.2) * (width + 0.2) * 0.1;
    Concrete(length * width * height, 2 * (length + width) * height);
    Put("垫层 m3", bed);
    Put("挖土 m3", dug);
    Put("回填 m3", dug - bed - length * width * height);
  }
  void Stair(double length, double width, double height, double slab, double steps) {
    const double slope = std::hypot(length, height);
    Concrete(slope * width * slab + length * height / steps / 2 * width,
             slope * width + 2 * slope * slab + height * width);
    Put("踏步面 m2", (length + height) * width);
  }
  void Masonry(const std::string& kind, double net, double width, double opening) {
    Put("masonry 砌体 m3", net * width);
    Put("mortar 砂浆 m3", net * 0.04);
    Put("plaster inside 内墙抹灰 m2", kind == "Wall" ? net : 2 * net);
    if (kind == "Wall") Put("plaster outside 外墙抹灰 m2", net + 0.48 * std::sqrt(opening));
  }
  void Opening(const std::string& kind, double width, double height) {
    Put("面积 m2", width * height);
    Put("樘 pc", 1);
    if (kind == "Door") Put("frame 门框 m", width + 2 * height);
    if (kind == "Window") Put("sill 窗台板 m", width + 0.1);
  }
  void Room(const std::string& name, double area, double round, double height, double opening) {
    const bool bath = name.find("卫生间") != std::string::npos,
               wet = bath || name.find("厨房") != std::string::npos;
    Put("地砖 floor tiles m2", area);
    Put(wet ? "吊顶 ceiling m2" : "天棚抹灰 ceiling plaster m2", area);
    if (bath) Put("防水 waterproofing m2", area + round * (height > 2.8 ? 1.8 : 1.5));
    Put("墙漆 paint m2", std::max(round * height - opening, 0.0));
    Put("踢脚 skirting m", round - 0.9);
  }

  const Component* component_ = nullptr;
  Totals sums_;
};

class SampleHouse : public testing::Test {
 protected:
  static ToolRun Work(const std::vector<std::string>& more) {
    const auto folder = ProjectFolder() / "examples/house";
    std::vector<std::string> words = {"work", (folder / "components.csv").string(), "--rules",
                                      (folder / "rules.csv").string()};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }
};

TEST_F(SampleHouse, TotalsAreThoseWorkedByHand) {
  const ScratchFolder folder;
  const ToolRun run = Work({"--quiet", "--bill", (folder.Path() / "bill.csv").string()});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.err, "") << "no dimension of the sample loses a digit";
  Hand hand;
  for (const Component& component : Components()) hand.Add(component);
  Totals found;
  std::istringstream in(ReadBytes(folder.Path() / "bill.csv"));
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    const auto cells = Cells(line);
    if (cells.back().rfind("line", 0) != 0) continue;
    found[cells[0] + "/" + cells[3] + "/" + cells[1] + " " + cells[2]] = std::stod(cells[5]);
  }
  EXPECT_EQ(found.size(), hand.Sums().size());
  for (const auto& [key, total] : hand.Sums()) EXPECT_NEAR(found[key], total, 1e-8) << key;
}

TEST_F(SampleHouse, IsAHouse) {
  const auto components = Components();
  EXPECT_GE(components.size(), 100u);
  std::set<std::string> classes, storeys, names;
  double in_walls = 0, doors_and_windows = 0, footprint = 0;
  for (const Component& c : components) {
    classes.insert(c.at("class"));
    storeys.insert(c.at("storey"));
    if (c.at("class") == "Wall" || c.at("class") == "Partition") in_walls += Of(c, "opening");
    if (c.at("class") == "Door" || c.at("class") == "Window") doors_and_windows += Of(c, "宽") * Of(c, "高");
    if (c.at("class") == "板" && c.at("storey") == "二层") footprint += Of(c, "面积");
  }
  EXPECT_GE(classes.size(), 12u);
  EXPECT_EQ(storeys.size(), 4u);
  EXPECT_NEAR(in_walls, doors_and_windows, 1e-9)
      << "every opening that a wall loses holds a door or a window";
  EXPECT_NEAR(footprint, 10.8 * 8.4, 1e-9) << "the roof slabs cover the plan";
}

TEST_F(SampleHouse, BillIsAligned) {
  const ToolRun run = Work({});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find("混凝土                    m3           131   83.531\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("188 components\n"), std::string::npos);
}

// Lines of the README behind a marker line, without their indent, up to the next line that is not indented.
std::string IndentedBehind(const std::string& text, const std::string& marker) {
  std::istringstream in(text.substr(text.find(marker)));
  std::string line, block;
  std::getline(in, line);
  while (std::getline(in, line) && (line.empty() || line.starts_with("    "))) {
    block += (line.empty() ? "" : line.substr(4)) + "\n";
  }
  return block;
}

TEST(FirstExample, ReadmeShowsTheTablesAndTheBillThatComesOut) {
  const std::string readme = ReadBytes(ProjectFolder() / "README.md");
  const auto folder = ProjectFolder() / "examples/first";
  for (const char* file : {"components.csv", "rules.csv"}) {
    EXPECT_NE(readme.find("```csv\n" + ReadBytes(folder / file) + "```"), std::string::npos) << file;
  }
  const ToolRun run =
      RunTool({"work", (folder / "components.csv").string(), "--rules", (folder / "rules.csv").string()});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(IndentedBehind(readme, "    $ lorv work"), run.out + "\n");
}

TEST(Readme, LeadsToEveryDocumentAndNamesEveryFunction) {
  const std::string readme = ReadBytes(ProjectFolder() / "README.md");
  std::vector<std::filesystem::path> documents;
  for (const char* folder : {".", "docs", "docs/formats", "examples"}) {
    for (const auto& found : std::filesystem::directory_iterator(ProjectFolder() / folder)) {
      if (found.path().extension() != ".md" || found.path() == ProjectFolder() / "./README.md") continue;
      documents.push_back(std::filesystem::relative(found.path(), ProjectFolder()));
    }
  }
  EXPECT_GT(documents.size(), 10U);
  for (const auto& document : documents) {
    EXPECT_NE(readme.find("](" + document.generic_string() + ")"), std::string::npos) << document;
  }
  const CExpression expression;
  int functions = 0;
  for (const CDtaFunction& function : expression.GetFuncDta()) {
    EXPECT_NE(readme.find("`" + CString(function.pszName).ToUtf8() + "`"), std::string::npos);
    ++functions;
  }
  EXPECT_EQ(functions, 28);
}

}  // namespace
}  // namespace lorv::test
