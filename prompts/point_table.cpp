#include "prompts/prompt_row.h"

// Names of the points that a drawing method asks for, PublicInf::GetPtInf. Different Chinese names may have
// one English name, so only the Chinese one is a key. Rows are found by position: their order is part of the
// interface, and spellings stay as they are, odd ones too.

namespace lorv {

// One row a line, as the vocabulary lists them: compare by eye.
// clang-format off
namespace {

constexpr PromptRow kRows[] = {
  {0, {_T("原点"), _T("Origin Point")}},
  {1, {_T("圆心"), _T("Center")}},
  {2, {_T("圆心点"), _T("Origin Point")}},
  {3, {_T("插入点"), _T("Insert Point")}},
  {4, {_T("第一点"), _T("First Point")}},
  {5, {_T("第二点"), _T("Second Point")}},
  {6, {_T("中点"), _T("Middle Point")}},
  {7, {_T("第三点"), _T("Third Point")}},
  {8, {_T("端点"), _T("Edge Point")}},
};

}  // namespace
// clang-format on

constinit const PromptTable kPointTable{kRows};

}  // namespace lorv
