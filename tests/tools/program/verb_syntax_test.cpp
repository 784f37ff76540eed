#include "tools/lorv/command/verb_syntax.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace {

using lorv::tool::Argument;
using lorv::tool::VerbSyntax;
using Words = std::vector<std::string>;

struct Request {
  std::string text;
  Words names;
  int count = 10;
  double share = 1;
  std::optional<int> frame;
  std::uint64_t size = 0;
  bool json = false;
  bool suite = false;
  bool any = false;
};

// A verb that has an argument of every kind.
class Syntax : public testing::Test {
 protected:
  Syntax() {
    syntax_.Value("TEXT", request_.text, "the text").Required();
    syntax_.Value("-n,--name", request_.names, "a name").DividedBy(',').OneValueEach();
    syntax_.Value("--count", request_.count, "how many").Between(1, 20);
    syntax_.Value("--share", request_.share, "in per cent");
    syntax_.Value("--frame", request_.frame, "from 0");
    syntax_.Value("--size", request_.size, "in bytes");
    syntax_.Flag("-j,--json", request_.json, "as JSON");
    const Argument suite = syntax_.Flag("--suite", request_.suite, "the suite's way");
    syntax_.Flag("--any", request_.any, "any zero").Excludes(suite);
    syntax_.Value("--rule", rule_, "which rule").OneOf({"max", "min"}).Needs(suite);
    syntax_.Footer("Examples: none");
  }

  void Parse(Words words) {
    std::reverse(words.begin(), words.end());
    app_.parse(words);
  }

  CLI::App app_;
  VerbSyntax syntax_{app_};
  Request request_;
  std::string rule_;
};

TEST_F(Syntax, ValuesOfEveryKindAreRead) {
  Parse({"KL", "--count", "7", "--share", "0.5", "--frame", "3", "--size", "18446744073709551615", "-j"});
  EXPECT_EQ(request_.text, "KL");
  EXPECT_EQ(request_.count, 7);
  EXPECT_EQ(request_.share, 0.5);
  EXPECT_EQ(request_.frame, 3);
  EXPECT_EQ(request_.size, UINT64_MAX);
  EXPECT_TRUE(request_.json);
}

TEST_F(Syntax, WhatIsNotNamedKeepsItsValue) {
  Parse({"KL"});
  EXPECT_EQ(request_.count, 10);
  EXPECT_EQ(request_.frame, std::nullopt);
  EXPECT_FALSE(request_.json);
  EXPECT_TRUE(request_.names.empty());
}

TEST_F(Syntax, WhatIsRequiredMustBeThere) {
  EXPECT_THROW(Parse({"--json"}), CLI::RequiredError);
}

TEST_F(Syntax, ListsGrowBySignsAndByNamingTheOptionAgain) {
  Parse({"-n", "A,B", "KL", "--name", "C"});
  EXPECT_EQ(request_.names, (Words{"A", "B", "C"}));
  EXPECT_EQ(request_.text, "KL");
}

TEST_F(Syntax, NumbersOutsideTheirRangeAreRefused) {
  EXPECT_THROW(Parse({"KL", "--count", "0"}), CLI::ValidationError);
  EXPECT_THROW(Parse({"KL", "--count", "21"}), CLI::ValidationError);
  EXPECT_THROW(Parse({"KL", "--count", "many"}), CLI::ParseError);
  EXPECT_THROW(Parse({"KL", "--size=-1"}), CLI::ValidationError);
}

TEST_F(Syntax, OtherWordsThanThoseOfTheListAreRefused) {
  EXPECT_THROW(Parse({"KL", "--suite", "--rule", "mean"}), CLI::ValidationError);
  Parse({"KL", "--suite", "--rule", "min"});
  EXPECT_EQ(rule_, "min");
}

TEST_F(Syntax, OptionsNeedAndExcludeOthers) {
  EXPECT_THROW(Parse({"KL", "--rule", "max"}), CLI::RequiresError);
  EXPECT_THROW(Parse({"KL", "--any", "--suite"}), CLI::ExcludesError);
  Parse({"KL", "--any"});
  EXPECT_TRUE(request_.any);
}

TEST_F(Syntax, TheHelpHasAllOfIt) {
  const std::string help = app_.help();
  for (const char* part : {"TEXT", "the text", "-n,--name", "--count", "in per cent", "Examples: none"}) {
    EXPECT_NE(help.find(part), std::string::npos) << part << "\n" << help;
  }
}

}  // namespace
