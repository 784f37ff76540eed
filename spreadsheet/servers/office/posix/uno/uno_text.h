#pragma once

#include <rtl/ustring.hxx>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <initializer_list>

#include "framework/text/surrogates.h"
#include "spreadsheet/servers/office/office_port.h"

// Texts and lists between the two libraries: both hold 16-bit units.
namespace lorv::office {

// Half of a surrogate pair cannot be sent to another process: the office would end. OfficeFault says so
// instead.
inline rtl::OUString ToUno(const Text& text) {
  if (HasLoneHalf(text)) throw OfficeFault{false, Text(_T("half a character"))};
  return {reinterpret_cast<const sal_Unicode*>(text.data()), static_cast<sal_Int32>(text.size())};
}

inline rtl::OUString ToUno(const char* text) {
  return rtl::OUString::createFromAscii(text);
}

inline Text FromUno(const rtl::OUString& text) {
  return {reinterpret_cast<const TCHAR*>(text.getStr()), static_cast<std::size_t>(text.getLength())};
}

inline com::sun::star::beans::PropertyValue Named(const char* name, const com::sun::star::uno::Any& value) {
  com::sun::star::beans::PropertyValue named;
  named.Name = ToUno(name);
  named.Value = value;
  return named;
}

using Properties = com::sun::star::uno::Sequence<com::sun::star::beans::PropertyValue>;

inline Properties List(std::initializer_list<com::sun::star::beans::PropertyValue> values) {
  return {values.begin(), static_cast<sal_Int32>(values.size())};
}

}  // namespace lorv::office
