#include "tools/lorv/takeoff/input/takeoff_limits.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/data.h"
#include "tests/tools/run_tool.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/takeoff/findings/problems.h"
#include "tools/lorv/takeoff/output/bill.h"

// Each limit of the take-off one below, at and one above it.

namespace lorv::test {
namespace {

using tool::Bill;
using tool::kMaxBillLines;
using tool::kMaxProblems;
using tool::kMaxRules;

// The rules of a file with that many rows below its header.
std::size_t RulesRead(std::size_t rows) {
  std::string text = "class,name,formula\n";
  for (std::size_t i = 0; i < rows; ++i) text += "W,q" + std::to_string(i) + ",L\n";
  std::istringstream stream(text);
  tool::InputBytes bytes("-", stream);
  return tool::ReadRules(bytes, tool::Encoding::kUtf8).rules.size();
}

TEST(TakeoffLimits, RulesOfAFile) {
  EXPECT_EQ(RulesRead(kMaxRules - 1), kMaxRules - 1);
  EXPECT_EQ(RulesRead(kMaxRules), kMaxRules);
  try {
    RulesRead(kMaxRules + 1);
    ADD_FAILURE() << "one rule too many";
  } catch (const tool::BadInput& refused) {
    EXPECT_NE(std::string(refused.what()).find("line 10002"), std::string::npos) << refused.what();
    EXPECT_NE(std::string(refused.what()).find("more than 10000 rules"), std::string::npos);
  }
}

TEST(TakeoffLimits, TotalsOfABill) {
  tool::RuleSet rules;
  rules.rules.emplace_back();
  const tool::Quantities quantities{rules};
  Bill bill(quantities, {{"class", false}, {"storey", true}});
  std::size_t lines = 0;
  const auto add = [&] {
    const std::string name = "class " + std::to_string(lines / 1000), storey = std::to_string(lines % 1000);
    bill.Add(bill.GroupOf({name, storey}), 0, 1, 1);
    ++lines;
  };
  while (lines < kMaxBillLines - 1) add();
  EXPECT_NO_THROW(add());
  EXPECT_NO_THROW(bill.Add(bill.GroupOf({"class 0", "0"}), 0, 1, 1)) << "a total that is there already";
  EXPECT_THROW(add(), tool::BadInput);
}

class ReportedProblems : public testing::Test {
 protected:
  ReportedProblems() : rules_(OneRule()), problems_(rules_) {}

  static tool::RuleSet OneRule() {
    tool::RuleSet rules;
    rules.file = "r.csv";
    rules.rules.resize(1);
    return rules;
  }
  void Add(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, ++added_)
      problems_.Add(0, tool::RulePart::kFormula, {0, 0, "fault " + std::to_string(added_)}, "w");
  }
  std::string Printed() const {
    std::ostringstream out;
    problems_.Print(out, 80);
    return out.str();
  }

  tool::RuleSet rules_;
  tool::Problems problems_;
  std::size_t added_ = 0;
};

TEST_F(ReportedProblems, StopAtTheirLimitAndAreCountedBeyond) {
  Add(kMaxProblems - 1);
  EXPECT_EQ(problems_.List().size(), kMaxProblems - 1);
  Add(1);
  EXPECT_EQ(problems_.List().size(), kMaxProblems);
  EXPECT_EQ(Printed().find("more problems"), std::string::npos);
  Add(1);
  EXPECT_EQ(problems_.List().size(), kMaxProblems);
  EXPECT_NE(Printed().find("and 1 more problems of other kinds\n"), std::string::npos);
  // What is reported already still counts its components.
  added_ = 0;
  Add(1);
  EXPECT_EQ(problems_.List()[0].components, 2);
}

// What the tool makes of a dimension, with a factor, and of a count.
class LargeValues : public testing::Test {
 protected:
  ToolRun Work(const std::string& dimension, const std::string& factor, const std::string& count = "1") {
    WriteBytes(folder_.Path() / "c.csv", "class,count,L\nW," + count + "," + dimension + "\n");
    WriteBytes(folder_.Path() / "r.csv",
               "kind,class,name,formula,factor\ncolumn,,长,L," + factor + "\n,W,q,长/1000,\n");
    return RunTool(
        {"work", (folder_.Path() / "c.csv").string(), "--rules", (folder_.Path() / "r.csv").string()});
  }

  ScratchFolder folder_;
};

TEST_F(LargeValues, DimensionsEndAtTheirLimit) {
  const struct {
    const char* dimension;
    const char* factor;
    bool good;
  } rows[] = {
      {"999999999999999", "1", true},       {"1000000000000000", "1", true},
      {"1000000000000001", "1", false},     {"-999999999999999", "1", true},
      {"-1000000000000000", "1", true},     {"-1000000000000001", "1", false},
      {"999999999999.999", "1000", true},   {"1000000000000", "1000", true},
      {"1000000000000.001", "1000", false},
  };
  for (const auto& row : rows) {
    const ToolRun run = Work(row.dimension, row.factor);
    EXPECT_EQ(run.code, row.good ? 0 : 1) << row.dimension << " * " << row.factor << "\n" << run.err;
    EXPECT_EQ(run.err.find("is no number") == std::string::npos, row.good) << run.err;
  }
}

TEST_F(LargeValues, CountsEndThereToo) {
  EXPECT_EQ(Work("1", "1", "999999999999999").code, 0);
  EXPECT_EQ(Work("1", "1", "1000000000000000").code, 0);
  const ToolRun run = Work("1", "1", "1000000000000001");
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(run.err.find("the count \"1000000000000001\" is no number from 0 up"), std::string::npos)
      << run.err;
}

}  // namespace
}  // namespace lorv::test
