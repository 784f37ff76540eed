#include "tools/lorv/text/typed_number.h"

#include <gtest/gtest.h>

namespace lorv::tool {
namespace {

TEST(WholeNumber, TakesNumbersOnly) {
  const struct {
    const char* text;
    double number;
  } good[] = {{"0", 0}, {"214.", 214}, {".5", .5}, {"3.24E-5", 3.24e-5}, {"-1.5", -1.5}, {"+2", 2}};
  for (const auto& row : good) EXPECT_EQ(WholeNumber(row.text), row.number) << row.text;
  for (const char* bad :
       {"", "-", "1,5", "1 000", "1.2.3", "inf", "nan", "1e999", "12mm", "0x10", "e5", "1e"}) {
    EXPECT_EQ(WholeNumber(bad), std::nullopt) << bad;
  }
}

TEST(NumberHint, NamesWhatACellWasLikelyMeantToBe) {
  const char* const rows[][2] = {{"3,5", "; a decimal comma? Write 3.5"},
                                 {"1,234,567", "; a thousands separator? Write 1234567"},
                                 {"1,234.5", "; a thousands separator? Write 1234.5"},
                                 {"1,234", "; a decimal comma or a thousands separator? Write 1.234 or 1234"},
                                 {"1.234,5", "; a decimal comma? Write 1234.5"},
                                 {"1 234", "; a thousands separator? Write 1234"},
                                 {"３．５", "; full-width digits? Write 3.5"},
                                 {"3.5m", "; a unit? Write 3.5 and set a factor in a row of kind \"column\""},
                                 {"3,5 m", ""},
                                 {"abc", ""}};
  for (const auto& row : rows) EXPECT_EQ(NumberHint(row[0]), row[1]) << row[0];
}

}  // namespace
}  // namespace lorv::tool
