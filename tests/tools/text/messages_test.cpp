#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "tests/support/data.h"
#include "tests/tools/run_tool.h"
#include "tools/lorv/command/verbs_table.h"
#include "tools/lorv/describe/verb_words.h"
#include "tools/lorv/language/messages_table.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::test {
namespace {

std::size_t Places(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = text.find("{}"); at != std::string_view::npos; at = text.find("{}", at + 2)) ++count;
  return count;
}

// A literal of one or several pieces behind an opening bracket, with its escapes undone.
std::string LiteralAt(const std::string& source, std::size_t at) {
  std::string text;
  while (at < source.size() &&
         (source[at] == '"' || std::isspace(static_cast<unsigned char>(source[at])) != 0)) {
    if (source[at++] != '"') continue;
    for (; source[at] != '"'; ++at) {
      if (source[at] == '\\') ++at;
      text += source[at] == 'n' && source[at - 1] == '\\' ? '\n' : source[at];
    }
    ++at;
  }
  return text;
}

TEST(Messages, EveryOneHasItsChineseText) {
  int checked = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(ProjectFolder() / "tools/lorv")) {
    if (entry.path().extension() != ".cpp") continue;
    const std::string source = ReadBytes(entry.path());
    for (std::size_t at = source.find("Say("); at != std::string::npos; at = source.find("Say(", at + 4)) {
      const std::string english = LiteralAt(source, at + 4);
      if (english.empty()) continue;
      EXPECT_FALSE(tool::ChineseOf(english).empty()) << entry.path().filename() << ": " << english;
      ++checked;
    }
  }
  EXPECT_GT(checked, 50);
  for (const tool::VerbGroup& group : tool::AllVerbs()) {
    EXPECT_FALSE(tool::ChineseOf(group.title).empty()) << group.title;
    for (const tool::Verb& verb : group.verbs)
      EXPECT_FALSE(tool::ChineseOf(verb.summary).empty()) << verb.name;
  }
}

// A message goes through Say() on its way, or it stays English whatever the user's language is.
TEST(Messages, NoneIsWrittenPastTheTable) {
  for (const auto& entry : std::filesystem::recursive_directory_iterator(ProjectFolder() / "tools/lorv")) {
    if (entry.path().extension() != ".cpp") continue;
    const std::string source = ReadBytes(entry.path());
    for (const char* call : {"BadInput(\"", "<< \"lorv: note", "troubles_.Add(path, \""})
      EXPECT_EQ(source.find(call), std::string::npos) << entry.path().filename() << ": " << call;
    // A reader's Fail() says its words in the language that is spoken.
    for (std::size_t at = source.find("Fail("); at != std::string::npos; at = source.find("Fail(", at + 5)) {
      const std::size_t quote = source.find_first_of("\";", at);
      if (quote == std::string::npos || source[quote] == ';') continue;
      const std::string english = LiteralAt(source, quote);
      EXPECT_FALSE(tool::ChineseOf(english).empty()) << entry.path().filename() << ": " << english;
    }
  }
}

// The commands among the lines of a help text, without what is said of them: that stands behind several
// blanks.
std::vector<std::string> CommandsOf(const std::string& help) {
  std::vector<std::string> commands;
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t at = line.find("lorv ");
    if (!line.starts_with("  ") || at == std::string::npos) continue;
    commands.push_back(line.substr(2, line.find("   ", at) - 2));
  }
  return commands;
}

// What --help prints in each language.
TEST(Messages, HelpIsWholeInBothLanguages) {
  for (const tool::VerbGroup& group : tool::AllVerbs()) {
    for (const tool::Verb& verb : group.verbs) {
      const std::string english = RunTool({verb.name, "--help"}).out;
      const std::string chinese = RunTool({verb.name, "--help", "--lang", "zh"}).out;
      EXPECT_NE(chinese.find("用法: lorv"), std::string::npos) << chinese;
      EXPECT_NE(chinese.find("示例:\n"), std::string::npos) << verb.name;
      EXPECT_EQ(CommandsOf(english), CommandsOf(chinese)) << verb.name;
    }
  }
  tool::SpeakLanguage(tool::Language::kEnglish);
  const auto english = tool::DescribeVerbs();
  tool::SpeakLanguage(tool::Language::kChinese);
  const auto chinese = tool::DescribeVerbs();
  tool::SpeakLanguage(tool::Language::kEnglish);
  for (std::size_t verb = 0; verb < english.size(); ++verb) {
    for (std::size_t i = 0; i < english[verb].options.size(); ++i) {
      const std::string& words = english[verb].options[i].description;
      EXPECT_NE(words, chinese[verb].options[i].description) << english[verb].name;
      EXPECT_EQ(tool::ChineseOf(words), chinese[verb].options[i].description) << english[verb].name;
    }
  }
}

TEST(Messages, HelpOfTheProgramIsChineseThroughout) {
  const std::string help = RunTool({"--help", "--lang", "zh"}).out;
  EXPECT_NE(help.find("用法:lorv VERB"), std::string::npos) << help;
  EXPECT_NE(help.find("退出码:0 完成"), std::string::npos) << help;
  EXPECT_NE(help.find("显示帮助后结束"), std::string::npos) << help;
  EXPECT_EQ(RunTool({"manual"}).out.find("退出码"), std::string::npos);
  const std::string manual = RunTool({"manual", "--lang", "zh"}).out;
  EXPECT_NE(manual.find(".SH 名称"), std::string::npos);
  EXPECT_NE(manual.find("计算构件表的工程量"), std::string::npos);
}

// Options stand under one another on a terminal, whatever the width of the titles before them.
TEST(Messages, ChineseHelpKeepsItsColumns) {
  const std::string help = RunTool({"calc", "--help", "--lang", "zh"}).out;
  EXPECT_NE(help.find("\n  FORMULA 文字 必需         公式"), std::string::npos) << help;
  EXPECT_NE(help.find("\n  -j,--json                 全部"), std::string::npos) << help;
}

TEST(Messages, BothLanguagesTakeTheSameValues) {
  std::set<std::string_view> seen;
  for (const tool::Message& message : tool::Messages()) {
    EXPECT_TRUE(seen.insert(message.english).second) << message.english;
    EXPECT_EQ(Places(message.english), Places(message.chinese)) << message.english;
  }
}

TEST(Messages, LanguageIsThatOfTheLocaleOrTheOneAsked) {
  std::istringstream in;
  std::ostringstream out, err;
  tool::Console console{in, out, err};
  console.locale = "zh_CN.UTF-8";
  tool::RunProgram({"clac"}, console);
  EXPECT_EQ(err.str(), "lorv: 没有命令“clac”;您是不是要写calc?\n");
  err.str("");
  tool::RunProgram({"--lang=en", "clac"}, console);
  EXPECT_EQ(err.str(), "lorv: there is no verb \"clac\"; did you mean calc?\n");
  EXPECT_NE(RunTool({"--help", "--lang", "zh"}).out.find("计算一个公式"), std::string::npos);
}

}  // namespace
}  // namespace lorv::test
