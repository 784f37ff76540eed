#include "prompts/prompts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/headless/services/headless_platform.h"
#include "prompts/prompt_lookup.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// A machine that records its message boxes, and Chinese again at the end.
class Prompts : public testing::Test {
 protected:
  ~Prompts() override { SetLanguageType(LANGUAGE_CHINESE); }

  // Every message shown so far as "text|caption|style", and forgets them.
  std::string Messages() {
    std::string all;
    for (const MessageRequest& message : machine_.dialogs.messages) {
      all += Utf8(message.text) + "|" + Utf8(message.caption) + "|" + std::to_string(message.style) + "\n";
    }
    machine_.dialogs.messages.clear();
    return all;
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

constexpr char kNoLanguage[] = "NO Languange|Languange Information|1\n";
constexpr char kNoInformation[] = "NO Information|Languange Information|1\n";

TEST_F(Prompts, LanguageIsChineseFromTheStartAndTakesAnyValue) {
  EXPECT_EQ(GetLanguageType(), 0);
  for (const int value : {1, 2, -1, 0x7FFFFFFF, 0}) {
    SetLanguageType(static_cast<LanguageType>(value));
    EXPECT_EQ(GetLanguageType(), value);
  }
  EXPECT_EQ(LANGUAGE_CHINESE, 0);
  EXPECT_EQ(LANGUAGE_ENGLISH, 1);
  EXPECT_EQ(sizeof(LanguageType), 4U);
}

TEST_F(Prompts, EachLookupNamesItsTable) {
  EXPECT_EQ(Utf8(CStInf::GetErrInf(static_cast<CStInf::ErrPompt>(1))), "其它");
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(static_cast<CObjClassInf::ErrPompt>(1))), "悬挑板");
  EXPECT_EQ(Utf8(PublicInf::GetPubInf(static_cast<PublicInf::PublicPropt>(1))), "退出");
  EXPECT_EQ(Utf8(PublicInf::GetErrInf(static_cast<PublicInf::ErrorPropt>(2))), "没有找到轴网");
  EXPECT_EQ(Utf8(PublicInf::GetShapeInf(static_cast<PublicInf::Shape>(1))), "圆形");
  EXPECT_EQ(Utf8(PublicInf::GetPtInf(static_cast<PublicInf::PointPrompt>(1))), "圆心");
  EXPECT_EQ(Utf8(TCompDrawInf::GetInf(static_cast<TCompDrawInf::DrawInformation>(1))), "请输入插入点");
  EXPECT_EQ(Utf8(SwicthInfo::GetSwitchInf(static_cast<SwicthInfo::ShowSwitch>(1))), "轴网隐藏\n");
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(Utf8(CStInf::GetErrInf(_T("其它"))), "other");
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(_T("悬挑板"))), "HCantileverSlab");
  EXPECT_EQ(Utf8(PublicInf::GetPubInf(_T("退出"))), "Exit");
  EXPECT_EQ(Utf8(PublicInf::GetErrInf(_T("没有找到轴网"))), "Find No Axis");
  EXPECT_EQ(Utf8(PublicInf::GetShapeInf(_T("圆形"))), "Circle");
  EXPECT_EQ(Utf8(PublicInf::GetPtInf(_T("圆心"))), "Center");
  EXPECT_EQ(Utf8(TCompDrawInf::GetInf(_T("请输入插入点"))), "Input Insert Point");
  EXPECT_EQ(Utf8(SwicthInfo::GetSwitchInf(_T("轴网隐藏\n"))), "\tHide Axis");
  EXPECT_EQ(Messages(), "");
}

TEST_F(Prompts, ChineseTextComesBackAsThePointerThatWasGiven) {
  const TCHAR unknown[] = _T("没有这一行");
  EXPECT_EQ(PublicInf::GetPubInf(unknown), unknown);
  const TCHAR known[] = _T("墙");
  EXPECT_EQ(CObjClassInf::GetInf(known), known);
  EXPECT_EQ(Messages(), "");
}

