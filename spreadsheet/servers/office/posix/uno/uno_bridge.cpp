#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XCloseable.hpp>

#include "spreadsheet/servers/office/posix/uno/uno_book.h"
#include "spreadsheet/servers/office/posix/uno/uno_path.h"
#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// The module's entry and its bridge: an office is started, workbooks are made and opened in it. Files come
// from anywhere: their macros and links to other files are left alone, and nothing asks a user who does not
// sit before this office.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
using com::sun::star::lang::XComponent;
using ModelRef = uno::Reference<com::sun::star::frame::XModel>;

constexpr sal_Int16 kNever = 0;  // of macros and of links

bool EndsWith(const rtl::OUString& text, const char* end) {
  return text.endsWithIgnoreAsciiCaseAsciiL(end, static_cast<sal_Int32>(std::char_traits<char>::length(end)));
}

// What is no workbook is opened as a text table: the office refuses next to nothing. A page of HTML is left
// to it, as many programs save their tables so under the name of a workbook.
bool IsTakenForText(const ModelRef& model, const rtl::OUString& address) {
  for (const char* end : {".csv", ".txt", ".tsv", ".tab"}) {
    if (EndsWith(address, end)) return false;
  }
  const auto arguments = model->getArgs();
  for (sal_Int32 i = 0; i < arguments.getLength(); ++i) {
    rtl::OUString filter;
    if (arguments[i].Name == ToUno("FilterName")) arguments[i].Value >>= filter;
    if (filter.startsWith(ToUno("Text"))) return true;
  }
  return false;
}

// What was opened and is not wanted must not stay open in an office that goes on running.
void CloseQuietly(const uno::Reference<XComponent>& component) {
  const uno::Reference<com::sun::star::util::XCloseable> closing(component, uno::UNO_QUERY);
  if (closing.is()) closing->close(true);
}

class UnoBridge : public OfficeBridge {
 public:
  explicit UnoBridge(const OfficeStart& start) : connection_(std::make_shared<UnoConnection>(start)) {}

  std::shared_ptr<OfficeBook> NewBook() override {
    return Load(ToUno("private:factory/scalc"), List({Named("Hidden", uno::Any(true))}));
  }

  std::shared_ptr<OfficeBook> OpenBook(const Text& path, bool as_template) override {
    return Load(
        AddressOf(path),
        List({Named("Hidden", uno::Any(true)), Named("AsTemplate", uno::Any(as_template)),
              Named("MacroExecutionMode", uno::Any(kNever)), Named("UpdateDocMode", uno::Any(kNever))}));
  }

  long ProcessId() override { return connection_->ProcessId(); }

 private:
  std::shared_ptr<OfficeBook> Load(const rtl::OUString& address, const Properties& how) {
    return connection_->Call([&]() -> std::shared_ptr<OfficeBook> {
      const uno::Reference<XComponent> component =
          connection_->Desktop()->loadComponentFromURL(address, ToUno("_blank"), 0, how);
      const uno::Reference<com::sun::star::sheet::XSpreadsheetDocument> document(component, uno::UNO_QUERY);
      const ModelRef model(component, uno::UNO_QUERY);
      if (!document.is() || !model.is() || IsTakenForText(model, address)) {
        CloseQuietly(component);
        throw OfficeFault{};
      }
      return std::make_shared<UnoBook>(connection_, model);
    });
  }

  ConnectionRef connection_;
};

}  // namespace
}  // namespace lorv::office

extern "C" __attribute__((visibility("default"))) lorv::office::OfficeBridge* LorvStartOffice(
    const lorv::office::OfficeStart& start) {
  return new lorv::office::UnoBridge(start);
}
