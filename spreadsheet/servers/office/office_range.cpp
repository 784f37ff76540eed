#include <algorithm>

#include "framework/text/surrogates.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/objects/served_range.h"
#include "spreadsheet/servers/engine/styles/number_format_kind.h"
#include "spreadsheet/servers/office/column_width.h"
#include "spreadsheet/servers/office/format_spelling.h"
#include "spreadsheet/servers/office/office_object.h"

// Ranges of an office's sheet, and the font of one. What a value is, date or number, is decided by the same
// rule as in the engine, so that one file gives one table by both. Each question goes to another process, so
// nothing is asked that an answer does without.

namespace lorv::office {
namespace {

using Place = std::shared_ptr<const SheetPlace>;
using engine::RangePart;

// The office's name of the format of truth values. To it they are numbers: this format alone tells 1 from
// true.
constexpr LPCTSTR kTruth = _T("BOOLEAN");

CString FormatOf(const SheetPlace& at, long row, long column) {
  return ProgramSpelling(AskOffice([&] { return at.sheet->Format(row, column); }));
}

_variant_t NumberValue(const SheetPlace& at, long row, long column, double number) {
  const CString format = FormatOf(at, row, column);
  if (format == kTruth) return _variant_t(number != 0);
  if (!engine::IsDateFormat(format.View())) return _variant_t(number);
  const auto date = engine::DateOf(number, at.book->from_1904);
  return date ? _variant_t(*date, VT_DATE) : _variant_t(number);
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
  engine::CheckText(text);
  // Such a text has no form between processes: an office that got one ended.
  if (HasLoneHalf(text)) engine::Fail(_T("文字含有不完整的字符（单个代理项），无法写入单元格。"));
  // Noted, not refused: which of them a file keeps depends on its format, known when it is saved.
  at.book->has_controls = at.book->has_controls || HasControls(text);
  AskOffice([&] { at.sheet->PutText(row, column, Text(text)); });
}

void PutNumber(const SheetPlace& at, long row, long column, const AutoValue& value) {
  const double number = engine::NumberOf(value.data, at.book->from_1904);
  // The format is asked for where it matters only, as it is one more call to the office.
  const bool plain = value.data.vt == VT_DATE && FormatOf(at, row, column) == engine::kGeneralFormat;
  AskOffice([&] {
    // A cell that has a format of its own keeps it.
    if (plain) at.sheet->PutFormat({row, column, row, column}, engine::kPlainDate);
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

class OfficeFont : public engine::ServedFont {
 public:
  OfficeFont(Place place, const Area& area)
      : ServedFont(place->program->Family(), area), place_(std::move(place)) {}

 protected:
  AutoRef ApplicationObject() const override { return office::ApplicationObject(place_->program); }
  void PutSize(const Area& area, double points) override {
    AskOffice([&] { place_->sheet->PutFontSize(area, points); });
  }

 private:
  Place place_;
};

class OfficeRange : public engine::ServedRange {
 public:
  OfficeRange(Place place, const Area& area, RangePart part)
      : ServedRange(place->program->Family(), area, part), place_(std::move(place)) {}

 protected:
  AutoRef ApplicationObject() const override { return office::ApplicationObject(place_->program); }
  AutoRef RangeOf(const Area& area, RangePart part) const override { return RangeObject(place_, area, part); }
  AutoRef FontOf(const Area& area) const override { return std::make_shared<OfficeFont>(place_, area); }

  _variant_t ValueAt(long row, long column) const override { return ValueOf(*place_, row, column); }
  CString FormatAt(long row, long column) const override { return FormatOf(*place_, row, column); }
  Area MergedAreaAt(long row, long column) const override {
    return AskOffice([&] { return place_->sheet->MergedArea(row, column); });
  }
  double WidthOf(long column) const override {
    const OfficeWidth width = AskOffice([&] { return place_->sheet->Width(column); });
    return width.hidden ? 0 : CharactersOf(width.hundredths);
  }

  void PutValueAt(long row, long column, const AutoValue& value) override {
    PutValue(*place_, row, column, value);
  }
  void PutFormat(const Area& area, const CString& format) override {
    // The office's own reason comes behind this, in English.
    const CString what = _T("“") + format + _T("”不是数字格式。");
    AskOffice([&] { place_->sheet->PutFormat(area, Plain(format)); }, what);
  }
  void PutAlignment(const Area& area, long code) override {
    AskOffice([&] { place_->sheet->PutAlignment(area, JustifyOf(code)); });
  }
  void PutMerged(const Area& area, bool merged) override {
    AskOffice([&] { place_->sheet->Merge(area, merged); });
  }
  void PutWidth(long first, long last, double width) override {
    // 0 hides the columns; counted in hundredths it would be the room beside a column's text.
    AskOffice([&] { place_->sheet->PutWidth(first, last, width == 0 ? 0 : HundredthsOf(width)); });
  }

 private:
  Place place_;
};

}  // namespace

AutoRef RangeObject(const Place& place, const Area& area, RangePart part) {
  return std::make_shared<OfficeRange>(place, area, part);
}

}  // namespace lorv::office