TEST_F(Prompts, EnglishGivesNullForAnUnknownTextWithoutAMessage) {
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(PublicInf::GetPubInf(_T("没有这一行")), nullptr);
  EXPECT_EQ(PublicInf::GetPubInf(_T("exit")), nullptr);  // the Chinese text is the key
  EXPECT_EQ(PublicInf::GetPubInf(_T("退出 ")), nullptr);
  EXPECT_EQ(PublicInf::GetShapeInf(_T("l形")), nullptr);  // letter case counts
  EXPECT_EQ(Utf8(PublicInf::GetShapeInf(_T("L形"))), "LShape");
  EXPECT_EQ(Messages(), "");
}

TEST_F(Prompts, NullTextGivesNullInBothLanguages) {
  EXPECT_EQ(CObjClassInf::GetInf(static_cast<LPCTSTR>(nullptr)), nullptr);
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(CObjClassInf::GetInf(static_cast<LPCTSTR>(nullptr)), nullptr);
  EXPECT_EQ(Messages(), "");
}

TEST_F(Prompts, OtherLanguagesGiveAMessageEachTime) {
  for (const int language : {2, 3, -1}) {
    SetLanguageType(static_cast<LanguageType>(language));
    EXPECT_EQ(PublicInf::GetPtInf(PublicInf::PointPrompt::Center), nullptr);
    EXPECT_EQ(Messages(), kNoLanguage);
    EXPECT_EQ(PublicInf::GetPtInf(_T("圆心")), nullptr);
    EXPECT_EQ(Messages(), kNoLanguage);
    EXPECT_EQ(PublicInf::GetPtInf(static_cast<LPCTSTR>(nullptr)), nullptr);
    EXPECT_EQ(Messages(), kNoLanguage);
    // The language comes before the row.
    EXPECT_EQ(PublicInf::GetPtInf(static_cast<PublicInf::PointPrompt>(9)), nullptr);
    EXPECT_EQ(Messages(), kNoLanguage);
  }
}

TEST_F(Prompts, PositionsOutsideTheTableGiveAMessageEachTime) {
  for (const int language : {0, 1}) {
    SetLanguageType(static_cast<LanguageType>(language));
    for (const int position : {112, 113, 1000, -1, -2147483647}) {
      EXPECT_EQ(CObjClassInf::GetInf(static_cast<CObjClassInf::ErrPompt>(position)), nullptr) << position;
      EXPECT_EQ(Messages(), kNoInformation) << position;
    }
    EXPECT_NE(CObjClassInf::GetInf(static_cast<CObjClassInf::ErrPompt>(111)), nullptr);
    EXPECT_EQ(Messages(), "");
  }
}

TEST_F(Prompts, TheButtonChosenDoesNotMatter) {
  for (const int answer : {kAnswerOk, kAnswerCancel}) {
    machine_.dialogs.answer = answer;
    EXPECT_EQ(CObjClassInf::GetInf(static_cast<CObjClassInf::ErrPompt>(112)), nullptr);
  }
  EXPECT_EQ(machine_.dialogs.messages.size(), 2U);
}

TEST_F(Prompts, TheConcreteStructureIsReachedByPositionAndTextOnly) {
  using Class = CObjClassInf::ErrPompt;
  EXPECT_EQ(static_cast<int>(Class::Code_Beton), 1000);
  EXPECT_EQ(CObjClassInf::GetInf(Class::Code_Beton), nullptr);
  EXPECT_EQ(Messages(), kNoInformation);
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(static_cast<Class>(106))), "砼结构");
  EXPECT_EQ(static_cast<int>(Class::Brickwork), 107);
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(static_cast<Class>(106))), "Code_Beton");
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(_T("砼结构"))), "Code_Beton");
}

