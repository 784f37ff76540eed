#pragma once

#include "framework/ports/drop_port.h"

namespace lorv {

// Content for the system's drag, in the formats that it has; one reference, the caller's.
IDataObject* MakeDataObject(const TransferData& data);

// What the system's drag brings, from whatever program; the object must live as long.
class DataContent : public DragContent {
 public:
  explicit DataContent(IDataObject* data) : data_(data) {}
  bool HasText() const override { return Offers(CF_UNICODETEXT); }
  CString Text() const override;
  bool Has(const CString& format) const override;
  std::vector<BYTE> Bytes(const CString& format) const override;

 private:
  bool Offers(UINT number) const;

  IDataObject* data_;
};

}  // namespace lorv
