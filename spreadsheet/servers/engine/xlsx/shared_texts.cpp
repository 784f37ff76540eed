#include "spreadsheet/servers/engine/xlsx/shared_texts.h"

#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

namespace lorv::engine {

void RichText::Start(std::string_view name) {
  if (name == "t") in_text_ = true;
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
  if (ids_.size() >= kMaxCells) Fail(_T("工作簿中的文字太多。"));
  ids_.push_back(pool_.Add(DocumentText(text_.Bytes())));
}

}  // namespace lorv::engine
