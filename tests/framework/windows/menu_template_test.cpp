#include "framework/windows/menu_template.h"

#include <gtest/gtest.h>

#include <random>

#include "framework/text/cstring.h"

namespace {

void Put(std::string& bytes, unsigned number, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

void PutText(std::string& bytes, const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i) Put(bytes, static_cast<unsigned>(text.GetAt(i)), 2);
  Put(bytes, 0, 2);
}

// A popup "梁" of a checked entry 40, a separator and a grey entry 41; then the entry 42 in a new column.
std::string ShortTemplate() {
  std::string bytes;
  Put(bytes, 0, 4);
  Put(bytes, 0x10, 2);
  PutText(bytes, _T("梁"));
  for (const unsigned options : {0x08U, 0U, 0x81U}) {
    Put(bytes, options, 2);
    Put(bytes, options == 8 ? 40 : (options == 0 ? 0 : 41), 2);
    PutText(bytes, options == 0 ? _T("") : _T("C30"));
  }
  Put(bytes, 0xA0, 2);
  Put(bytes, 42, 2);
  PutText(bytes, _T("板"));
  return bytes;
}

void PutLong(std::string& bytes, unsigned type, unsigned state, unsigned id, unsigned marks, LPCTSTR text) {
  while (bytes.size() % 4 != 0) bytes += '\0';
  Put(bytes, type, 4);
  Put(bytes, state, 4);
  Put(bytes, id, 4);
  Put(bytes, marks, 2);
  PutText(bytes, text);
}

std::string LongForm() {
  std::string bytes;
  Put(bytes, 1, 2);
  Put(bytes, 4, 2);
  Put(bytes, 0, 4);
  PutLong(bytes, 0, 0, 7, 1, _T("梁"));
  while (bytes.size() % 4 != 0) bytes += '\0';
  Put(bytes, 0, 4);
  PutLong(bytes, 0, 8, 40, 0, _T("C30"));
  PutLong(bytes, 0x800, 0, 0, 0, _T(""));
  PutLong(bytes, 0, 3, 41, 0x80, _T("C30"));
  PutLong(bytes, 0x20, 0, 42, 0x80, _T("板"));
  return bytes;
}

void ExpectTheMenu(const lorv::MenuModel& menu, UINT grey) {
  ASSERT_EQ(menu.entries.size(), 2U);
  EXPECT_EQ(menu.entries[0].text, CString(_T("梁")));
  ASSERT_NE(menu.entries[0].submenu, nullptr);
  const auto& below = menu.entries[0].submenu->entries;
  ASSERT_EQ(below.size(), 3U);
  EXPECT_EQ(below[0].id, 40U);
  EXPECT_EQ(below[0].flags, static_cast<UINT>(MF_CHECKED));
  EXPECT_NE(below[1].flags & MF_SEPARATOR, 0U);
  EXPECT_EQ(below[2].flags, grey);
  EXPECT_EQ(menu.entries[1].id, 42U);
  EXPECT_EQ(menu.entries[1].flags, static_cast<UINT>(MF_MENUBARBREAK));
}

}  // namespace

TEST(MenuTemplate, BothFormsGiveTheMenu) {
  const auto short_menu = lorv::ParseMenuTemplate(ShortTemplate());
  ASSERT_TRUE(short_menu.has_value());
  ExpectTheMenu(*short_menu, MF_GRAYED);
  const auto long_menu = lorv::ParseMenuTemplate(LongForm());
  ASSERT_TRUE(long_menu.has_value());
  ExpectTheMenu(*long_menu, MF_GRAYED | MF_DISABLED);
}

TEST(MenuTemplate, CutBytesAreRefused) {
  for (const std::string& whole : {ShortTemplate(), LongForm()})
    for (std::size_t size = 0; size < whole.size(); ++size)
      EXPECT_FALSE(lorv::ParseMenuTemplate(whole.substr(0, size)).has_value()) << size;
  std::string other = ShortTemplate();
  other[0] = 2;
  EXPECT_FALSE(lorv::ParseMenuTemplate(other).has_value());
}

TEST(MenuTemplate, DepthHasALimit) {
  const auto nested = [](int depth) {
    std::string bytes;
    Put(bytes, 0, 4);
    for (int i = 1; i < depth; ++i) {
      Put(bytes, 0x90, 2);
      PutText(bytes, _T("a"));
    }
    Put(bytes, 0x80, 2);
    Put(bytes, 5, 2);
    PutText(bytes, _T("b"));
    return bytes;
  };
  EXPECT_TRUE(lorv::ParseMenuTemplate(nested(lorv::kMaxMenuDepth - 1)).has_value());
  EXPECT_TRUE(lorv::ParseMenuTemplate(nested(lorv::kMaxMenuDepth)).has_value());
  EXPECT_FALSE(lorv::ParseMenuTemplate(nested(lorv::kMaxMenuDepth + 1)).has_value());
  EXPECT_FALSE(lorv::ParseMenuTemplate(nested(100000)).has_value());
}

TEST(MenuTemplate, RandomBytesEnd) {
  std::mt19937 random(7);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes = round % 2 == 0 ? ShortTemplate() : LongForm();
    for (int i = 0; i < 3; ++i) bytes[random() % bytes.size()] = static_cast<char>(random());
    static_cast<void>(lorv::ParseMenuTemplate(bytes));
  }
}
