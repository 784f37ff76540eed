// Every enumerator beside its row: the names are made from the English texts by one rule, so a row that was
// left out, put twice or exchanged with its neighbour shows at its own name and not only at the end of a
// list.

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "prompts/prompt_row.h"
#include "prompts/prompts.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// The names of a list "A, B, C".
std::vector<std::string> NamesOf(const std::string& list) {
  std::vector<std::string> names(1);
  for (const char c : list) {
    if (c == ',') {
      names.emplace_back();
    } else if (c != ' ') {
      names.back() += c;
    }
  }
  return names;
}

std::string Small(const std::string& text) {
  std::string small;
  for (const char c : text) small += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return small;
}

// A row's English text as a name: letters, digits and "_" alone, without the places of arguments.
std::string NameOf(const PromptRow& row) {
  std::string name;
  const std::string text = Utf8(row.text[LANGUAGE_ENGLISH]);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.compare(i, 2, "%s") == 0) {
      ++i;
    } else if (std::isalnum(static_cast<unsigned char>(text[i])) != 0 || text[i] == '_') {
      name += text[i];
    }
  }
  return name;
}

// A text that stands a second time gives a name with the row's number behind it.
template <class Enum>
void ExpectRows(std::span<const Enum> values, const std::string& list, const PromptTable& table) {
  const std::vector<std::string> names = NamesOf(list);
  ASSERT_EQ(names.size(), table.size());
  ASSERT_EQ(values.size(), table.size());
  std::set<std::string> seen;
  for (std::size_t i = 0; i < names.size(); ++i) {
    std::string expected = Small(NameOf(table[i]));
    if (!seen.insert(expected).second) expected += std::to_string(table[i].key);
    EXPECT_EQ(Small(names[i]), expected) << "row " << i;
    EXPECT_EQ(static_cast<std::int64_t>(values[i]), table[i].key) << names[i];
  }
}

