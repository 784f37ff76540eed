#include "prompts/prompt_row.h"

// Pairs of a drawing method and the prompt that opens it: even rows the method, odd rows the prompt. Looked
// up by TCompDrawInf::GetInf. Rows are found by position: their order is part of the interface, and
// spellings stay as they are, odd ones too.

namespace lorv {

// One row a line, as the vocabulary lists them: compare by eye.
// clang-format off
namespace {

constexpr PromptRow kRows[] = {
  {0, {_T("点选"), _T("Draw By Point")}},
  {1, {_T("请输入插入点"), _T("Input Insert Point")}},
  {2, {_T("窗选"), _T("Window Draw")}},
  {3, {_T("请输入窗口的第一点"), _T("Input Window Fisrt Corner")}},
  {4, {_T("轴网"), _T("Axis Draw")}},
  {5, {_T("请选择轴网"), _T("Select Axis")}},
  {6, {_T("沿弧"), _T("Along Arc")}},
  {7, {_T("请输入圆心点"), _T("Input Arc Center")}},
  {8, {_T("点选"), _T("Draw By Near Axis")}},
  {9, {_T("请输入轴网附近点"), _T("Input Near Axis Point")}},
  {10, {_T("选墙"), _T("Pick Wall To Draw")}},
  {11, {_T("请选择墙"), _T("Pick Wall")}},
  {12, {_T("手动"), _T("Draw By Hand")}},
  {13, {_T("请输入起点"), _T("Input Near First Point")}},
  {14, {_T("定位"), _T("Along Direct Draw")}},
  {15, {_T("请输入定位线起点"), _T("Input Dirct First Point")}},
  {16, {_T("挑梁"), _T("Pick Beam To Draw")}},
  {17, {_T("请选择连续梁"), _T("Pick Beam")}},
  {18, {_T("纯挑梁"), _T("Pick Surport To Draw")}},
  {19, {_T("请选择悬挑梁支座"), _T("Pick Surport")}},
  {20, {_T("轴起点挑梁"), _T("Axis Edge Beam")}},
  {21, {_T("请选择悬挑梁支座"), _T("Pick Surport")}},
  {22, {_T("布置内边界"), _T("Inner Figure")}},
  {23, {_T("请输入内部点"), _T("Input Inside Point")}},
  {24, {_T("布置外边界"), _T("Outer Figure")}},
  {25, {_T("多义线框选实体"), _T("Rectangle Component")}},
  {26, {_T("自动"), _T("Outer Figure")}},
  {27, {_T("请确认"), _T("Make Sure")}},
  {28, {_T("选洞口"), _T("Pick Hole To Draw")}},
  {29, {_T("请选择洞口"), _T("Pick Hole")}},
  {30, {_T("角度布置"), _T("Input Insert Point")}},
  {31, {_T("请输入布置点"), _T("Input the Second Point")}},
  {32, {_T("选择楼梯布置"), _T("select stair to draw rail")}},
  {33, {_T("请选择楼梯"), _T("Input the stair")}},
};

}  // namespace
// clang-format on

constinit const PromptTable kDrawingTable{kRows};

}  // namespace lorv
