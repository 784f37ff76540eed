#include "gridcore/rows/packed_values.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using lorv::PackedValues;

std::string Shown(const _variant_t& value) {
  const bool no_text = value.vt == VT_BSTR && value.bstrVal == nullptr;
  return std::to_string(value.vt) + ":" + (no_text ? "none" : CString(_bstr_t(value).View()).ToUtf8());
}

// The same values in a plain vector.
void ExpectSame(const PackedValues& values, const std::vector<_variant_t>& plain) {
  ASSERT_EQ(values.Count(), static_cast<int>(plain.size()));
  for (int index = 0; index < values.Count(); ++index) {
    const _variant_t& wanted = plain[static_cast<std::size_t>(index)];
    ASSERT_EQ(values.TypeOf(index), wanted.vt) << index;
    ASSERT_EQ(Shown(values.Copy(index)), Shown(wanted)) << index;
    const lorv::TextView text = wanted.vt == VT_BSTR ? lorv::TextOfBstr(wanted.bstrVal) : lorv::TextView();
    ASSERT_EQ(values.TextOf(index), text) << index;
  }
}

}  // namespace

TEST(PackedValues, HeaderExample) {
  PackedValues values;
  values.Resize(2);
  values.Set(1, _variant_t(_T("C30")));
  EXPECT_EQ(values.TextOf(1), _T("C30"));
}

TEST(PackedValues, TakesPlainKindsAndTextsOfSomeLength) {
  EXPECT_TRUE(PackedValues::Takes(_variant_t()));
  EXPECT_TRUE(PackedValues::Takes(_variant_t(1.5)));
  EXPECT_TRUE(PackedValues::Takes(_variant_t(0.0, VT_DATE)));
  EXPECT_TRUE(PackedValues::Takes(_variant_t(true)));
  EXPECT_FALSE(PackedValues::Takes(_variant_t(static_cast<IUnknown*>(nullptr))));
  const CString most(_T('x'), static_cast<int>(PackedValues::kMostUnits));
  EXPECT_TRUE(PackedValues::Takes(_variant_t(most)));
  EXPECT_FALSE(PackedValues::Takes(_variant_t(most + _T("x"))));
}

TEST(PackedValues, KeepsAnEmptyTextAndNoTextApart) {
  PackedValues values;
  values.Resize(2);
  values.Set(0, _variant_t(_T("")));
  _variant_t none;
  none.vt = VT_BSTR;
  none.bstrVal = nullptr;
  values.Set(1, none);
  EXPECT_NE(values.Copy(0).bstrVal, nullptr);
  EXPECT_EQ(values.Copy(1).bstrVal, nullptr);
  EXPECT_EQ(values.Copy(1).vt, VT_BSTR);
}

TEST(PackedValues, KeepsZeroUnitsAndLoneSurrogates) {
  const TCHAR units[] = {0xD800, 0, u'a', 0};
  PackedValues values;
  values.Add(_variant_t(CString(units, 4)));
  EXPECT_EQ(values.TextOf(0), lorv::TextView(units, 4));
  EXPECT_EQ(lorv::TextOfBstr(values.Copy(0).bstrVal), lorv::TextView(units, 4));
}

// Texts that grow, shrink and come back, so that places are used again, dropped and moved; numbers between.
TEST(PackedValues, AreThoseOfAPlainVectorThroughRandomWork) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    std::mt19937 random(seed);
    const auto below = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    PackedValues values;
    std::vector<_variant_t> plain;
    const auto any_value = [&]() -> _variant_t {
      if (below(5) == 0) return _variant_t(below(100) / 8.0);
      if (below(9) == 0) return {};
      const int lengths[] = {0, 1, 3, 8, 9, 40, 900};
      return _variant_t(CString(static_cast<TCHAR>(u'a' + below(26)), lengths[below(7)]));
    };
    for (int step = 0; step < 120; ++step) {
      const int count = values.Count();
      const int what = below(12);
      if (what == 0 && count < 30) {
        plain.resize(plain.size() + 3);
        values.Resize(count + 3);
      } else if (what == 1 && count > 2) {
        plain.resize(plain.size() - 2);
        values.Resize(count - 2);
      } else if (what == 2) {
        plain.push_back(any_value());
        values.Add(plain.back());
      } else if (what == 3) {
        values.Reserve(below(40), static_cast<unsigned>(below(50)));
      } else if (what == 4 && count > 0) {
        const int from = below(count);
        const int to = below(count);
        const _variant_t moved = plain[static_cast<std::size_t>(from)];
        plain.erase(plain.begin() + from);
        plain.insert(plain.begin() + to, moved);
        values.Move(from, to);
      } else if (what == 5 && below(20) == 0) {
        plain.clear();
        values.Clear();
      } else if (count > 0) {
        const int index = below(count);
        plain[static_cast<std::size_t>(index)] = any_value();
        values.Set(index, plain[static_cast<std::size_t>(index)]);
      }
      ExpectSame(values, plain);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}
