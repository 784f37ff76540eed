#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <map>

#include "spreadsheet/servers/office/posix/uno/uno_block.h"
#include "spreadsheet/servers/office/posix/uno/uno_connection.h"
#include "spreadsheet/servers/office/posix/uno/uno_formats.h"

namespace lorv::office {

// What the sheets of a workbook share.
struct UnoShared {
  UnoShared(ConnectionRef to, const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& of)
      : connection(std::move(to)), model(of), formats(of) {}

  ConnectionRef connection;
  com::sun::star::uno::Reference<com::sun::star::frame::XModel> model;
  UnoFormats formats;
  // Counts the changes to the workbook. A block that was read before the last change may be out of date, as a
  // formula of any sheet may depend on what was changed.
  unsigned changes = 0;
};

// A sheet of a workbook. The last cell that was written and the last block that was read are kept.
class UnoSheet : public OfficeSheet {
 public:
  using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;
  UnoSheet(std::shared_ptr<UnoShared> book, const Sheet& sheet) : book_(std::move(book)), sheet_(sheet) {}

  Text Name() override;
  bool Rename(const Text& name) override;
  Area UsedArea() override;
  std::vector<Area> MergedAreas() override;
  void Expect(const Area& area) override { expected_ = area; }
  OfficeCell Cell(long row, long column) override;
  OfficeFormat Format(long row, long column) override;
  Area MergedArea(long row, long column) override;
  OfficeWidth Width(long column) override;
  void PutNumber(long row, long column, double number) override;
  void PutText(long row, long column, const Text& text) override;
  void Clear(long row, long column) override;
  void PutFormat(const Area& area, const Text& text) override;
  void PutFontSize(const Area& area, double points) override;
  void PutAlignment(const Area& area, int justify) override;
  void PutWidth(long first, long last, long hundredths) override;
  void Merge(const Area& area, bool merged) override;

 private:
  using PropertyRef = com::sun::star::uno::Reference<com::sun::star::beans::XPropertySet>;
  using CellRef = com::sun::star::uno::Reference<com::sun::star::table::XCell>;
  // What follows may be called in the body of UnoConnection::Call only.
  const CellRef& CellAt(long row, long column);
  PropertyRef LookOf(const Area& area);
  const PropertyRef& ColumnAt(long column);
  Area Used();
  const UnoBlock& BlockAt(long row, long column);
  template <class Body>
  void Change(Body&& body);

  std::shared_ptr<UnoShared> book_;
  Sheet sheet_;
  CellRef cell_;
  PropertyRef cell_look_;
  long row_ = -1;
  long column_ = -1;
  std::map<long, PropertyRef> columns_;
  UnoBlock block_;
  Area used_;
  Area expected_;
  unsigned block_changes_ = 0;
  long next_rows_ = 1;
};

}  // namespace lorv::office
