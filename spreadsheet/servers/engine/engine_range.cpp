#include "spreadsheet/servers/engine/cell_values.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/engine_object.h"

// Ranges of a sheet, and the font of one.

namespace lorv::engine {
namespace {

using Place = std::shared_ptr<const SheetPlace>;

template <class Change>
void ChangeStyles(const SheetPlace& at, const Area& area, const Change& change) {
  ForEachCell(area, [&](long row, long column) {
    // Each cell keeps what is not changed of its own look.
    CellStyle style = StyleOf(*at.book, *at.sheet, row, column);
    change(style);
    PutStyle(*at.book, *at.sheet, row, column, style);
  });
}

class RangeFont : public EngineObject {
 public:
  RangeFont(Place place, const Area& area)
      : EngineObject(place->program, ObjectKind::kFont), place_(std::move(place)), area_(area) {}

 protected:
  void Put(Operation /*operation*/, const AutoValue& value) override {
    const double size = RealArgument(value);
    if (!(size >= 1 && size <= kMaxFontSize)) Fail(_T("字号须为1至409。"));
    ChangeStyles(*place_, area_, [&](CellStyle& style) { style.font_size = size; });
  }

 private:
  Place place_;
  Area area_;
};

class EngineRange : public EngineObject {
 public:
  EngineRange(Place place, const Area& area, RangePart part)
      : EngineObject(place->program, ObjectKind::kRange),
        place_(std::move(place)),
        area_(area),
        part_(part) {}

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> args) override;
  void Put(Operation operation, const AutoValue& value) override;

 private:
  AutoRef Sub(const Area& area, RangePart part = RangePart::kCells) const {
    return RangeObject(place_, area, part);
  }
  double Width() const;
  void PutFormat(const CString& text);
  void PutAlignment(long code);
  void PutMerged(bool merged);
  _variant_t Merged() const;
  AutoRef MergeArea() const;

  Place place_;
  Area area_;
  RangePart part_;
};

double EngineRange::Width() const {
  const ColumnShape& shape = place_->sheet->columns.At(area_.left);
  // Of several columns the first one speaks.
  return shape.hidden ? 0 : shape.width;
}

// Of cells that are merged in part the answer is neither yes nor no.
_variant_t EngineRange::Merged() const {
  const MergeList& merges = place_->sheet->merges;
  if (const Area* const area = merges.Find(area_.top, area_.left)) {
    if (area->Contains(area_.bottom, area_.right)) return _variant_t(true);
    _variant_t in_part;
    in_part.vt = VT_NULL;
    return in_part;
  }
  return _variant_t(false);
}

AutoRef EngineRange::MergeArea() const {
  const Area* const area = place_->sheet->merges.Find(area_.top, area_.left);
  return Sub(area == nullptr ? Area{area_.top, area_.left, area_.top, area_.left} : *area);
}

AutoValue EngineRange::Get(Operation operation, std::span<const AutoValue> args) {
  switch (operation) {
    case Operation::kItem:
      return Sub(ItemOf(area_, LongArgument(args, 0), LongArgument(args, 1)));
    case Operation::kValue:
      return CellValue(*place_->book, *place_->sheet, area_.top, area_.left);
    case Operation::kNumberFormat: {
      const CellStyle& style = StyleOf(*place_->book, *place_->sheet, area_.top, area_.left);
      return AutoValue(_variant_t(place_->book->styles.FormatText(style.format)));
    }
    case Operation::kMergeCells:
      return Merged();
    case Operation::kMergeArea:
      return MergeArea();
    case Operation::kColumnWidth:
      return AutoValue(_variant_t(Width()));
    case Operation::kFont:
      return AutoRef(std::make_shared<RangeFont>(place_, area_));
    case Operation::kRange:
      return Sub(CornersOf(area_, TextArgument(args, 0), TextArgument(args, 1)));
    case Operation::kCount:
      return AutoValue(_variant_t(CountOf(area_, part_)));
    case Operation::kRow:
      return AutoValue(_variant_t(area_.top + 1));
    case Operation::kColumn:
      return AutoValue(_variant_t(area_.left + 1));
    case Operation::kRows:
      return Sub(area_, RangePart::kRows);
    case Operation::kColumns:
      return Sub(area_, RangePart::kColumns);
    // Reaches beyond what values may be put into at once; widths are kept by columns and cost nothing.
    case Operation::kEntireColumn:
      return Sub({0, area_.left, kMaxRows - 1, area_.right});
    default:
      RaiseNoMember();
  }
}

void EngineRange::PutFormat(const CString& text) {
  const std::uint32_t format = place_->book->styles.FormatId(text);
  ChangeStyles(*place_, area_, [&](CellStyle& style) { style.format = format; });
}

void EngineRange::PutAlignment(long code) {
  ChangeStyles(*place_, area_, [&](CellStyle& style) { style.alignment = static_cast<int>(code); });
}

void EngineRange::PutMerged(bool merged) {
  if (merged) {
    place_->sheet->merges.Add(area_);
  } else {
    place_->sheet->merges.Remove(area_);
  }
}

void EngineRange::Put(Operation operation, const AutoValue& value) {
  const std::span only(&value, 1);
  switch (operation) {
    case Operation::kValue:
      ForEachCell(area_, [&](long row, long column) {
        PutCellValue(*place_->book, *place_->sheet, row, column, value.data);
      });
      break;
    case Operation::kNumberFormat:
      PutFormat(TextArgument(only, 0));
      break;
    case Operation::kHorizontalAlignment:
      PutAlignment(LongArgument(only, 0));
      break;
    case Operation::kColumnWidth:
      place_->sheet->PutWidth(area_.left, area_.right, RealArgument(value));
      break;
    case Operation::kMergeCells:
      PutMerged(LongArgument(only, 0) != 0);
      break;
    default:
      RaiseNoMember();
  }
}

}  // namespace

AutoRef RangeObject(const Place& place, const Area& area, RangePart part) {
  return std::make_shared<EngineRange>(place, area, part);
}

}  // namespace lorv::engine
