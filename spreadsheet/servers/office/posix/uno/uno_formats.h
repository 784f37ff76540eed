#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <map>

#include "spreadsheet/servers/office/office_port.h"

namespace lorv::office {

// The number formats of a workbook. The office knows each by a key; both directions are kept, so that it is
// asked once a format. To be used in the body of UnoConnection::Call only.
class UnoFormats {
 public:
  explicit UnoFormats(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model);

  const OfficeFormat& OfKey(sal_Int32 key);
  // Raises the office's failure for a text that is no format.
  sal_Int32 KeyOf(const Text& text);

 private:
  com::sun::star::uno::Reference<com::sun::star::util::XNumberFormats> formats_;
  com::sun::star::uno::Reference<com::sun::star::util::XNumberFormatTypes> types_;
  std::map<sal_Int32, OfficeFormat> known_;
  std::map<Text, sal_Int32> keys_;
};

}  // namespace lorv::office
