#pragma once

#include <map>
#include <vector>

#include "spreadsheet/servers/engine/style_pool.h"
#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

namespace lorv::engine {

// The styles of a file: which style of the book stands for each of its cell formats.
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

 private:
  void TakeFormat(XmlAttributes attributes);
  void TakeCellFormat(XmlAttributes attributes);

  StylePool& pool_;
  std::map<long, std::uint32_t> formats_;
  std::vector<double> font_sizes_;
  std::vector<std::uint16_t> styles_;
  CellStyle style_;
  bool in_fonts_ = false;
  bool in_cell_formats_ = false;
};

}  // namespace lorv::engine
