#include <algorithm>
#include <cmath>

#include "framework/objects/exceptions.h"
#include "framework/text/surrogates.h"
#include "framework/values/ole_date.h"
#include "spreadsheet/servers/engine/cell_values.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/number_format_kind.h"
#include "spreadsheet/servers/office/column_width.h"
#include "spreadsheet/servers/office/format_spelling.h"
#include "spreadsheet/servers/office/office_object.h"

// Ranges of an office's sheet, and the font of one. What a value is, date or number, is decided by the same
// rule as in the engine, so that one file gives one table by both.

namespace lorv::office {
namespace {

using Place = std::shared_ptr<const SheetPlace>;
using engine::RangePart;

constexpr LPCTSTR kPlainDate = _T("yyyy/m/d");
// The office's name of the format of truth values.
constexpr LPCTSTR kTruth = _T("BOOLEAN");

CString FormatOf(const SheetPlace& at, long row, long column) {
  return ProgramSpelling(AskOffice([&] { return at.sheet->Format(row, column); }));
}

_variant_t NumberValue(const SheetPlace& at, long row, long column, double number) {
  const CString format = FormatOf(at, row, column);
  if (format == kTruth) return _variant_t(number != 0);
  if (!engine::IsDateFormat(format.View())) return _variant_t(number);
  const double date = number + (at.book->from_1904 ? engine::kDaysTo1904 : 0);
  // Before 0 and behind the last year there are no dates.
  return date >= 0 && date < kBehindOleDates ? _variant_t(date, VT_DATE) : _variant_t(number);
}

_variant_t ValueOf(const SheetPlace& at, long row, long column) {
  const OfficeCell cell = AskOffice([&] { return at.sheet->Cell(row, column); });
  switch (cell.kind) {
    case CellKind::kNumber:
      return NumberValue(at, row, column, cell.number);
    case CellKind::kText:
      return _variant_t(_bstr_t(CString(TextView(cell.text))));
    case CellKind::kError:
      return {long{engine::kFailureCode}, VT_ERROR};
    default:
      return {};
  }
}

// A return before a line's end is part of that, for an office.
bool HasControls(TextView text) {
  return std::any_of(text.begin(), text.end(),
                     [](TCHAR c) { return (c < _T(' ') && c != _T('\n') && c != _T('\r')) || c >= 0xFFFE; });
}

void PutText(const SheetPlace& at, long row, long column, TextView text) {
  if (text.size() > engine::kMaxCellText) engine::Fail(_T("文字超过32767个字符，无法写入单元格。"));
  if (HasLoneHalf(text)) engine::Fail(_T("文字含有不完整的字符（单个代理项），无法写入单元格。"));
  at.book->has_controls = at.book->has_controls || HasControls(text);
  AskOffice([&] { at.sheet->PutText(row, column, Text(text)); });
}

void PutNumber(const SheetPlace& at, long row, long column, const AutoValue& value) {
  double number = value.data.vt == VT_DATE ? value.data.dblVal : RealArgument(value);
  if (!std::isfinite(number)) engine::Fail(_T("数值超出范围，无法写入单元格。"));
  if (value.data.vt == VT_DATE && at.book->from_1904) number -= engine::kDaysTo1904;
  const bool plain = value.data.vt == VT_DATE && FormatOf(at, row, column) == engine::kGeneralFormat;
  AskOffice([&] {
    // A cell that has a format of its own keeps it.
    if (plain) at.sheet->PutFormat({row, column, row, column}, kPlainDate);
    at.sheet->PutNumber(row, column, number);
  });
}

void PutValue(const SheetPlace& at, long row, long column, const AutoValue& value) {
  switch (value.data.vt) {
    case VT_EMPTY:
    case VT_NULL:
      AskOffice([&] { at.sheet->Clear(row, column); });
      break;
    case VT_BSTR:
      PutText(at, row, column, CString(_bstr_t(value.data).View()).View());
      break;
    case VT_BOOL:
      AskOffice([&] {
        at.sheet->PutFormat({row, column, row, column}, kTruth);
        at.sheet->PutNumber(row, column, value.data.boolVal != VARIANT_FALSE ? 1 : 0);
      });
      break;
    default:
      PutNumber(at, row, column, value);
  }
}

// The office's numbers for the programs' codes.
int JustifyOf(long code) {
  constexpr long kLeft = -4131;
  constexpr long kCentre = -4108;
  constexpr long kRight = -4152;
  if (code == kLeft) return 1;
  if (code == kCentre) return 2;
  return code == kRight ? 3 : 0;
}

class RangeFont : public OfficeObject {
 public:
  RangeFont(Place place, const Area& area)
      : OfficeObject(place->program, ObjectKind::kFont), place_(std::move(place)), area_(area) {}

