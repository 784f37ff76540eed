#include "spreadsheet/servers/engine/xlsx/styles_part.h"

#include "framework/text/number_text.h"
#include "spreadsheet/cells/exchange_limits.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/styles/number_format_kind.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

// The styles of a file, of which only number formats, font sizes and alignments are taken, and whether a cell
// is seen without a value. Cells name a style by its place in one list, and that list names fonts and formats
// by theirs: so all that is reported here is kept in the file's order.

namespace lorv::engine {
namespace {

int AlignmentCode(std::string_view horizontal) {
  if (horizontal == "left") return kAlignLeft;
  if (horizontal == "center") return kAlignCentre;
  return horizontal == "right" ? kAlignRight : 0;
}

bool IsSet(const std::vector<bool>& list, long at) {
  return at >= 0 && at < static_cast<long>(list.size()) && list[static_cast<std::size_t>(at)];
}

}  // namespace

void StylesPart::TakeFormat(XmlAttributes attributes) {
  const std::string_view code = attributes.Value("formatCode");
  // No program takes a format of this length; the cells have the general one then.
  if (code.size() > kMaxFormatText) return;
  formats_[WholeNumber(attributes.Value("numFmtId"), -1)] =
      pool_.FormatId(SpelledFormat(AttributeText(code)));
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
  drawing_.fill = WholeNumber(attributes.Value("fillId"), 0);
  drawing_.frame = WholeNumber(attributes.Value("borderId"), 0);
  drawing_.is_seen = IsSet(fills_, drawing_.fill) || IsSet(frames_, drawing_.frame);
}

void StylesPart::TakeFont(std::string_view name, XmlAttributes attributes) {
  if (name == "font") {
    // A font counts even if it names no size, as styles name fonts by place.
    font_sizes_.push_back(0);
  } else if (name == "sz" && !font_sizes_.empty()) {
    // A size that no program has, "1e999" for instance, is left out: the workbook's own holds then.
    const double size = ReadReal(AttributeText(attributes.Value("val")));
    font_sizes_.back() = size >= 1 && size <= kMaxFontSize ? size : 0;
  }
}

void StylesPart::TakeFill(std::string_view name, XmlAttributes attributes) {
  if (name == "fill") fills_.push_back(false);
  if (fills_.empty()) return;
  const std::string_view pattern = attributes.Value("patternType");
  if (name == "patternFill" && !pattern.empty() && pattern != "none") fills_.back() = true;
  if (name == "gradientFill") fills_.back() = true;
}

void StylesPart::TakeFrame(std::string_view name, XmlAttributes attributes) {
  if (name == "border") frames_.push_back(false);
  // The sides stand below, each with the style of its line.
  const std::string_view line = attributes.Value("style");
  if (!frames_.empty() && !line.empty() && line != "none") frames_.back() = true;
}

void StylesPart::Start(std::string_view name, XmlAttributes attributes) {
  if (name == "numFmt") return TakeFormat(attributes);
  if (const List begun = ListOf(name); begun != List::kNone) {
    list_ = begun;
  } else if (list_ == List::kFonts) {
    TakeFont(name, attributes);
  } else if (list_ == List::kFills) {
    TakeFill(name, attributes);
  } else if (list_ == List::kFrames) {
    TakeFrame(name, attributes);
  } else if (name == "xf" && list_ == List::kCellFormats) {
    TakeCellFormat(attributes);
  } else if (name == "alignment" && list_ == List::kCellFormats) {
    style_.alignment = AlignmentCode(attributes.Value("horizontal"));
  }
}

// Another list of cell formats holds the named styles behind these; no cell points into it.
StylesPart::List StylesPart::ListOf(std::string_view name) {
  if (name == "fonts") return List::kFonts;
  if (name == "fills") return List::kFills;
  if (name == "borders") return List::kFrames;
  return name == "cellXfs" ? List::kCellFormats : List::kNone;
}

void StylesPart::End(std::string_view name) {
  if (ListOf(name) != List::kNone) list_ = List::kNone;
  // Styles beyond the limit are plain: a file may repeat one without end.
  if (name == "xf" && list_ == List::kCellFormats && styles_.size() < kMaxStyles) {
    styles_.push_back(pool_.StyleId(style_));
    drawings_.push_back(drawing_);
  }
}

}  // namespace lorv::engine
