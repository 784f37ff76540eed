#include "tools/lorv/takeoff/output/sheet_rows.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "tools/lorv/screen/display_width.h"

// Writes rows into a sheet of a workbook one below the other, and keeps the widths of its columns meanwhile:
// a workbook that opens with ##### in place of its numbers has to be repaired by hand.

namespace lorv::tool {
namespace {

// A longer text runs on into the next column, or is read in its cell.
constexpr int kWidestColumn = 60;
constexpr int kMargin = 2;

// The whole text or nothing: "2F" is a storey and no number 2.
std::optional<double> NumberOf(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return std::nullopt;
  return value;
}

// As many decimals as the text has, so that the sheet shows what the bill shows.
CString FormatLike(std::string_view number) {
  const std::size_t point = number.find('.');
  if (point == std::string_view::npos) return _T("0");
  return _T("0.") + CString(_T('0'), static_cast<int>(number.size() - point - 1));
}

}  // namespace

void SheetRows::Put(std::string_view utf8, const _variant_t& value, const CellLook& look) {
  const auto column = static_cast<std::size_t>(column_);
  if (widths_.size() <= column) widths_.resize(column + 1);
  widths_[column] = std::max(widths_[column], DisplayWidth(utf8));
  book_.Put(sheet_, row_, column_, value, look);
}

void SheetRows::AddText(std::string_view utf8, bool bold) {
  // An empty cell stays empty: a text of nothing would stop the one before it from running on.
  if (!utf8.empty()) Put(utf8, _variant_t(CString::FromUtf8(std::string(utf8))), {CString(), bold});
  ++column_;
}

void SheetRows::AddNumber(std::string_view utf8, bool bold) {
  const auto number = NumberOf(utf8);
  if (!number) return AddText(utf8, bold);
  Put(utf8, _variant_t(*number), {FormatLike(utf8), bold});
  ++column_;
}

void SheetRows::AddExact(std::string_view utf8) {
  const auto number = NumberOf(utf8);
  if (!number) return AddText(utf8);
  Put(utf8, _variant_t(*number), {});
  ++column_;
}

void SheetRows::EndRow(int level) {
  if (level > 0) book_.SetRowLevel(sheet_, row_, level);
  ++row_;
  column_ = 0;
}

void SheetRows::Finish() {
  book_.FreezeRows(sheet_, 1);
  for (std::size_t i = 0; i < widths_.size(); ++i) {
    book_.SetWidth(sheet_, static_cast<int>(i), std::min(widths_[i], kWidestColumn) + kMargin);
  }
}

}  // namespace lorv::tool
