#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "tests/support/data.h"
#include "tests/tools/run_tool.h"
#include "tools/lorv/text/messages_table.h"
#include "tools/lorv/text/spoken_language.h"
#include "tools/lorv/verbs_table.h"

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
