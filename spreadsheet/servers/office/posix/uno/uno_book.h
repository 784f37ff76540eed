#pragma once

#include "spreadsheet/servers/office/posix/uno/uno_sheet.h"

namespace lorv::office {

// A workbook that is open in the office.
class UnoBook : public OfficeBook {
 public:
  using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;
  // To be called in the body of UnoConnection::Call only.
  UnoBook(const ConnectionRef& connection, const Model& model)
      : shared_(std::make_shared<UnoShared>(connection, model)) {}

  long SheetCount() override;
  std::shared_ptr<OfficeSheet> Sheet(long at) override;
  void AddSheet(long at, const Text& name) override;
  bool CountsFrom1904() override;
  void PutSaved(bool saved) override;
  void Save(const Text& path, const char* filter) override;
  void Close() override;
  long ActiveSheet() override;
  bool Selection(Area& area) override;
  void Select(long sheet, const Area& area) override;

 private:
  std::shared_ptr<UnoShared> shared_;
};

}  // namespace lorv::office
