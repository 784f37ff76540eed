#pragma once

#include <string>
#include <vector>

#include "spreadsheet/servers/engine/book/book.h"
#include "spreadsheet/servers/engine/xlsx/shared_texts.h"
#include "spreadsheet/servers/engine/xlsx/styles_part.h"

namespace lorv::engine {

// Reads the XML of a worksheet into a sheet of the book, which is empty: cells, widths of columns and merged
// areas. Raises the engine's failure for cells outside a sheet, texts that the file lacks, and beyond the
// limits of engine_limits.h; what was read until then stays in the sheet.
class SheetPart : public XmlHandler {
 public:
  // `cell_room` is how many cells the whole workbook may still take.
  SheetPart(Book& book, Sheet& sheet, const SharedTexts& shared, const StylesPart& styles,
            std::size_t& cell_room)
      : book_(book), sheet_(sheet), shared_(shared), styles_(styles), cell_room_(cell_room) {}

  void Start(std::string_view name, XmlAttributes attributes) override;
  void End(std::string_view name) override;
  void Text(std::string_view raw, bool literal) override;
  // The merged areas, once all are known.
  void Finish() { sheet_.merges.Assign(std::move(merges_)); }

 private:
  void StartRow(XmlAttributes attributes);
  void StartCell(XmlAttributes attributes);
  void EndCell();
  void MarkCell();
  bool IsMarkedBy(std::size_t style, long column) const;
  void PutWritten(Cell& cell);
  void PutShared(Cell& cell);
  void TakeColumns(XmlAttributes attributes);
  void TakeMerge(XmlAttributes attributes);

  Book& book_;
  Sheet& sheet_;
  const SharedTexts& shared_;
  const StylesPart& styles_;
  std::size_t& cell_room_;
  std::vector<Area> merges_;
  std::vector<StylesPart::Drawing> drawn_columns_;

  long row_ = -1;
  long column_ = -1;
  std::uint16_t style_ = 0;
  bool is_marked_ = false;  // used without a value
  char type_ = 'n';  // n number, s shared, t text of a formula, i inline, b truth value, e error, d date
  bool in_data_ = false;
  bool in_cell_ = false;
  bool in_value_ = false;
  std::string value_;
  RichText inline_;
};

}  // namespace lorv::engine
