#pragma once

#include <map>
#include <vector>

#include "spreadsheet/servers/engine/styles/style_pool.h"
#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

namespace lorv::engine {

// Reads the styles of a file into the book, and says which of the book's styles stands for a cell format of
// the file, which cells know by its place in the file's list.
class StylesPart : public XmlHandler {
 public:
  explicit StylesPart(StylePool& pool) : pool_(pool) {}

  void Start(std::string_view name, XmlAttributes attributes) override;
  void End(std::string_view name) override;
  void Text(std::string_view /*raw*/, bool /*literal*/) override {}

  // The plain style for a number that the file does not know.
  std::uint16_t StyleOf(std::size_t cell_format) const {
    return cell_format < styles_.size() ? styles_[cell_format] : std::uint16_t{0};
  }

  // A fill and a frame of the file by their numbers.
  struct Drawing {
    long fill = 0;
    long frame = 0;
    bool is_seen = false;
    bool operator==(const Drawing&) const = default;
  };
  Drawing DrawingOf(std::size_t cell_format) const {
    return cell_format < drawings_.size() ? drawings_[cell_format] : Drawing();
  }

 private:
  enum class List { kNone, kFonts, kFills, kFrames, kCellFormats };
  static List ListOf(std::string_view name);
  void TakeFormat(XmlAttributes attributes);
  void TakeCellFormat(XmlAttributes attributes);
  void TakeFont(std::string_view name, XmlAttributes attributes);
  void TakeFill(std::string_view name, XmlAttributes attributes);
  void TakeFrame(std::string_view name, XmlAttributes attributes);

  StylePool& pool_;
  std::map<long, std::uint32_t> formats_;
  std::vector<double> font_sizes_;
  std::vector<std::uint16_t> styles_;
  std::vector<bool> fills_;  // of the file's lists: whether anything is seen of them
  std::vector<bool> frames_;
  std::vector<Drawing> drawings_;
  CellStyle style_;
  Drawing drawing_;
  List list_ = List::kNone;
};

}  // namespace lorv::engine
