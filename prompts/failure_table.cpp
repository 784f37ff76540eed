#include "prompts/prompt_row.h"

// Failures that all modules of the suite report, PublicInf::GetErrInf. Rows are found by position: their
// order is part of the interface, and spellings stay as they are, odd ones too.

namespace lorv {

// One row a line, as the vocabulary lists them: compare by eye.
// clang-format off
namespace {

constexpr PromptRow kRows[] = {
  {0, {_T("\n创建对话框失败!"), _T("\nCreate Window Failed!")}},
  {1, {_T("\n发生例外情况!"), _T("Unkown Exception")}},
  {2, {_T("没有找到轴网"), _T("Find No Axis")}},
  {3, {_T("没有找到墙"), _T("Find No Wall")}},
  {4, {_T("没有找到砼墙"), _T("Find No Beton Wall")}},
};

}  // namespace
// clang-format on

constinit const PromptTable kFailureTable{kRows};

}  // namespace lorv
