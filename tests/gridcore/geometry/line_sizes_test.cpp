#include "gridcore/geometry/line_sizes.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

#include "tests/support/whole_number_limits.h"

namespace {

using lorv::LineSizes;

// What LineSizes promises, by the plainest means.
class PlainSizes {
 public:
  void Insert(int before, int count, int size) {
    const auto at = sizes_.begin() + std::clamp(before, 0, static_cast<int>(sizes_.size()));
    sizes_.insert(at, static_cast<std::size_t>(std::max(count, 0)), std::max(size, 0));
  }
  void Remove(int first, int count) {
    for (int i = 0; i < count; ++i)
      if (first >= 0 && first < static_cast<int>(sizes_.size())) sizes_.erase(sizes_.begin() + first);
  }
  void SetSize(int first, int count, int size) {
    for (int line = first; line < first + count; ++line)
      if (line >= 0 && line < static_cast<int>(sizes_.size())) sizes_[static_cast<std::size_t>(line)] = size;
  }
  std::int64_t OffsetOf(int line) const {
    return std::accumulate(sizes_.begin(), sizes_.begin() + line, std::int64_t{0});
  }
  int LineAt(std::int64_t offset) const {
    if (offset < 0) return -1;
    for (int line = 0; line < Count(); ++line) {
      if (offset < sizes_[static_cast<std::size_t>(line)]) return line;
      offset -= sizes_[static_cast<std::size_t>(line)];
    }
    return -1;
  }
  int Count() const { return static_cast<int>(sizes_.size()); }
  int SizeOf(int line) const { return sizes_[static_cast<std::size_t>(line)]; }

 private:
  std::vector<int> sizes_;
};

void ExpectSame(const LineSizes& lines, const PlainSizes& plain, std::mt19937& random) {
  ASSERT_EQ(lines.Count(), plain.Count());
  ASSERT_EQ(lines.Total(), plain.OffsetOf(plain.Count()));
  for (int i = 0; i < 4 && plain.Count() > 0; ++i) {
    const int line = static_cast<int>(random() % static_cast<unsigned>(plain.Count()));
    ASSERT_EQ(lines.SizeOf(line), plain.SizeOf(line)) << "line " << line;
    ASSERT_EQ(lines.OffsetOf(line), plain.OffsetOf(line)) << "line " << line;
    const auto offset =
        static_cast<std::int64_t>(random() % static_cast<unsigned>(plain.OffsetOf(plain.Count()) + 2));
    ASSERT_EQ(lines.LineAt(offset), plain.LineAt(offset)) << "offset " << offset;
  }
}

}  // namespace

TEST(LineSizes, HeaderExample) {
  LineSizes rows;
  rows.Insert(0, 100, 20);
  rows.SetSize(3, 1, 50);
  EXPECT_EQ(rows.OffsetOf(4), 110);
  EXPECT_EQ(rows.LineAt(109), 3);
}

TEST(LineSizes, EmptyTableHasNoLines) {
  const LineSizes rows;
  EXPECT_EQ(rows.Count(), 0);
  EXPECT_EQ(rows.Total(), 0);
  EXPECT_EQ(rows.LineAt(0), -1);
  EXPECT_EQ(rows.OffsetOf(0), 0);
  EXPECT_EQ(rows.SizeOf(0), 0);
}

TEST(LineSizes, EdgesOfLinesBelongToTheNextLine) {
  LineSizes rows;
  rows.Insert(0, 2, 20);
  EXPECT_EQ(rows.LineAt(19), 0);
  EXPECT_EQ(rows.LineAt(20), 1);
  EXPECT_EQ(rows.LineAt(39), 1);
  EXPECT_EQ(rows.LineAt(40), -1);
  EXPECT_EQ(rows.LineAt(-1), -1);
}

