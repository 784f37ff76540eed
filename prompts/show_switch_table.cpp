#include "prompts/prompt_row.h"

// Pairs of messages of the display switches: even rows show, odd rows hide. Looked up by
// SwicthInfo::GetSwitchInf. Rows are found by position: their order is part of the interface, and spellings
// stay as they are, odd ones too.

namespace lorv {

// One row a line, as the vocabulary lists them: compare by eye.
// clang-format off
namespace {

constexpr PromptRow kRows[] = {
  {0, {_T("轴网显示\n"), _T("Show Axis")}},
  {1, {_T("轴网隐藏\n"), _T("\tHide Axis")}},
  {2, {_T("显示基础(如果基础附加的构件都没有显示,基础缺省显示).\n"), _T("Show Foundation")}},
  {3, {_T("隐藏基础(如果基础附加的构件都没有显示,基础缺省显示).\n"), _T("Hide Foundation")}},
  {4, {_T("土方显示\n"), _T("Show earth")}},
  {5, {_T("土方隐藏\n"), _T("Hide earth")}},
  {6, {_T("垫层显示\n"), _T("Show pad")}},
  {7, {_T("垫层隐藏\n"), _T("Hide pad")}},
  {8, {_T("基础砖模板显示\n"), _T("Show brick")}},
  {9, {_T("基础砖模板隐藏\n"), _T("Hide brick")}},
};

}  // namespace
// clang-format on

constinit const PromptTable kShowSwitchTable{kRows};

}  // namespace lorv
