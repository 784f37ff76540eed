#include "grid/commands/grid_command.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

#include "grid/commands/key_text.h"

namespace {

std::string Guide() {
  std::ifstream file(LORV_GRID_GUIDE, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

}  // namespace

TEST(GridCommand, EachHasItsNameItsTextsAndKeysThatAreKeys) {
  std::set<std::string> names;
  for (const lorv::GridCommand& command : lorv::KnownCommands()) {
    const std::string name = command.name.ToUtf8();
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_FALSE(command.chinese.IsEmpty()) << name;
    EXPECT_FALSE(command.english.IsEmpty()) << name;
    EXPECT_TRUE(lorv::ChordsFromText(command.keys).has_value()) << name;
  }
  for (const char* name : {"undo", "redo", "cut", "copy", "paste", "find", "replace"})
    EXPECT_EQ(names.count(name), 1U) << name;
}

TEST(GridCommand, NoKeyStandsTwice) {
  std::set<std::string> keys;
  for (const lorv::GridCommand& command : lorv::KnownCommands()) {
    const auto chords = lorv::ChordsFromText(command.keys);
    ASSERT_TRUE(chords.has_value());
    for (const lorv::KeyChord& chord : *chords) {
      const std::string key = lorv::ChordToText(chord).ToUtf8();
      EXPECT_TRUE(keys.insert(key).second) << key;
    }
  }
}

TEST(GridCommand, TheGuideHoldsTheTable) {
  const std::string table = lorv::CommandsAsMarkdown(lorv::KnownCommands()).ToUtf8();
  EXPECT_NE(Guide().find(table), std::string::npos) << table;
}

TEST(GridCommand, BarsInTextsArePartOfThem) {
  lorv::GridCommand command;
  command.name = _T("either");
  command.english = _T("a|b");
  const std::string table = lorv::CommandsAsMarkdown({command}).ToUtf8();
  EXPECT_NE(table.find("| `either` |  | always |  | a\\|b |\n"), std::string::npos) << table;
}
