#include "platform/models/transfer/html_format.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using lorv::FragmentOfHtmlFormat;
using lorv::ToHtmlFormat;

TEST(HtmlFormat, HeaderExample) {
  EXPECT_EQ(FragmentOfHtmlFormat(ToHtmlFormat("<b>x</b>")), "<b>x</b>");
}

TEST(HtmlFormat, PositionsCountBytes) {
  const std::string data = ToHtmlFormat("<td>墙</td>");
  const std::size_t html = data.find("<html>");
  EXPECT_NE(
      data.find("StartHTML:" + std::string(10 - std::to_string(html).size(), '0') + std::to_string(html)),
      std::string::npos);
  EXPECT_EQ(FragmentOfHtmlFormat(data), "<td>墙</td>");
  EXPECT_EQ(FragmentOfHtmlFormat(ToHtmlFormat("")), "");
}

TEST(HtmlFormat, HeadersOfOthersAreReadToo) {
  EXPECT_EQ(FragmentOfHtmlFormat("Version:1.0\nStartFragment:49\nEndFragment:52\n.....abc..."), "abc");
}

TEST(HtmlFormat, LyingHeadersGiveWhatTheMarksEnclose) {
  const std::string marked = "<!--StartFragment-->abc<!--EndFragment-->";
  for (const char* header :
       {"StartFragment:999999\nEndFragment:1000000\n", "StartFragment:9\nEndFragment:3\n",
        "StartFragment:-4\nEndFragment:x\n", "StartFragment:99999999999999999999999\n", ""})
    EXPECT_EQ(FragmentOfHtmlFormat(header + marked), "abc") << header;
  EXPECT_EQ(FragmentOfHtmlFormat("<!--StartFragment-->abc"), "");
  EXPECT_EQ(FragmentOfHtmlFormat("abc"), "");
  EXPECT_EQ(FragmentOfHtmlFormat(""), "");
}

TEST(HtmlFormat, AnyBytesComeBack) {
  std::mt19937 random(31);
  for (int round = 0; round < 500; ++round) {
    std::string fragment(random() % 3000, ' ');
    for (char& unit : fragment) unit = static_cast<char>(random() % 256);
    // A fragment may even hold the marks themselves: the positions count.
    if (round % 3 == 0) fragment.insert(fragment.size() / 2, "<!--EndFragment-->");
    ASSERT_EQ(FragmentOfHtmlFormat(ToHtmlFormat(fragment)), fragment);
  }
}

TEST(HtmlFormat, ACutFormGivesNoMoreThanItHolds) {
  const std::string whole = ToHtmlFormat("<b>x</b>");
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string fragment = FragmentOfHtmlFormat(whole.substr(0, length));
    EXPECT_TRUE(fragment.empty() || fragment == "<b>x</b>") << length << ": " << fragment;
  }
}
