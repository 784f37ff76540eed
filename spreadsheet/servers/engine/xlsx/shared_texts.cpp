#include "spreadsheet/servers/engine/xlsx/shared_texts.h"

#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

// The texts that cells name by number, and how the runs of a text become one. Other programs write nearly all
// texts this way; each is in the book's pool once, however many cells name it.

namespace lorv::engine {

void RichText::Start(std::string_view name) {
  if (name == "t") in_text_ = true;
  // How a word is read aloud stands beside it in files of eastern programs, and is
  // no part of the cell's text.
  if (name == "rPh") ++aids_;
}

void RichText::End(std::string_view name) {
  if (name == "t") in_text_ = false;
  if (name == "rPh" && aids_ > 0) --aids_;
}

void SharedTexts::Start(std::string_view name, XmlAttributes /*attributes*/) {
  if (name == "si") text_.Clear();
  text_.Start(name);
}

void SharedTexts::End(std::string_view name) {
  text_.End(name);
  if (name != "si") return;
  // Texts that no cell names take memory as well.
  if (ids_.size() >= kMaxCells) Fail(_T("工作簿中的文字太多。"));
  ids_.push_back(pool_.Add(DocumentText(text_.Bytes())));
}

}  // namespace lorv::engine
