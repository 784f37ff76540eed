#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/objects/engine_object.h"
#include "spreadsheet/servers/engine/objects/served_range.h"

// Ranges of the engine's sheets, and the font of one. A range holds its sheet, so that it can be asked after
// the workbook was closed, as objects of programs can for as long as somebody counts them.

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

class EngineFont : public ServedFont {
 public:
  EngineFont(Place place, const Area& area)
      : ServedFont(place->program->Family(), area), place_(std::move(place)) {}

 protected:
  AutoRef ApplicationObject() const override { return engine::ApplicationObject(place_->program); }
  void PutSize(const Area& area, double points) override {
    ChangeStyles(*place_, area, [&](CellStyle& style) { style.font_size = points; });
  }

 private:
  Place place_;
};

class EngineRange : public ServedRange {
 public:
  EngineRange(Place place, const Area& area, RangePart part)
      : ServedRange(place->program->Family(), area, part), place_(std::move(place)) {}

 protected:
  AutoRef ApplicationObject() const override { return engine::ApplicationObject(place_->program); }
  AutoRef RangeOf(const Area& area, RangePart part) const override { return RangeObject(place_, area, part); }
  AutoRef FontOf(const Area& area) const override { return std::make_shared<EngineFont>(place_, area); }

  _variant_t ValueAt(long row, long column) const override {
    return CellValue(*place_->book, *place_->sheet, row, column);
  }
  CString FormatAt(long row, long column) const override {
    return place_->book->styles.FormatText(StyleOf(*place_->book, *place_->sheet, row, column).format);
  }
  Area MergedAreaAt(long row, long column) const override {
    const Area* const area = place_->sheet->merges.Find(row, column);
    return area == nullptr ? Area{row, column, row, column} : *area;
  }
  double WidthOf(long column) const override {
    // A hidden column keeps its width for the day it is shown again; asked for, it is 0, as programs answer.
    const ColumnShape& shape = place_->sheet->columns.At(column);
    return shape.hidden ? 0 : shape.width;
  }

  void PutValueAt(long row, long column, const AutoValue& value) override {
    PutCellValue(*place_->book, *place_->sheet, row, column, value.data);
  }
  void PutFormat(const Area& area, const CString& format) override {
    // Once for the area: the pool finds a format by comparing texts.
    const std::uint32_t id = place_->book->styles.FormatId(format);
    ChangeStyles(*place_, area, [&](CellStyle& style) { style.format = id; });
  }
  void PutAlignment(const Area& area, long code) override {
    // Any code is kept; the writer of files leaves out those that it has no word for.
    ChangeStyles(*place_, area, [&](CellStyle& style) { style.alignment = static_cast<int>(code); });
  }
  void PutMerged(const Area& area, bool merged) override {
    if (merged) {
      place_->sheet->merges.Add(area);
    } else {
      place_->sheet->merges.Remove(area);
    }
  }
  void PutWidth(long first, long last, double width) override { place_->sheet->PutWidth(first, last, width); }

 private:
  Place place_;
};

}  // namespace

AutoRef RangeObject(const Place& place, const Area& area, RangePart part) {
  return std::make_shared<EngineRange>(place, area, part);
}

}  // namespace lorv::engine
