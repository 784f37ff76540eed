#include "TEXPRESSCAL/simd/typed_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "tests/TEXPRESSCAL/guarded_pages.h"

namespace lorv::test {
namespace {

using Units = std::basic_string<TCHAR>;

Units TextOf(std::size_t length) {
  Units text;
  for (std::size_t i = 0; i < length; ++i) text.push_back(static_cast<TCHAR>('A' + i % 26));
  return text;
}

// With its terminator, so that so many units of the pages lie behind it.
LPCTSTR Put(const GuardedPages& pages, const Units& text, std::size_t behind) {
  TCHAR* const at = pages.Units() + GuardedPages::kUnits - behind - text.size() - 1;
  std::fill(pages.Units(), pages.Units() + GuardedPages::kUnits, TCHAR{'#'});
  std::copy_n(text.c_str(), text.size() + 1, at);
  return at;
}

void ExpectKnown(const TypedText& typed, const GuardedPages& pages, const Units& text, std::size_t behind) {
  EXPECT_TRUE(typed.Is(Put(pages, text, behind))) << text.size() << " units, " << behind << " behind them";
  for (std::size_t i = 0; i < text.size(); i += i < 8 || i + 8 > text.size() ? 1U : 7U) {
    Units other = text;
    other[i] = static_cast<TCHAR>(other[i] + 1);
    EXPECT_FALSE(typed.Is(Put(pages, other, behind))) << text.size() << " units, another at " << i;
    other.resize(i);
    EXPECT_FALSE(typed.Is(Put(pages, other, behind))) << text.size() << " units, cut to " << i;
  }
  EXPECT_FALSE(typed.Is(Put(pages, text + TCHAR{'A'}, behind))) << text.size() << " units and one more";
}

// Texts of every length around the steps, up to the end of what may be read.
TEST(TypedText, KnowsATextWhereverItLies) {
  const GuardedPages pages;
  for (const std::size_t length :
       {1U, 2U, 3U, 4U, 7U, 8U, 15U, 16U, 17U, 31U, 32U, 33U, 63U, 64U, 65U, 100U, 300U}) {
    const Units text = TextOf(length);
    TypedText typed;
    typed.Remember(text);
    for (std::size_t behind = 0; behind < 80; behind += behind < 8 ? 1U : 9U)
      ExpectKnown(typed, pages, text, behind);
    // Where one page ends and the next begins.
    for (std::size_t behind = 0; behind < length; behind += 1 + length / 9)
      ExpectKnown(typed, pages, text, GuardedPages::kUnits / 2 - behind);
  }
}

TEST(TypedText, ReadsWordsOfAnyGenerationAlike) {
  std::array<const BlockLoops*, 4> loops{};
  const std::size_t count = UsableBlockLoops(loops.data(), loops.size());
  const Units known = TextOf(2 * kTypedStep);
  Units counts(kTypedStep, 0);
  std::fill_n(counts.begin(), 5, static_cast<TCHAR>(0xFFFF));
  for (std::size_t k = 0; k < count; ++k) {
    for (std::size_t i = 0; i < known.size(); ++i) {
      Units other = known;
      other[i] = 'a';
      EXPECT_EQ(loops[k]->is_typed(other.c_str(), known.c_str(), kTypedStep, counts.c_str()),
                i >= kTypedStep + 5)
          << loops[k]->name << ' ' << i;
    }
    EXPECT_TRUE(loops[k]->is_typed(known.c_str(), known.c_str(), kTypedStep, counts.c_str()));
  }
}

TEST(TypedText, KnowsNoEmptyNullOrForgottenText) {
  TypedText typed;
  EXPECT_FALSE(typed.Is(nullptr));
  EXPECT_FALSE(typed.Is(_T("")));
  typed.Remember(TextView());
  EXPECT_FALSE(typed.Is(_T("")));
  typed.Remember(Units(_T("A")));
  EXPECT_FALSE(typed.Is(nullptr));
  EXPECT_TRUE(typed.Is(_T("A")));
  typed.Forget();
  EXPECT_FALSE(typed.Is(_T("A")));
}

// Longer than a page, which no formula is.
TEST(TypedText, KnowsATextOfMoreThanAPage) {
  const Units text = TextOf(3000);
  TypedText typed;
  typed.Remember(text);
  EXPECT_TRUE(typed.Is(Units(text).c_str()));
  EXPECT_FALSE(typed.Is(Units(text, 1).c_str()));
}

}  // namespace
}  // namespace lorv::test