TEST_F(Prompts, OfTwoRowsWithOneTextTheFirstIsFound) {
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(Utf8(CStInf::GetErrInf(_T("通跨"))), "All");
  EXPECT_EQ(Utf8(CStInf::GetErrInf(CStInf::ErrPompt::AllStraddle)), "All straddle");
  EXPECT_EQ(Utf8(CStInf::GetErrInf(_T("同层高"))), "Same as floor height");
  EXPECT_EQ(Utf8(TCompDrawInf::GetInf(_T("点选"))), "Draw By Point");
  EXPECT_EQ(Utf8(TCompDrawInf::GetInf(_T("请选择悬挑梁支座"))), "Pick Surport");
}

TEST_F(Prompts, EveryRowIsReachedByItsPositionInBothLanguages) {
  for (const int language : {0, 1}) {
    SetLanguageType(static_cast<LanguageType>(language));
    for (int i = 0; i < 112; ++i) {
      EXPECT_EQ(CObjClassInf::GetInf(static_cast<CObjClassInf::ErrPompt>(i)),
                kObjectClassTable[static_cast<std::size_t>(i)].text[language]);
    }
  }
}

// One table at a time, by position and by text: a call that looked into another table would show here.
struct OneLookup {
  const char* name;
  const PromptTable* table;
  LPCTSTR (*at)(int position);
  LPCTSTR (*of)(LPCTSTR chinese);
};

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): two overloads by one name
#define LORV_LOOKUP(call, Enum, table)                                                                         \
  OneLookup {                                                                                                  \
#call, &(table),                                                                                           \
        [](int position) { return call(static_cast<Enum>(position)); },                                        \
                                                                     [](LPCTSTR                                \
                                                                            chinese) { return call(chinese); } \
  }

const OneLookup kLookups[] = {
    LORV_LOOKUP(CStInf::GetErrInf, CStInf::ErrPompt, kSteelInputTable),
    LORV_LOOKUP(CObjClassInf::GetInf, CObjClassInf::ErrPompt, kObjectClassTable),
    LORV_LOOKUP(PublicInf::GetPubInf, PublicInf::PublicPropt, kCommandLineTable),
    LORV_LOOKUP(PublicInf::GetErrInf, PublicInf::ErrorPropt, kFailureTable),
    LORV_LOOKUP(PublicInf::GetShapeInf, PublicInf::Shape, kShapeTable),
    LORV_LOOKUP(PublicInf::GetPtInf, PublicInf::PointPrompt, kPointTable),
    LORV_LOOKUP(TCompDrawInf::GetInf, TCompDrawInf::DrawInformation, kDrawingTable),
    LORV_LOOKUP(SwicthInfo::GetSwitchInf, SwicthInfo::ShowSwitch, kShowSwitchTable),
};

TEST_F(Prompts, EveryLookupAsksItsOwnTable) {
  for (const OneLookup& lookup : kLookups) {
    const int rows = static_cast<int>(lookup.table->size());
    for (const LanguageType language : {LANGUAGE_CHINESE, LANGUAGE_ENGLISH}) {
      SetLanguageType(language);
      for (int row = 0; row < rows; ++row) {
        const PromptRow& expected = (*lookup.table)[static_cast<std::size_t>(row)];
        EXPECT_EQ(lookup.at(row), expected.text[language]) << lookup.name << " " << row;
      }
      EXPECT_EQ(Messages(), "") << lookup.name;
      EXPECT_EQ(lookup.at(rows), nullptr) << lookup.name;
      EXPECT_EQ(lookup.at(-1), nullptr) << lookup.name;
      EXPECT_EQ(Messages(), std::string(kNoInformation) + kNoInformation) << lookup.name;
    }
  }
}

