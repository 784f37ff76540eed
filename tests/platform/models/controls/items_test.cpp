#include "platform/models/controls/items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "platform/models/message_values.h"
#include "tests/support/print.h"

namespace {

using lorv::test::Utf8;

// A plain store, as a peer has one.
class Store {
 public:
  int Count() const { return static_cast<int>(rows_.size()); }
  CString Text(int index) const { return rows_.at(static_cast<std::size_t>(index)).text; }
  void Put(int index, const CString& text) { rows_.insert(rows_.begin() + index, {text, 0}); }
  void Remove(int index) { rows_.erase(rows_.begin() + index); }
  void Clear() { rows_.clear(); }
  LPARAM Data(int index) const { return rows_.at(static_cast<std::size_t>(index)).data; }
  void SetData(int index, LPARAM data) { rows_.at(static_cast<std::size_t>(index)).data = data; }

 private:
  struct Row {
    CString text;
    LPARAM data;
  };
  std::vector<Row> rows_;
};

using Items = lorv::Items<Store>;

Items With(std::initializer_list<LPCTSTR> texts, bool sorted = false) {
  Items items(sorted, Store());
  for (const LPCTSTR text : texts) items.Add(text);
  return items;
}

std::string Listed(const Items& items) {
  std::string all;
  for (int i = 0; i < items.Count(); ++i) all += Utf8(items.Text(i)) + ",";
  return all;
}

}  // namespace

TEST(Items, AddedOnesComeLastOrInTheirOrder) {
  EXPECT_EQ(Listed(With({_T("b"), _T("A"), _T("c")})), "b,A,c,");
  EXPECT_EQ(Listed(With({_T("b"), _T("A"), _T("c"), _T("B")}, true)), "A,b,B,c,");
}

TEST(Items, InsertedOnesStandWhereTheyAreNamed) {
  Items items = With({_T("a"), _T("c")}, true);
  EXPECT_EQ(items.Insert(0, _T("z")), 0);
  EXPECT_EQ(items.Insert(-1, _T("b")), 3);
  EXPECT_EQ(Listed(items), "z,a,c,b,");
  for (const int index : {-2, 5, std::numeric_limits<int>::max()})
    EXPECT_EQ(items.Insert(index, _T("x")), -1) << index;
  EXPECT_EQ(items.Count(), 4);
}

TEST(Items, TheChoiceStaysWithItsItem) {
  Items items = With({_T("a"), _T("b"), _T("c")});
  items.chosen = 1;
  items.Insert(0, _T("x"));
  EXPECT_EQ(items.chosen, 2);
  items.Insert(2, _T("y"));
  EXPECT_EQ(items.chosen, 3);
  items.Insert(4, _T("z"));
  EXPECT_EQ(items.chosen, 3);
  EXPECT_EQ(Utf8(items.Text(items.chosen)), "b");
  EXPECT_EQ(items.Delete(0), 5);
  EXPECT_EQ(items.chosen, 2);
  EXPECT_EQ(items.Delete(4), 4);
  EXPECT_EQ(items.chosen, 2);
  EXPECT_EQ(items.Delete(2), 3);
  EXPECT_EQ(items.chosen, -1);
}

TEST(Items, ClearingTakesTheChoiceAlong) {
  Items items = With({_T("a")});
  items.chosen = 0;
  items.Clear();
  EXPECT_EQ(items.Count(), 0);
  EXPECT_EQ(items.chosen, -1);
  EXPECT_EQ(items.Find(-1, _T("a"), false), -1);
  EXPECT_EQ(items.Delete(0), -1);
}

TEST(Items, SearchesGoAroundFromBehindAPlace) {
  const Items items = With({_T("KL1"), _T("kl12"), _T("W"), _T("KL1")});
  EXPECT_EQ(items.Find(-1, _T("kl"), false), 0);
  EXPECT_EQ(items.Find(0, _T("kl"), false), 1);
  EXPECT_EQ(items.Find(1, _T("kl1"), true), 3);
  EXPECT_EQ(items.Find(3, _T("kl1"), true), 0);
  EXPECT_EQ(items.Find(99, _T("w"), true), 2);  // a place that is not counts as the beginning
  EXPECT_EQ(items.Find(2, _T("w"), true), 2);   // all the way around to where it began
  EXPECT_EQ(items.Find(-1, _T("x"), false), -1);
  // Everything begins with the empty text, nothing is equal to it.
  EXPECT_EQ(items.Find(1, _T(""), false), 2);
  EXPECT_EQ(items.Find(1, _T(""), true), -1);
  EXPECT_EQ(items.Find(1, nullptr, false), 2);
}

