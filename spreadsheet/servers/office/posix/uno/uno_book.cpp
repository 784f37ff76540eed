#include "spreadsheet/servers/office/posix/uno/uno_book.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "spreadsheet/servers/office/posix/uno/uno_path.h"
#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// A workbook of a running office. Each operation is one call through the connection, which watches the
// time and turns the office's own exceptions into faults: so nothing of the office's types leaves this
// file.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
namespace sheet = com::sun::star::sheet;
using ModelRef = uno::Reference<com::sun::star::frame::XModel>;

uno::Reference<sheet::XSpreadsheets> SheetsOf(const ModelRef& model) {
  const uno::Reference<sheet::XSpreadsheetDocument> document(model, uno::UNO_QUERY_THROW);
  return document->getSheets();
}

uno::Reference<sheet::XSpreadsheet> SheetAt(const ModelRef& model, long at) {
  const uno::Reference<com::sun::star::container::XIndexAccess> all(SheetsOf(model), uno::UNO_QUERY_THROW);
  return {all->getByIndex(static_cast<sal_Int32>(at)), uno::UNO_QUERY_THROW};
}

}  // namespace

long UnoBook::SheetCount() {
  return shared_->connection->Call([&] {
    const uno::Reference<com::sun::star::container::XIndexAccess> all(SheetsOf(shared_->model),
                                                                      uno::UNO_QUERY_THROW);
    return long{all->getCount()};
  });
}

std::shared_ptr<OfficeSheet> UnoBook::Sheet(long at) {
  return shared_->connection->Call(
      [&] { return std::make_shared<UnoSheet>(shared_, SheetAt(shared_->model, at)); });
}

void UnoBook::AddSheet(long at, const Text& name) {
  shared_->connection->Call(
      [&] { SheetsOf(shared_->model)->insertNewByName(ToUno(name), static_cast<sal_Int16>(at)); });
}

bool UnoBook::CountsFrom1904() {
  return shared_->connection->Call([&] {
    const uno::Reference<com::sun::star::beans::XPropertySet> document(shared_->model, uno::UNO_QUERY_THROW);
    com::sun::star::util::Date first;
    document->getPropertyValue(ToUno("NullDate")) >>= first;
    return first.Year == 1904;
  });
}

void UnoBook::PutSaved(bool saved) {
  shared_->connection->Call([&] {
    const uno::Reference<com::sun::star::util::XModifiable> state(shared_->model, uno::UNO_QUERY_THROW);
    state->setModified(!saved);
  });
}

void UnoBook::Save(const Text& path, const char* filter) {
  shared_->connection->Call([&] {
    const uno::Reference<com::sun::star::frame::XStorable> store(shared_->model, uno::UNO_QUERY_THROW);
    // The document keeps its own name: what is given here is the name of an unfinished file.
    store->storeToURL(AddressOf(path), List({Named("FilterName", uno::Any(ToUno(filter))),
                                             Named("Overwrite", uno::Any(true))}));
  });
}

void UnoBook::Close() {
  shared_->connection->Call([&] {
    const uno::Reference<com::sun::star::util::XCloseable> closing(shared_->model, uno::UNO_QUERY_THROW);
    // Whoever still holds the document then closes it: it must not stay open for want of an owner.
    closing->close(true);
  });
}

long UnoBook::ActiveSheet() {
  return shared_->connection->Call([&] {
    const uno::Reference<sheet::XSpreadsheetView> view(shared_->model->getCurrentController(),
                                                       uno::UNO_QUERY);
    // A document without a view has no sheet in front.
    if (!view.is()) return -1L;
    const uno::Reference<sheet::XCellRangeAddressable> place(view->getActiveSheet(), uno::UNO_QUERY_THROW);
    return long{place->getRangeAddress().Sheet};
  });
}

bool UnoBook::Selection(Area& area) {
  return shared_->connection->Call([&] {
    const uno::Reference<sheet::XCellRangeAddressable> place(shared_->model->getCurrentSelection(),
                                                             uno::UNO_QUERY);
    // Several areas at once, or a drawing, are none.
    if (!place.is()) return false;
    const auto address = place->getRangeAddress();
    area = {address.StartRow, address.StartColumn, address.EndRow, address.EndColumn};
    return true;
  });
}

void UnoBook::Select(long at, const Area& area) {
  shared_->connection->Call([&] {
    const auto chosen = SheetAt(shared_->model, at);
    const uno::Reference<sheet::XSpreadsheetView> view(shared_->model->getCurrentController(),
                                                       uno::UNO_QUERY_THROW);
    // The sheet first: what is marked belongs to the sheet in front.
    view->setActiveSheet(chosen);
    const uno::Reference<com::sun::star::view::XSelectionSupplier> selection(view, uno::UNO_QUERY_THROW);
    selection->select(uno::Any(chosen->getCellRangeByPosition(
        static_cast<sal_Int32>(area.left), static_cast<sal_Int32>(area.top),
        static_cast<sal_Int32>(area.right), static_cast<sal_Int32>(area.bottom))));
  });
}

}  // namespace lorv::office
