#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "comm/AdLorvComm.h"
#include "comm/list_access.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Comm = CAdLorvComm;
using Texts = std::vector<std::string>;

// Every operation that exists for both kinds of list is tested on both.
template <class List>
class StringList : public testing::Test {
 protected:
  static List Make(const Texts& texts) {
    List list;
    for (const std::string& text : texts) list.Add(CString::FromUtf8(text));
    return list;
  }
  static Texts Read(const List& list) {
    Texts texts;
    for (int i = 0; i < CountOf(list); ++i) texts.push_back(Utf8(ElementOf(list, i)));
    return texts;
  }
};

using BothKinds = testing::Types<CStringArray, Comm::TextList>;
TYPED_TEST_SUITE(StringList, BothKinds);

TYPED_TEST(StringList, ParseKeepsEmptyPieces) {
  const struct {
    LPCTSTR text;
    Texts pieces;
  } cases[] = {
      {_T("a;b;"), {"a", "b"}},
      {_T(";a"), {"", "a"}},
      {_T("a;;b"), {"a", "", "b"}},
      {_T("a;"), {"a"}},
      {_T(";"), {""}},
      {_T(";;"), {"", ""}},
      {_T("a"), {"a"}},
      {_T("墙;梁"), {"墙", "梁"}},
      {_T(" a ; b"), {" a ", " b"}},
      {_T("；;"), {"；"}},
  };
  for (const auto& c : cases) {
    TypeParam list = this->Make({"old", "older", "oldest", "first"});
    EXPECT_EQ(Comm::ParseStringToArray(c.text, list, _T(';')), static_cast<int>(c.pieces.size()))
        << Utf8(c.text);
    EXPECT_EQ(this->Read(list), c.pieces) << Utf8(c.text);
  }
}

TYPED_TEST(StringList, ParseOfTheEmptyTextLeavesTheList) {
  TypeParam list = this->Make({"old"});
  EXPECT_EQ(Comm::ParseStringToArray(_T(""), list, _T(';')), 0);
  EXPECT_EQ(this->Read(list), Texts{"old"});
}

TYPED_TEST(StringList, ParseTakesAnElementOfItsOwnList) {
  TypeParam list = this->Make({"x", "a;b;c"});
  EXPECT_EQ(Comm::ParseStringToArray(ElementOf(list, 1), list, _T(';')), 3);
  EXPECT_EQ(this->Read(list), (Texts{"a", "b", "c"}));
}

TYPED_TEST(StringList, DivideByOneCharacterEmptiesAndKeepsEmptyPieces) {
  TypeParam list = this->Make({"old"});
  EXPECT_EQ(Comm::DivideString(_T("a;;b"), _T(";"), list), 3);
  EXPECT_EQ(this->Read(list), (Texts{"a", "", "b"}));
  EXPECT_EQ(Comm::DivideString(_T(""), _T(";"), list), 0);
  EXPECT_EQ(this->Read(list), (Texts{"a", "", "b"}));
}

TYPED_TEST(StringList, DivideByMoreAppendsAndDropsEmptyPieces) {
  const struct {
    LPCTSTR text;
    LPCTSTR separator;
    Texts pieces;
  } cases[] = {
      {_T("a;;;;b"), _T(";;"), {"a", "b"}},
      {_T("abc"), _T(";;"), {"abc"}},
      {_T(""), _T(";;"), {}},
      {_T(";;"), _T(";;"), {}},
      {_T(";;a"), _T(";;"), {"a"}},
      {_T("a;;"), _T(";;"), {"a"}},
      {_T("a;;;b"), _T(";;"), {"a", ";b"}},
      {_T("a;b"), _T(";;"), {"a;b"}},
      {_T(";"), _T(";;"), {";"}},
      {_T("一与二与与三"), _T("与与"), {"一与二", "三"}},
      {_T("a b"), _T(""), {"a b"}},
      {_T(""), _T(""), {}},
  };
  for (const auto& c : cases) {
    TypeParam list = this->Make({"old"});
    EXPECT_EQ(Comm::DivideString(c.text, c.separator, list), static_cast<int>(c.pieces.size()))
        << Utf8(c.text);
    Texts expected = {"old"};
    expected.insert(expected.end(), c.pieces.begin(), c.pieces.end());
    EXPECT_EQ(this->Read(list), expected) << Utf8(c.text);
  }
}

