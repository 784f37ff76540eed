#include "tools/lorv/program.h"

#include <gtest/gtest.h>

#include "tests/tools/run_tool.h"
#include "tools/lorv/command/verbs_table.h"

namespace lorv::test {
namespace {

bool Has(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

TEST(Program, WithoutArgumentsReportsWhatItIs) {
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

TEST(Program, HelpOfAVerbReportsItsOwnArgumentsOnly) {
  const ToolRun run = RunTool({"calc", "--help"});
  EXPECT_TRUE(Has(run.out, "--explain")) << run.out;
  EXPECT_FALSE(Has(run.out, "unpack")) << run.out;
}

TEST(Program, MistypedVerbIsAnsweredWithTheNearest) {
  EXPECT_EQ(RunTool({"clac"}).err, "lorv: there is no verb \"clac\"; did you mean calc?\n");
  EXPECT_EQ(RunTool({"wrok", "x"}).code, 2);
}

TEST(Program, ColoursStandOnATerminalOnly) {
  std::istringstream in;
  std::ostringstream out, err;
  tool::Console console{in, out, err};
  console.colours = true;
  tool::RunProgram({"calc", "1+"}, console);
  EXPECT_TRUE(Has(err.str(), "\x1b[31mthe formula ends")) << err.str();
  EXPECT_TRUE(Has(err.str(), "1+\n\x1b[32m      ^\x1b[0m\n")) << err.str();
  EXPECT_FALSE(Has(RunTool({"calc", "1+"}).err, "\x1b"));
}

TEST(Program, CompletionKnowsEveryVerbAndOption) {
  for (const char* shell : {"bash", "zsh", "fish"}) {
    const ToolRun run = RunTool({"completion", shell});
    EXPECT_EQ(run.code, 0);
    for (const tool::VerbGroup& group : tool::AllVerbs()) {
      for (const tool::Verb& verb : group.verbs)
        EXPECT_TRUE(Has(run.out, verb.name)) << shell << " " << verb.name;
    }
    EXPECT_TRUE(Has(run.out, "suite-values")) << shell;
  }
  EXPECT_EQ(RunTool({"completion", "csh"}).code, 2);
}

TEST(Program, ManualPageHasTheTextOfHelp) {
  const ToolRun run = RunTool({"manual"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out.substr(0, 10), ".TH LORV 1");
  EXPECT_TRUE(Has(run.out, "components that part") || Has(run.out, "columns that part the bill")) << run.out;
  for (const tool::VerbGroup& group : tool::AllVerbs()) {
    for (const tool::Verb& verb : group.verbs) EXPECT_TRUE(Has(run.out, verb.summary)) << verb.name;
  }
}

}  // namespace
}  // namespace lorv::test