// NOLINTNEXTLINE(cppcoreguidelines-macro-usage): a name and its spelling
#define LORV_EXPECT_ROWS(Enum, table, ...)                          \
  {                                                                 \
    using enum Enum;                                                \
    const Enum values[] = {__VA_ARGS__};                            \
    ExpectRows(std::span<const Enum>(values), #__VA_ARGS__, table); \
  }

TEST(PromptNames, SteelInput){LORV_EXPECT_ROWS(
    CStInf::ErrPompt, kSteelInputTable, SteelDescCauseError, Other, Distrub, NotDistrub, MultiDistrub,
    LeftHang, RightHang, MiddleLabel, PleaseInputPlaneSteelDesc, PleaseSelectComponentBeforePressLayerButton,
    AreYouSureRecalculateWithBeamPlaneItWillOverBeforeValue, SteelCheck, All,
    NotSelectComponentPleaseSelectBeforeInputSteel,
    HasSteelOnTheComponentAreYouSureEraseBeforeAndLayerNewSteel, NotSelectComponentOrNotInputPlaneDesc,
    EraseComponentSectionCanNotEraseSystemSection, EraseSteelFormulaCanNotEraseSystemSteelFormula, SteelName,
    ComponentName, SectionName, AbnormitySection, SectionNameCanNotNull, LengthExpr, Rotation, Vertical,
    Corner, BSide, HSide, MainSteelPosition, TopSlab, BottomSlab, LeftSlab, RightSlab, PlaneBeam,
    PlaneBarFound, PlaneMianBeam, PlaneSecBeam, PlaneCoronalBeam, Next, Previous, NotInShore, TwoRow,
    ThirdRow, FourRow, Bottom, SupportSteel, TopSteel, AllStraddle, SingleStraddle, ContinueStraddle, Oxter,
    SameAsFloorHeight, SameAsSlabHeight, TwoDoubleNotDistrubitDist, TwoDoubleDistrubitDist,
    TwoDoubleEncryptDist, SameHoopDesc, CommonBeam, PositionIsRepeat, MidShore, EndShore, End, EndBottomSteel,
    Hang, Extend, Right, Left, ConnectTopSteel, NoChangeSteelDescAreYouWillChange,
    NoChangeCenterLineAreYouWillChange, IsAutoIdentBeamSteelYesIsBeamSteelNoIsBarFoundSteel, JoinWallSteel,
    ColumnInsertSteel, WallInsertSteel, VerticalMainSteel, ColumnHoopSteel, WallPlumbSteel, WallLevelSteel,
    TwoLayerPull, TemperatureSteel, TwoLayerMatSteel, TraySteel, EdgeSteel, HoopStyle, ColumnTabel,
    SameFloorHigh, SameWallHigh, Same, Select, WallReplaceHoop)}

TEST(PromptNames, ObjectClasses){LORV_EXPECT_ROWS(
    CObjClassInf::ErrPompt, kObjectClassTable, Wall, HCantileverSlab, VCantileverSlab, SillGroup, Frieze,
    Door, Window, DoorWindow, Guardrail, Scaffold, Column, Beam, Slab, SupportCap, SlabHole, WallHole,
    RingBeam, LintelBeam, Bracket, LinkColumn, EmbdBeam, EmbdColumn, PrefSlab, PrefLintelBeam, StairGroup,
    BalconyGroup, BreastBoard, Handrail, Capstone, Eaves, BackCaseRegion, TigerWindow, HouseTop, Room,
    FloorDec, CeilngDec, SideWall, Pad, Brick, Indp, Bar, HoleFound, Stake, Earth, ReseauEarth, BoardFound,
    EarthDig, PointDraw, LineDraw, FaceDraw, VolDraw, ArchArea, Axis, AllSteel, StColumn, StSupportCap,
    StBeam, StSlab, StNoBeamSlab, StFloorBanSlab, StBasicBanSlab, StPoleHeadSlab, StSecLBeam, StWall,
    StRingBeam, StFrieze, StSillGroupH, StSillGroupV, StAwing, StBarFnd, StIndpFnd, StFndSlab, StFndHole,
    StStake, StBalconyGroup, StStairGroup, StLintelBeam, StBreastBoard, StCapstone, StHandrail, StEaves,
    StDitch, StPreSlabGap, StLinkColumn, StEmbdColumn, StEmbdBeam, StSillGroup, StWallHole, StSlabHole,
    StUsrLine, StUseDefine, StBackCaseRegion, StHouseTop, StGround, StHangeBeam, WinCoverLine, SingleSideWall,
    Hole, Buttress, Pipe, TigerBrick, DoorWinCover, EquipmentFnd, WallButt, PartCeilngDec, InterBeamSect,
    Code_Beton, Brickwork, AllType, CpSection, StUseDefHoop, StUseDefMain)}

TEST(PromptNames, CommandLine){
    LORV_EXPECT_ROWS(PublicInf::PublicPropt, kCommandLineTable, AddEntityPressShiftKeyToRemoveEnt, Exit, Undo,
                     Or, Center, LeftBot, Top, Bottom, Line, Arc, Close, IntputLastPoint, IntputPointOnArc)}

TEST(PromptNames, Failures){LORV_EXPECT_ROWS(PublicInf::ErrorPropt, kFailureTable, CreateWindowFailed,
                                             UnkownException, FindNoAxis, FindNoWall, FindNoBetonWall)}

TEST(PromptNames, Shapes){
    LORV_EXPECT_ROWS(PublicInf::Shape, kShapeTable, Rectangle, Circle, LShape, TShape, CrossShape, ZShape)}

TEST(PromptNames,
     Points){LORV_EXPECT_ROWS(PublicInf::PointPrompt, kPointTable, OriginPoint, Center, OriginPoint2,
                              InsertPoint, FirstPoint, SecondPoint, MiddlePoint, ThirdPoint, EdgePoint)}

TEST(PromptNames, Drawing){
    LORV_EXPECT_ROWS(TCompDrawInf::DrawInformation, kDrawingTable, DrawByPoint, InputInsertPoint, WindowDraw,
                     InputWindowFisrtCorner, AxisDraw, SelectAxis, AlongArc, InputArcCenter, DrawByNearAxis,
                     InputNearAxisPoint, PickWallToDraw, PickWall, DrawByHand, InputNearFirstPoint,
                     AlongDirectDraw, InputDirctFirstPoint, PickBeamToDraw, PickBeam, PickSurportToDraw,
                     PickSurport, AxisEdgeBeam, PickSurport21, InnerFigure, InputInsidePoint, OuterFigure,
                     RectangleComponent, OuterFigure26, MakeSure, PickHoleToDraw, PickHole,
                     InputInsertPoint30, InputTheSecondPoint, SelectStairToDrawRail, InputTheStair)}

TEST(PromptNames, ShowSwitches) {
  LORV_EXPECT_ROWS(SwicthInfo::ShowSwitch, kShowSwitchTable, ShowAxis, HideAxis, ShowFoundation,
                   HideFoundation, ShowEarth, HideEarth, ShowPad, HidePad, ShowBrick, HideBrick)
}

}  // namespace
}  // namespace lorv
