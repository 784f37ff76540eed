// The loops over units that go eight at a step, beside their plain definitions: every length around a step,
// every place of a hit within one, and units on both sides of each bound.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>

#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/text/unit_search.h"

namespace lorv {
namespace {

using Text = std::basic_string<TCHAR>;

// Letters, signs of operators, what stands right beside them in the table of codes, and units beyond ASCII,
// where a comparison with signs would go wrong.
constexpr TCHAR kUnits[] = {'a',   'z',    'A',    'Z',    '`',    '{',    '@',    '[',    '0',    '9',
                            ';',   '<',    '=',    '>',    '?',    ' ',    '!',    '"',    0x1F,   '%',
                            '&',   '\'',   '{',    '|',    '}',    '_',    0x7F,   0x80,   0xE1,   0x161,
                            0x17A, 0x4E00, 0x6881, 0x7FFF, 0x8000, 0x8061, 0xD83D, 0xDE00, 0xFF41, 0xFFFF};

Text RandomText(std::mt19937& random, std::size_t length, bool plain) {
  Text text(length, 0);
  for (TCHAR& unit : text)
    unit = plain ? static_cast<TCHAR>('A' + random() % 26) : kUnits[random() % std::size(kUnits)];
  return text;
}

Text PlainCapitals(const Text& text) {
  Text capitals = text;
  for (TCHAR& unit : capitals)
    if (unit >= 'a' && unit <= 'z') unit = static_cast<TCHAR>(unit - 32);
  return capitals;
}

bool PlainNeedsRewriting(const Text& text) {
  return text.find_first_of(_T("<=> !&|")) != Text::npos;
}

TEST(CapitalLoops, RaiseLettersAndNothingElse) {
  std::mt19937 random(31);
  for (int round = 0; round < 4000; ++round) {
    // From any place of a step, so that loads are not aligned.
    const std::size_t before = random() % 8;
    const Text text = RandomText(random, before + random() % 40, false);
    const TextView part = TextView(text).substr(before);
    Text out(part.size() + 1, 0x1234);
    const bool rewrites = CopyCapitals(part, out.data());
    ASSERT_EQ(out.substr(0, part.size()), PlainCapitals(Text(part)));
    ASSERT_EQ(out.back(), 0x1234) << "wrote behind its end";
    ASSERT_EQ(rewrites, PlainNeedsRewriting(Text(part)));
    ASSERT_EQ(Capitals(part), PlainCapitals(Text(part)));
  }
}

TEST(CapitalLoops, OneSignAtAnyPlaceIsSeen) {
  for (std::size_t length = 1; length <= 34; ++length) {
    for (std::size_t at = 0; at < length; ++at) {
      for (const TCHAR unit : kUnits) {
        Text text(length, 'X');
        text[at] = unit;
        Text out(length, 0);
        ASSERT_EQ(CopyCapitals(text, out.data()), PlainNeedsRewriting(text))
            << length << " " << at << " " << +unit;
      }
    }
  }
}

TEST(CapitalLoops, TextsAreTheSameInCapitalsOrNot) {
  std::mt19937 random(32);
  for (int round = 0; round < 4000; ++round) {
    const Text text = RandomText(random, random() % 40, false);
    const Text capitals = PlainCapitals(text);
    ASSERT_TRUE(IsInCapitals(text, capitals));
    if (text.empty()) continue;
    Text other = capitals;
    TCHAR& changed = other[random() % other.size()];
    const TCHAR before = changed;
    changed = kUnits[random() % std::size(kUnits)];
    // Only capitals are ever compared with.
    if (changed >= 'a' && changed <= 'z') changed = before;
    ASSERT_EQ(IsInCapitals(text, other), other == capitals);
    ASSERT_FALSE(IsInCapitals(text, TextView(capitals).substr(1)));
    ASSERT_FALSE(IsInCapitals(TextView(text).substr(1), capitals));
  }
}

TEST(UnitSearch, FindsTheFirstUnitFromAPlaceOn) {
  std::mt19937 random(33);
  for (int round = 0; round < 10000; ++round) {
    const Text text = RandomText(random, random() % 40, false);
    const TCHAR wanted = kUnits[random() % std::size(kUnits)];
    const std::size_t from = random() % (text.size() + 1);
    const std::size_t length = from + random() % (text.size() - from + 1);
    const std::size_t expected = std::min(text.find(wanted, from), length);
    ASSERT_EQ(FindUnit(text.data(), length, from, wanted), expected);
  }
}

TEST(UnitSearch, FindsNamesThatLieWholeInTheText) {
  std::mt19937 random(34);
  for (int round = 0; round < 20000; ++round) {
    Text text(random() % 40, 'A');
    // Few letters, so that beginnings of the name stand in many places.
    for (TCHAR& unit : text) unit = static_cast<TCHAR>('A' + random() % 3);
    Text name(1 + random() % 4, 'A');
    for (TCHAR& unit : name) unit = static_cast<TCHAR>('A' + random() % 3);
    const std::size_t length = random() % (text.size() + 1);
    const std::size_t from = random() % (length + 2);
    const std::size_t expected = text.substr(0, length).find(name, from);
    ASSERT_EQ(FindText(text.data(), length, from, name), expected == Text::npos ? TextView::npos : expected);
  }
}

}  // namespace
}  // namespace lorv
