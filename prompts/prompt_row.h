#pragma once

#include <cstdint>
#include <span>

#include "framework/native/native_types.h"

// The constant tables of the suite's two-language vocabulary.
namespace lorv {

// One item: the enumerator that callers store, and its text by language (0 Chinese, 1 English).
struct PromptRow {
  std::int64_t key;  // the row's position, but for the one row that says otherwise
  LPCTSTR text[2];
};

using PromptTable = std::span<const PromptRow>;

extern const PromptTable kSteelInputTable;
extern const PromptTable kObjectClassTable;
extern const PromptTable kCommandLineTable;
extern const PromptTable kFailureTable;
extern const PromptTable kShapeTable;
extern const PromptTable kPointTable;
extern const PromptTable kDrawingTable;
extern const PromptTable kShowSwitchTable;

}  // namespace lorv