TEST_F(Prompts, EveryChineseTextLeadsToTheFirstRowThatHasIt) {
  SetLanguageType(LANGUAGE_ENGLISH);
  for (const OneLookup& lookup : kLookups) {
    for (const PromptRow& row : *lookup.table) {
      const auto first =
          std::find_if(lookup.table->begin(), lookup.table->end(), [&](const PromptRow& other) {
            return Utf8(other.text[LANGUAGE_CHINESE]) == Utf8(row.text[LANGUAGE_CHINESE]);
          });
      // By its units and not by its address.
      const CString copy(row.text[LANGUAGE_CHINESE]);
      EXPECT_EQ(lookup.of(copy), first->text[LANGUAGE_ENGLISH]) << lookup.name << " " << row.key;
      // A beginning of it, or more than it, is another text.
      EXPECT_NE(lookup.of(copy + _T("*")), row.text[LANGUAGE_ENGLISH]);
    }
    EXPECT_EQ(lookup.of(_T("")), nullptr) << lookup.name;
  }
  EXPECT_EQ(Messages(), "");
}

TEST_F(Prompts, LanguageIsTheOneThatWasSet) {
  EXPECT_EQ(GetLanguageType(), LANGUAGE_CHINESE);
  for (const int language : {1, 0, 2, -1}) {
    SetLanguageType(static_cast<LanguageType>(language));
    EXPECT_EQ(static_cast<int>(GetLanguageType()), language);
  }
}

// The last enumerator of each list stands at its table's last row, so no name is missing between.
TEST_F(Prompts, EnumeratorsFollowTheRows) {
  EXPECT_EQ(static_cast<int>(CStInf::ErrPompt::WallReplaceHoop), 90);
  EXPECT_EQ(static_cast<int>(CObjClassInf::ErrPompt::StUseDefMain), 111);
  EXPECT_EQ(static_cast<int>(CObjClassInf::ErrPompt::InterBeamSect), 105);
  EXPECT_EQ(static_cast<int>(PublicInf::PublicPropt::IntputPointOnArc), 12);
  EXPECT_EQ(static_cast<int>(PublicInf::ErrorPropt::FindNoBetonWall), 4);
  EXPECT_EQ(static_cast<int>(PublicInf::Shape::ZShape), 5);
  EXPECT_EQ(static_cast<int>(PublicInf::PointPrompt::EdgePoint), 8);
  EXPECT_EQ(static_cast<int>(TCompDrawInf::DrawInformation::InputTheStair), 33);
  EXPECT_EQ(static_cast<int>(SwicthInfo::ShowSwitch::HideBrick), 9);
}

TEST_F(Prompts, HeaderExamples) {
  EXPECT_EQ(Utf8(CStInf::GetErrInf(CStInf::ErrPompt::Other)), "其它");
  EXPECT_EQ(Utf8(PublicInf::GetShapeInf(PublicInf::Shape::Circle)), "圆形");
  EXPECT_EQ(Utf8(TCompDrawInf::GetInf(TCompDrawInf::DrawInformation::AxisDraw)), "轴网");
  EXPECT_EQ(Utf8(SwicthInfo::GetSwitchInf(SwicthInfo::ShowSwitch::ShowPad)), "垫层显示\n");
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(_T("墙"))), "墙");
  SetLanguageType(LANGUAGE_ENGLISH);
  EXPECT_EQ(Utf8(CStInf::GetErrInf(CStInf::ErrPompt::Other)), "other");
  EXPECT_EQ(Utf8(PublicInf::GetShapeInf(PublicInf::Shape::Circle)), "Circle");
  EXPECT_EQ(Utf8(TCompDrawInf::GetInf(TCompDrawInf::DrawInformation::AxisDraw)), "Axis Draw");
  EXPECT_EQ(Utf8(SwicthInfo::GetSwitchInf(SwicthInfo::ShowSwitch::ShowPad)), "Show pad");
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(_T("墙"))), "Wall");
  EXPECT_EQ(Utf8(CObjClassInf::GetInf(_T("梁"))), "Beam");
}

}  // namespace
}  // namespace lorv
