#include "compress/lzari/lzari_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <utility>
#include <vector>

#include "compress/lzari/lzari_model_steps.h"
#include "compress/lzari/lzari_positions.h"

namespace lorv::lzari {
namespace {

// The model as it is described: counts in plain tables, sums made anew.
struct PlainModel {
  std::vector<int> frequency = std::vector<int>(kSymbols + 1, 1);
  std::vector<int> character = std::vector<int>(kSymbols + 1);

  PlainModel() {
    frequency[0] = 0;
    for (int s = 1; s <= kSymbols; ++s) character[static_cast<std::size_t>(s)] = s - 1;
  }
  std::uint32_t Cumulative(int symbol) const {
    std::uint32_t sum = 0;
    for (int i = symbol + 1; i <= kSymbols; ++i)
      sum += static_cast<std::uint32_t>(frequency[static_cast<std::size_t>(i)]);
    return sum;
  }
  void Update(int symbol) {
    if (Cumulative(0) >= static_cast<std::uint32_t>(kMaxCumulative)) {
      for (int& count : frequency) count = (count + 1) >> 1;
      frequency[0] = 0;
    }
    auto i = static_cast<std::size_t>(symbol);
    while (frequency[i] == frequency[i - 1]) --i;
    std::swap(character[i], character[static_cast<std::size_t>(symbol)]);
    ++frequency[i];
  }
};

void ExpectEqualModels(const SymbolModel& model, const PlainModel& plain) {
  std::uint32_t below = plain.Cumulative(0);
  for (int s = 1; s <= kSymbols; ++s) {
    const Share share = model.ShareOf(s);
    ASSERT_EQ(share.upper, below) << s;
    below -= static_cast<std::uint32_t>(plain.frequency[static_cast<std::size_t>(s)]);
    ASSERT_EQ(share.lower, below) << s;
    ASSERT_EQ(model.CharacterOf(s), plain.character[static_cast<std::size_t>(s)]) << s;
    ASSERT_EQ(model.SymbolOf(model.CharacterOf(s)), s);
  }
}

TEST(LzariModel, StartsWithEqualFrequencies) {
  SymbolModel model;
  model.StartModel();
  EXPECT_EQ(model.Total(), 314U);
  ExpectEqualModels(model, PlainModel());
}

TEST(LzariModel, EqualsThePlainTablesOverManyUpdatesAndHalvings) {
  std::mt19937 next(1);
  SymbolModel model;
  model.StartModel();
  PlainModel plain;
  for (int i = 0; i < 80000; ++i) {
    const int character = static_cast<int>(i % 3 == 0 ? next() % 314 : next() % 20);
    const int symbol = model.SymbolOf(character);
    model.UpdateModel(symbol);
    plain.Update(symbol);
    if (i % 977 == 0) ExpectEqualModels(model, plain);
  }
  ExpectEqualModels(model, plain);
}

TEST(LzariModel, OneSymbolOnlyReachesTheLimitAndIsHalved) {
  SymbolModel model;
  model.StartModel();
  for (int i = 314; i < kMaxCumulative; ++i) model.UpdateModel(model.SymbolOf('a'));
  EXPECT_EQ(model.Total(), 32767U);
  model.UpdateModel(model.SymbolOf('a'));
  EXPECT_EQ(model.Total(), 16541U) << "(32454 + 1) / 2 + 313, and one more";
}

TEST(LzariModel, FindsTheSymbolOfEveryPoint) {
  SymbolModel model;
  model.StartModel();
  for (int i = 0; i < 5000; ++i) model.UpdateModel(model.SymbolOf(i * i % 97));
  for (std::uint32_t x = 0; x < model.Total(); ++x) {
    const Share share = model.ShareOf(model.BinarySearchSym(x));
    ASSERT_TRUE(share.lower <= x && x < share.upper) << x;
  }
  for (const std::uint32_t x : {model.Total(), 40000U, 0xFFFFFFFFU})
    EXPECT_EQ(model.BinarySearchSym(x), 1) << x;
}

TEST(LzariModel, PositionSharesFavourNearOnes) {
  std::uint32_t total = 0;
  for (int p = 0; p < kWindow; ++p) {
    const Share share = PositionShare(p);
    ASSERT_EQ(share.upper - share.lower, 10000U / static_cast<std::uint32_t>(p + 201)) << p;
    total += share.upper - share.lower;
  }
  EXPECT_EQ(total, kPositionTotal);
}

TEST(LzariModel, FindsThePositionOfEveryPoint) {
  for (std::uint32_t x = 0; x < kPositionTotal; ++x) {
    const Share share = PositionShare(BinarySearchPos(x));
    ASSERT_TRUE(share.lower <= x && x < share.upper) << x;
  }
  EXPECT_EQ(BinarySearchPos(kPositionTotal), 0);
  EXPECT_EQ(BinarySearchPos(0xFFFFFFFFU), 0);
}

}  // namespace
}  // namespace lorv::lzari