 protected:
  void Put(Operation /*operation*/, const AutoValue& value) override {
    const double size = RealArgument(value);
    if (!(size >= 1 && size <= engine::kMaxFontSize)) engine::Fail(_T("字号须为1至409。"));
    AskOffice([&] { place_->sheet->PutFontSize(area_, size); });
  }

 private:
  Place place_;
  Area area_;
};

class OfficeRange : public OfficeObject {
 public:
  OfficeRange(Place place, const Area& area, RangePart part)
      : OfficeObject(place->program, ObjectKind::kRange),
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
  Area MergedArea() const {
    return AskOffice([&] { return place_->sheet->MergedArea(area_.top, area_.left); });
  }
  _variant_t Merged() const;
  double Width() const;
  void PutWidth(double width);
  void PutFormat(const CString& format);
  void PutAlignment(long code);
  void PutMerged(bool merged);

  Place place_;
  Area area_;
  RangePart part_;
};

// Of cells that are merged in part the answer is neither yes nor no.
_variant_t OfficeRange::Merged() const {
  const Area merged = MergedArea();
  if (engine::CountOf(merged, RangePart::kCells) == 1) return _variant_t(false);
  if (merged.Contains(area_.bottom, area_.right)) return _variant_t(true);
  _variant_t in_part;
  in_part.vt = VT_NULL;
  return in_part;
}

double OfficeRange::Width() const {
  // Of several columns the first one speaks.
  const OfficeWidth width = AskOffice([&] { return place_->sheet->Width(area_.left); });
  return width.hidden ? 0 : CharactersOf(width.hundredths);
}

void OfficeRange::PutWidth(double width) {
  if (!(width >= 0 && width <= engine::kMaxSheetColumnWidth)) engine::Fail(_T("列宽须为0至255。"));
  AskOffice([&] { place_->sheet->PutWidth(area_.left, area_.right, width == 0 ? 0 : HundredthsOf(width)); });
}

void OfficeRange::PutFormat(const CString& format) {
  const CString what = _T("“") + format + _T("”不是数字格式。");
  AskOffice([&] { place_->sheet->PutFormat(area_, Plain(format)); }, what);
}

void OfficeRange::PutAlignment(long code) {
  AskOffice([&] { place_->sheet->PutAlignment(area_, JustifyOf(code)); });
}

void OfficeRange::PutMerged(bool merged) {
  AskOffice([&] { place_->sheet->Merge(area_, merged); });
}

AutoValue OfficeRange::Get(Operation operation, std::span<const AutoValue> args) {
  switch (operation) {
    case Operation::kItem:
      return Sub(engine::ItemOf(area_, LongArgument(args, 0), LongArgument(args, 1)));
    case Operation::kRange:
      return Sub(engine::CornersOf(area_, TextArgument(args, 0), TextArgument(args, 1)));
    case Operation::kValue:
      return ValueOf(*place_, area_.top, area_.left);
    case Operation::kNumberFormat:
      return AutoValue(_variant_t(FormatOf(*place_, area_.top, area_.left)));
    case Operation::kMergeCells:
      return Merged();
    case Operation::kMergeArea:
      return Sub(MergedArea());
    case Operation::kColumnWidth:
      return AutoValue(_variant_t(Width()));
    case Operation::kFont:
      return AutoRef(std::make_shared<RangeFont>(place_, area_));
    case Operation::kCount:
      return AutoValue(_variant_t(engine::CountOf(area_, part_)));
    case Operation::kRow:
      return AutoValue(_variant_t(area_.top + 1));
    case Operation::kColumn:
      return AutoValue(_variant_t(area_.left + 1));
    case Operation::kRows:
      return Sub(area_, RangePart::kRows);
    case Operation::kColumns:
      return Sub(area_, RangePart::kColumns);
    case Operation::kEntireColumn:
      return Sub({0, area_.left, engine::kMaxRows - 1, area_.right});
    default:
      RaiseNoMember();
  }
}

void OfficeRange::Put(Operation operation, const AutoValue& value) {
  const std::span only(&value, 1);
  switch (operation) {
    case Operation::kValue:
      engine::ForEachCell(area_, [&](long row, long column) { PutValue(*place_, row, column, value); });
      break;
    case Operation::kNumberFormat:
      PutFormat(TextArgument(only, 0));
      break;
    case Operation::kHorizontalAlignment:
      PutAlignment(LongArgument(only, 0));
      break;
    case Operation::kColumnWidth:
      PutWidth(RealArgument(value));
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
  return std::make_shared<OfficeRange>(place, area, part);
}

}  // namespace lorv::office
