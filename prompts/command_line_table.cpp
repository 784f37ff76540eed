#include "prompts/prompt_row.h"

// Words that the command line of the host shows while something is drawn, PublicInf::GetPubInf. Rows are
// found by position: their order is part of the interface, and spellings stay as they are, odd ones too.

namespace lorv {

// One row a line, as the vocabulary lists them: compare by eye.
// clang-format off
namespace {

constexpr PromptRow kRows[] = {
  {0, {_T("(A)添加实体/<按下shift移除实体>"), _T("(Add Entity)/<Press Shift Key To Remove Ent>")}},
  {1, {_T("退出"), _T("Exit")}},
  {2, {_T("撤销"), _T("Undo")}},
  {3, {_T("或"), _T("Or")}},
  {4, {_T("居中"), _T("Center")}},
  {5, {_T("左下"), _T("LeftBot")}},
  {6, {_T("上边"), _T("Top")}},
  {7, {_T("下边"), _T("Bottom")}},
  {8, {_T("直线"), _T("Line")}},
  {9, {_T("圆弧"), _T("Arc")}},
  {10, {_T("封闭"), _T("Close")}},
  {11, {_T("请输入下一点"), _T("Intput Last Point")}},
  {12, {_T("请输入弧线上的点"), _T("Intput Point On Arc")}},
};

}  // namespace
// clang-format on

constinit const PromptTable kCommandLineTable{kRows};

}  // namespace lorv
