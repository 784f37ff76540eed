#include "spreadsheet/servers/office/posix/uno/uno_formats.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>

#include "spreadsheet/servers/office/posix/uno/uno_text.h"

// A key stands for a text in some language; texts are read in English, whatever the file's own.

namespace lorv::office {
namespace {

namespace uno = com::sun::star::uno;
namespace util = com::sun::star::util;

com::sun::star::lang::Locale English() {
  return {ToUno("en"), ToUno("US"), {}};
}

}  // namespace

UnoFormats::UnoFormats(const uno::Reference<com::sun::star::frame::XModel>& model) {
  const uno::Reference<util::XNumberFormatsSupplier> supplier(model, uno::UNO_QUERY_THROW);
  formats_ = supplier->getNumberFormats();
  types_.set(formats_, uno::UNO_QUERY_THROW);
}

const OfficeFormat& UnoFormats::OfKey(sal_Int32 key) {
  // A question to the other process takes longer than all else of a cell; workbooks have few formats.
  if (const auto found = known_.find(key); found != known_.end()) return found->second;
  const auto format = formats_->getByKey(types_->getFormatForLocale(key, English()));
  rtl::OUString text;
  sal_Int16 type = 0;
  format->getPropertyValue(ToUno("FormatString")) >>= text;
  format->getPropertyValue(ToUno("Type")) >>= type;
  return known_[key] = {FromUno(text), (type & util::NumberFormat::DATETIME) != 0};
}

sal_Int32 UnoFormats::KeyOf(const Text& text) {
  if (const auto found = keys_.find(text); found != keys_.end()) return found->second;
  // In the office's own language, which is English as it was started: a format of a language that is named
  // goes into files with that name in front, and other programs take its "$" for a sign of money.
  const com::sun::star::lang::Locale own;
  sal_Int32 key = formats_->queryKey(ToUno(text), own, false);
  if (key < 0) key = formats_->addNew(ToUno(text), own);
  return keys_[text] = key;
}

}  // namespace lorv::office
