#include "prompts/prompt_row.h"

// Section shapes of components, PublicInf::GetShapeInf. Rows are found by position: their order is part of
// the interface, and spellings stay as they are, odd ones too.

namespace lorv {

// One row a line, as the vocabulary lists them: compare by eye.
// clang-format off
namespace {

constexpr PromptRow kRows[] = {
  {0, {_T("矩形"), _T("Rectangle")}},
  {1, {_T("圆形"), _T("Circle")}},
  {2, {_T("L形"), _T("LShape")}},
  {3, {_T("T形"), _T("TShape")}},
  {4, {_T("十字形"), _T("CrossShape")}},
  {5, {_T("Z形"), _T("ZShape")}},
};

}  // namespace
// clang-format on

constinit const PromptTable kShapeTable{kRows};

}  // namespace lorv