TYPED_TEST(StringList, DivideTakesElementsOfItsOwnList) {
  TypeParam list = this->Make({"a--b", "--"});
  EXPECT_EQ(Comm::DivideString(ElementOf(list, 0), ElementOf(list, 1), list), 2);
  EXPECT_EQ(this->Read(list), (Texts{"a--b", "--", "a", "b"}));
}

TYPED_TEST(StringList, ConnectTrimsAndEndsInASeparator) {
  CString text(_T("old"));
  EXPECT_EQ(Comm::ConnectString(text, _T(","), this->Make({" a ", "b"})), 2);
  EXPECT_EQ(Utf8(text), "a,b,");
  EXPECT_EQ(Comm::ConnectString(text, _T(", "), this->Make({"\t\r\n", "x y"})), 2);
  EXPECT_EQ(Utf8(text), ", x y, ");
  EXPECT_EQ(Comm::ConnectString(text, _T(","), this->Make({})), 0);
  EXPECT_EQ(Utf8(text), "");
}

TYPED_TEST(StringList, ConnectMayWriteIntoItsSeparator) {
  CString text(_T(","));
  EXPECT_EQ(Comm::ConnectString(text, text, this->Make({"a", "b"})), 2);
  EXPECT_EQ(Utf8(text), "a,b,");
}

TYPED_TEST(StringList, AssemblePutsSeparatorsBetween) {
  const struct {
    Texts list;
    LPCTSTR separator;
    const char* text;
  } cases[] = {
      {{"a", "b"}, _T(","), "a,b"},
      {{"#a", "b"}, _T(","), "a,b"},
      {{"a", "b&"}, _T(","), "a,b"},
      {{"a", "#b", "c"}, _T(","), "a,#b,c"},
      {{"", "a", ""}, _T(","), "a"},
      {{"a", "", "b"}, _T(","), "a,,b"},
      {{" a ", " b "}, _T(","), " a , b "},
      {{"a,b", "c"}, _T(","), "a,b,c"},
      {{}, _T(","), ""},
      {{"$", "%"}, _T(","), ""},
      {{"a", "b"}, _T(" 与 "), "a 与 b"},
      {{"a", "b"}, _T(""), "ab"},
      {{"a", "b"}, nullptr, "ab"},
  };
  for (const auto& c : cases) {
    CString text(_T("old"));
    EXPECT_TRUE(Comm::AssembleStringArr(text, c.separator, this->Make(c.list)));
    EXPECT_EQ(Utf8(text), c.text) << testing::PrintToString(c.list);
  }
}

TYPED_TEST(StringList, FoundByExactTextOrWithoutCase) {
  const TypeParam list = this->Make({"kl1", "KL1", "墙", "KL1"});
  int index = 7;
  EXPECT_TRUE(Comm::IsStringInArray(_T("KL1"), list, index, true));
  EXPECT_EQ(index, 1);
  EXPECT_TRUE(Comm::IsStringInArray(_T("KL1"), list, index, false));
  EXPECT_EQ(index, 0);
  EXPECT_TRUE(Comm::IsStringInArray(_T("墙"), list, index, true));
  EXPECT_EQ(index, 2);
  EXPECT_FALSE(Comm::IsStringInArray(_T("KL"), list, index, false));
  EXPECT_EQ(index, -1);
}