TEST(Items, NumbersAreKeptByItem) {
  Items items = With({_T("a"), _T("b")});
  EXPECT_EQ(items.SetData(1, 77), 0);
  items.Insert(0, _T("x"));
  EXPECT_EQ(items.Data(2), 77);
  EXPECT_EQ(items.Data(0), 0);
  EXPECT_EQ(items.SetData(3, 1), -1);
  EXPECT_EQ(items.Data(-1), -1);
}

TEST(Items, TextsAreCopiedWhole) {
  const Items items = With({_T("梁a")});
  TCHAR room[4] = {9, 9, 9, 9};
  EXPECT_EQ(items.Copy(0, room), 2);
  EXPECT_EQ(Utf8(room), "梁a");
  EXPECT_EQ(room[3], 9);
  EXPECT_EQ(items.Copy(1, room), -1);
  EXPECT_EQ(items.Copy(0, nullptr), -1);
  EXPECT_EQ(items.Length(0), 2);
  EXPECT_EQ(items.Length(1), -1);
}

// One answer under the numbers of lists and of drop-down lists.
TEST(Items, AnswerTheMessagesOfBothKinds) {
  for (const lorv::ItemMessages& numbers : {lorv::kListItems, lorv::kComboItems}) {
    Items items = With({});
    const auto ask = [&](UINT message, WPARAM w = 0, const void* l = nullptr) {
      return items.Answer(numbers, message, w, reinterpret_cast<LPARAM>(l)).value_or(-99);
    };
    EXPECT_EQ(ask(numbers.add, 0, _T("beam")), 0);
    EXPECT_TRUE(items.TakeChanged());
    EXPECT_FALSE(items.TakeChanged()) << "told once";
    EXPECT_EQ(ask(numbers.insert, 0, _T("wall")), 0);
    EXPECT_EQ(ask(numbers.count), 2);
    EXPECT_EQ(ask(numbers.length, 0), 4);
    TCHAR room[5] = {};
    EXPECT_EQ(ask(numbers.text, 0, room), 4);
    EXPECT_EQ(Utf8(room), "wall");
    EXPECT_EQ(ask(numbers.find, static_cast<WPARAM>(-1), _T("be")), 1);
    EXPECT_EQ(ask(numbers.find_whole, static_cast<WPARAM>(-1), _T("be")), -1);
    EXPECT_EQ(ask(numbers.set_data, 1, room), 0);
    EXPECT_EQ(ask(numbers.data, 1), reinterpret_cast<LRESULT>(room));
    items.TakeChanged();
    EXPECT_EQ(ask(WM_USER), -99);
    EXPECT_FALSE(items.TakeChanged()) << "nothing is another by a question";
    EXPECT_EQ(ask(numbers.remove, 0), 1);
    EXPECT_EQ(ask(numbers.clear), 0);
    EXPECT_EQ(items.Count(), 0);
    EXPECT_TRUE(items.TakeChanged());
  }
}

TEST(MessageValues, PlacesKeepTheirSign) {
  EXPECT_EQ(lorv::PointOf(MAKELPARAM(-3, -4)), CPoint(-3, -4));
  EXPECT_EQ(lorv::PointOf(MAKELPARAM(32767, -32768)), CPoint(32767, -32768));
}

TEST(MessageValues, CopiesNoMoreThanThereIsRoomFor) {
  TCHAR room[6];
  for (std::size_t size = 0; size <= 6; ++size) {
    std::fill(std::begin(room), std::end(room), static_cast<TCHAR>(9));
    const std::size_t copied = size == 0 ? 0 : std::min<std::size_t>(size - 1, 3);
    EXPECT_EQ(lorv::CopyOut(_T("abc"), room, size), static_cast<LRESULT>(copied)) << size;
    if (size > 0) {
      EXPECT_EQ(room[copied], 0) << size;
    }
    for (std::size_t i = size; i < 6; ++i) EXPECT_EQ(room[i], 9) << size;
  }
  EXPECT_EQ(lorv::CopyOut(_T("abc"), nullptr, 6), 0);
}
