#include "tools/lorv/program.h"

#include <gtest/gtest.h>

#include "tests/tools/run_tool.h"
#include "tools/lorv/verbs_table.h"

namespace lorv::test {
namespace {

bool Has(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

TEST(Program, WithoutArgumentsTellsWhatItIs) {
  const ToolRun run = RunTool({});
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(Has(run.out, "Usage: lorv VERB")) << run.out;
  EXPECT_TRUE(Has(run.out, "Exit codes: 0 fine")) << run.out;
}

TEST(Program, HelpListsEveryVerbWithItsSummary) {
  const ToolRun run = RunTool({"--help"});
  EXPECT_EQ(run.code, 0);
  for (const tool::VerbGroup& group : tool::AllVerbs()) {
    for (const tool::Verb& verb : group.verbs) {
      EXPECT_TRUE(Has(run.out, std::string("  ") + verb.name + " ")) << verb.name;
      EXPECT_TRUE(Has(run.out, verb.summary)) << verb.name;
    }
  }
}

TEST(Program, EveryVerbHasHelpOfItsOwnWithAnExample) {
  for (const tool::VerbGroup& group : tool::AllVerbs()) {
    for (const tool::Verb& verb : group.verbs) {
      for (const auto& words : {std::vector<std::string>{verb.name, "--help"}, {"help", verb.name}}) {
        const ToolRun run = RunTool(words);
        EXPECT_EQ(run.code, 0) << verb.name;
        EXPECT_TRUE(Has(run.out, std::string("Usage: lorv ") + verb.name)) << run.out;
        EXPECT_TRUE(Has(run.out, std::string("  lorv ") + verb.name)) << "no example:\n" << run.out;
      }
    }
  }
}

TEST(Program, VersionIsNameAndNumber) {
  const ToolRun run = RunTool({"--version"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, "lorv " LORV_VERSION "\n");
}

TEST(Program, UnknownVerbIsNamedAndEndsWithTwo) {
  const ToolRun run = RunTool({"measure"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "lorv: there is no verb \"measure\"; `lorv --help` lists them\n");
}

TEST(Program, UnknownOptionEndsWithTwo) {
  const ToolRun run = RunTool({"--nonsense"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "lorv: there is no option \"--nonsense\"; `lorv --help` lists them\n");
}

TEST(Program, HelpForAnUnknownVerbEndsWithTwo) {
  EXPECT_EQ(RunTool({"help", "measure"}).code, 2);
}

}  // namespace
}  // namespace lorv::test
