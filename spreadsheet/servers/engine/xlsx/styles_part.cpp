#include "spreadsheet/servers/engine/xlsx/styles_part.h"

#include "framework/text/number_text.h"
#include "spreadsheet/cells/exchange_limits.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/number_format_kind.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

// The styles of a file, of which only number formats, font sizes and alignments are taken. Cells name a
// style by its place in one list, and that list names fonts and formats by theirs: so all that is told here
// is kept in the file's order.

namespace lorv::engine {
namespace {

int AlignmentCode(std::string_view horizontal) {
  if (horizontal == "left") return kAlignLeft;
  if (horizontal == "center") return kAlignCentre;
  return horizontal == "right" ? kAlignRight : 0;
}

}  // namespace

void StylesPart::TakeFormat(XmlAttributes attributes) {
  const std::string_view code = attributes.Value("formatCode");
  // No program takes a format of this length; the cells have the general one then.
  if (code.size() > kMaxFormatText) return;
  formats_[WholeNumber(attributes.Value("numFmtId"), -1)] = pool_.FormatId(CString(AttributeText(code)));
}

void StylesPart::TakeCellFormat(XmlAttributes attributes) {
  style_ = CellStyle();
  const long id = WholeNumber(attributes.Value("numFmtId"), 0);
  const auto own = formats_.find(id);
  style_.format =
      // A file's own format may stand under any number, also under one that has a meaning without it.
      own != formats_.end() ? own->second : pool_.FormatId(BuiltInFormat(static_cast<unsigned>(id)));
  const long font = WholeNumber(attributes.Value("fontId"), 0);
  // The first font is the workbook's own.
  if (font > 0 && font < static_cast<long>(font_sizes_.size())) {
    style_.font_size = font_sizes_[static_cast<std::size_t>(font)];
  }
}

void StylesPart::Start(std::string_view name, XmlAttributes attributes) {
  if (name == "numFmt") {
    TakeFormat(attributes);
  } else if (name == "fonts") {
    in_fonts_ = true;
  } else if (name == "font" && in_fonts_) {
    // A font counts even if it names no size, as styles name fonts by place.
    font_sizes_.push_back(0);
  } else if (name == "sz" && in_fonts_ && !font_sizes_.empty()) {
    // A size that no program has, "1e999" for instance, is left out: the workbook's own holds then.
    const double size = ReadReal(AttributeText(attributes.Value("val")));
    font_sizes_.back() = size >= 1 && size <= kMaxFontSize ? size : 0;
  } else if (name == "cellXfs") {
    // Another list of the same elements holds the named styles behind these; no cell points into it.
    in_cell_formats_ = true;
  } else if (name == "xf" && in_cell_formats_) {
    TakeCellFormat(attributes);
  } else if (name == "alignment" && in_cell_formats_) {
    style_.alignment = AlignmentCode(attributes.Value("horizontal"));
  }
}

void StylesPart::End(std::string_view name) {
  if (name == "fonts") in_fonts_ = false;
  if (name == "cellXfs") in_cell_formats_ = false;
  // Styles beyond the limit are plain: a file may repeat one without end.
  if (name == "xf" && in_cell_formats_ && styles_.size() < kMaxStyles) {
    styles_.push_back(pool_.StyleId(style_));
  }
}

}  // namespace lorv::engine