TEST(LineSizes, HiddenLinesAreNeverHit) {
  LineSizes rows;
  rows.Insert(0, 6, 10);
  rows.SetSize(0, 2, 0);
  rows.SetSize(3, 1, 0);
  rows.SetSize(5, 1, 0);
  EXPECT_EQ(rows.Total(), 20);
  EXPECT_EQ(rows.LineAt(0), 2);
  EXPECT_EQ(rows.LineAt(10), 4);
  EXPECT_EQ(rows.LineAt(20), -1);
}

TEST(LineSizes, WhollyHiddenTableHasNoPixels) {
  LineSizes rows;
  rows.Insert(0, 1000, 0);
  EXPECT_EQ(rows.Total(), 0);
  EXPECT_EQ(rows.LineAt(0), -1);
  EXPECT_EQ(rows.OffsetOf(999), 0);
}

TEST(LineSizes, NumbersBeyondTheTableAreCut) {
  LineSizes rows;
  rows.Insert(kMost, 3, -7);
  rows.Insert(kLeast, 2, 5);
  EXPECT_EQ(rows.Count(), 5);
  EXPECT_EQ(rows.SizeOf(1), 5);
  EXPECT_EQ(rows.SizeOf(2), 0);
  rows.SetSize(4, kMost, 9);
  rows.SetSize(kLeast, kMost, 8);
  EXPECT_EQ(rows.SizeOf(4), 9);
  EXPECT_EQ(rows.SizeOf(0), 5);
  rows.Remove(3, kMost);
  rows.Remove(-5, 2);
  rows.Remove(0, -1);
  EXPECT_EQ(rows.Count(), 3);
  EXPECT_EQ(rows.OffsetOf(kMost), rows.Total());
  EXPECT_EQ(rows.OffsetOf(kLeast), 0);
  EXPECT_EQ(rows.SizeOf(-1), 0);
}

TEST(LineSizes, AsManyLinesAsNumbersOfTheLargestSize) {
  LineSizes rows;
  rows.Insert(0, kMost, kMost);
  rows.Insert(0, 1, kMost);
  EXPECT_EQ(rows.Count(), kMost);
  EXPECT_EQ(rows.Total(), std::int64_t{kMost} * kMost);
  EXPECT_EQ(rows.LineAt(rows.Total() - 1), kMost - 1);
  rows.SetSize(kMost / 2, 1, 1);
  EXPECT_EQ(rows.OffsetOf(kMost), rows.Total());
  EXPECT_EQ(rows.LineAt(rows.Total() - 1), kMost - 1);
}

TEST(LineSizes, ClearedTableBeginsAnew) {
  LineSizes rows;
  rows.Insert(0, 5, 5);
  rows.Clear();
  rows.Insert(0, 1, 7);
  EXPECT_EQ(rows.Total(), 7);
  EXPECT_EQ(rows.LineAt(6), 0);
}

TEST(LineSizes, AnyChangesGiveWhatAPlainListGives) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    std::mt19937 random(seed);
    LineSizes lines;
    PlainSizes plain;
    const int sizes[] = {0, 18, 20, 20, 20, 33};
    for (int step = 0; step < 600; ++step) {
      const int line = static_cast<int>(random() % static_cast<unsigned>(plain.Count() + 3)) - 1;
      const int count = random() % 8 == 0 ? static_cast<int>(random() % 700) : static_cast<int>(random() % 3);
      const int size = sizes[random() % 6];
      switch (random() % 5) {
        case 0:
        case 1:
          lines.Insert(line, count, size);
          plain.Insert(line, count, size);
          break;
        case 2:
          lines.Remove(line, line < 0 ? 0 : count);
          plain.Remove(line, line < 0 ? 0 : count);
          break;
        default:
          lines.SetSize(line, line < 0 ? 0 : count, size);
          plain.SetSize(line, line < 0 ? 0 : count, size);
      }
      ExpectSame(lines, plain, random);
      if (HasFatalFailure()) FAIL() << "seed " << seed << ", step " << step;
    }
  }
}