TYPED_TEST(StringList, ModifyMakesOneEdit) {
  const struct {
    LPCTSTR text;
    bool remove;
    bool add;
    bool exact;
    bool found;
    Texts left;
  } cases[] = {
      {_T("a"), true, true, true, true, {"b", "a"}},
      {_T("c"), true, true, true, false, {"a", "b", "a", "c"}},
      {_T("a"), false, true, true, true, {"a", "b", "a"}},
      {_T("c"), true, false, true, false, {"a", "b", "a"}},
      {_T("B"), true, false, false, true, {"a", "a"}},
      {_T("B"), true, true, true, false, {"a", "b", "a", "B"}},
  };
  for (const auto& c : cases) {
    TypeParam list = this->Make({"a", "b", "a"});
    EXPECT_EQ(Comm::ModifyIsStringInArray(c.text, list, c.remove, c.add, c.exact), c.found) << Utf8(c.text);
    EXPECT_EQ(this->Read(list), c.left) << Utf8(c.text);
  }
}

TYPED_TEST(StringList, ModifyMayRemoveTheElementItWasGiven) {
  TypeParam list = this->Make({"a", "b"});
  EXPECT_TRUE(Comm::ModifyIsStringInArray(ElementOf(list, 0), list, true, true, true));
  EXPECT_EQ(this->Read(list), Texts{"b"});
}

CStringArray MakeList(const Texts& texts) {
  CStringArray list;
  for (const std::string& text : texts) list.Add(CString::FromUtf8(text));
  return list;
}

Texts ReadList(const CStringArray& list) {
  Texts texts;
  for (const CString& text : list) texts.push_back(Utf8(text));
  return texts;
}

TEST(StringListFirst, ComesFromDivideString) {
  EXPECT_EQ(Utf8(Comm::GetFirstDiviedString(_T("a;b"), _T(";"))), "a");
  EXPECT_EQ(Utf8(Comm::GetFirstDiviedString(_T(";b"), _T(";"))), "");
  EXPECT_EQ(Utf8(Comm::GetFirstDiviedString(_T(";;b"), _T(";;"))), "b");
  EXPECT_EQ(Utf8(Comm::GetFirstDiviedString(_T(""), _T(";"))), "");
  EXPECT_EQ(Utf8(Comm::GetFirstDiviedString(_T(";;"), _T(";;"))), "");
  EXPECT_EQ(Utf8(Comm::GetFirstDiviedString(_T("abc"), _T(";;"))), "abc");
}

TEST(StringListReplace, SetsEqualElementsFromTheFirstIndexOn) {
  const struct {
    int first;
    int changed;
    Texts left;
  } cases[] = {
      {0, 2, {"n", "A", "n"}}, {1, 1, {"a", "A", "n"}},  {2, 1, {"a", "A", "n"}},
      {3, 0, {"a", "A", "a"}}, {-1, 2, {"n", "A", "n"}}, {0x7FFFFFFF, 0, {"a", "A", "a"}},
  };
  for (const auto& c : cases) {
    CStringArray list = MakeList({"a", "A", "a"});
    EXPECT_EQ(Comm::ReplaceStringInArr(_T("n"), _T("a"), list, c.first), c.changed) << c.first;
    EXPECT_EQ(ReadList(list), c.left) << c.first;
  }
}

TEST(StringListReplace, OldTextMayBeAnElement) {
  CStringArray list = MakeList({"a", "b", "a"});
  EXPECT_EQ(Comm::ReplaceStringInArr(list[1], list[0], list, 0), 2);
  EXPECT_EQ(ReadList(list), (Texts{"b", "b", "b"}));
}

TEST(StringListReverse, TurnsTheListRound) {
  CStringArray list = MakeList({"a", "b", "c"});
  Comm::ReverseStrArray(list);
  EXPECT_EQ(ReadList(list), (Texts{"c", "b", "a"}));
  CStringArray empty;
  Comm::ReverseStrArray(empty);
  EXPECT_EQ(empty.GetSize(), 0);
}

}  // namespace
}  // namespace lorv
