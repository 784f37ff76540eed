#pragma once

#include <string>
#include <vector>

#include "spreadsheet/servers/engine/book/text_pool.h"
#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

namespace lorv::engine {

// The text of a string element: its runs joined, without the reading aids of eastern scripts.
class RichText {
 public:
  void Clear() { text_.clear(); }
  void Start(std::string_view name);
  void End(std::string_view name);
  void Take(std::string_view raw, bool literal) {
    if (in_text_ && aids_ == 0) AppendXmlText(raw, literal, text_);
  }
  const std::string& Bytes() const { return text_; }

 private:
  std::string text_;
  bool in_text_ = false;
  int aids_ = 0;
};

// Reads the table of texts that the cells of a file share into the pool of the book.
class SharedTexts : public XmlHandler {
 public:
  explicit SharedTexts(TextPool& pool) : pool_(pool) {}

  void Start(std::string_view name, XmlAttributes attributes) override;
  void End(std::string_view name) override;
  void Text(std::string_view raw, bool literal) override { text_.Take(raw, literal); }

  // By their place in the table.
  const std::vector<std::uint32_t>& Ids() const { return ids_; }

 private:
  TextPool& pool_;
  RichText text_;
  std::vector<std::uint32_t> ids_;
};

}  // namespace lorv::engine
