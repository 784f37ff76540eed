#include "spreadsheet/servers/engine/objects/served_range.h"

#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// Two servers answer for ranges. Which cell speaks for many, what is refused and in which words must not
// differ between them, as a table is to come out alike by both; so all of that is decided here.

namespace lorv::engine {

// The first cell is asked: merged with none, no; with the last one too, and so with all between them, yes. An
// area that ends before the last one is neither.
_variant_t ServedRange::Merged() const {
  const Area merged = MergedAreaAt(area_.top, area_.left);
  if (CountOf(merged, RangePart::kCells) == 1) return _variant_t(false);
  if (merged.Contains(area_.bottom, area_.right)) return _variant_t(true);
  _variant_t in_part;
  in_part.vt = VT_NULL;
  return in_part;
}

AutoValue ServedRange::Get(Operation operation, std::span<const AutoValue> args) {
  switch (operation) {
    case Operation::kItem:
      return Sub(ItemOf(area_, LongArgument(args, 0), LongArgument(args, 1)));
    case Operation::kRange:
      return Sub(CornersOf(area_, TextArgument(args, 0), TextArgument(args, 1)));
    // Of several cells or columns the first one speaks.
    case Operation::kValue:
      return ValueAt(area_.top, area_.left);
    case Operation::kNumberFormat:
      return AutoValue(_variant_t(FormatAt(area_.top, area_.left)));
    case Operation::kColumnWidth:
      return AutoValue(_variant_t(WidthOf(area_.left)));
    case Operation::kMergeCells:
      return Merged();
    case Operation::kMergeArea:
      return Sub(MergedAreaAt(area_.top, area_.left));
    case Operation::kFont:
      return FontOf(area_);
    case Operation::kCount:
      return AutoValue(_variant_t(CountOf(area_, part_)));
    case Operation::kRow:
      return AutoValue(_variant_t(area_.top + 1));
    case Operation::kColumn:
      return AutoValue(_variant_t(area_.left + 1));
    case Operation::kRows:
      // The same cells; only what is counted differs.
      return RangeOf(area_, RangePart::kRows);
    case Operation::kColumns:
      return RangeOf(area_, RangePart::kColumns);
    // Reaches beyond what values may be put into at once; widths are kept by columns and cost nothing.
    case Operation::kEntireColumn:
      return Sub({0, area_.left, kMaxRows - 1, area_.right});
    default:
      RaiseNoMember();
  }
}

void ServedRange::Put(Operation operation, const AutoValue& value) {
  const std::span only(&value, 1);
  switch (operation) {
    case Operation::kValue:
      ForEachCell(area_, [&](long row, long column) { PutValueAt(row, column, value); });
      break;
    case Operation::kNumberFormat:
      // From here on by area: for an office each call is one to another process.
      PutFormat(area_, TextArgument(only, 0));
      break;
    case Operation::kHorizontalAlignment:
      PutAlignment(area_, LongArgument(only, 0));
      break;
    case Operation::kColumnWidth:
      PutWidth(area_.left, area_.right, CheckedWidth(RealArgument(value)));
      break;
    case Operation::kMergeCells:
      PutMerged(area_, LongArgument(only, 0) != 0);
      break;
    default:
      RaiseNoMember();
  }
}

void ServedFont::Put(Operation /*operation*/, const AutoValue& value) {
  const double points = RealArgument(value);
  // The font has this one operation. Said so that what is no number is refused as well.
  if (!(points >= 1 && points <= kMaxFontSize)) Fail(_T("字号须为1至409。"));
  PutSize(area_, points);
}

}  // namespace lorv::engine
