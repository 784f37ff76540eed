#include "spreadsheet/servers/engine/styles/style_pool.h"

#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/styles/number_format_kind.h"

// Formats and styles of a workbook, each kept once: a cell has 16 bits for its style, and the
// exchange puts the same few looks into every cell. Nothing is ever taken out, so numbers stay
// valid as long as the workbook.

namespace lorv::engine {

StylePool::StylePool() {
  // Number 0 of both is what a cell without a look of its own has; files leave it out.
  FormatId(kGeneralFormat);
  StyleId(CellStyle());
}

std::uint32_t StylePool::FormatId(const CString& text) {
  const auto next = static_cast<std::uint32_t>(formats_.size());
  const auto [at, is_new] = format_ids_.try_emplace(text, next);
  if (is_new) {
    formats_.push_back(text);
    // Asked now, as it is needed for every number that is read.
    dates_.push_back(IsDateFormat(text.View()));
  }
  return at->second;
}

std::uint16_t StylePool::StyleId(const CellStyle& style) {
  const auto found = style_ids_.find(style);
  if (found != style_ids_.end()) return found->second;
  // A style more would have the number of another one in its cells.
  if (styles_.size() >= kMaxStyles) Fail(_T("单元格格式太多。"));
  const auto id = static_cast<std::uint16_t>(styles_.size());
  styles_.push_back(style);
  style_ids_.emplace(style, id);
  return id;
}

}  // namespace lorv::engine
