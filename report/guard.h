#pragma once

#include <utility>

#include "framework/native/export.h"

// The one guard of the library's functions: runs a body, reports whatever leaves it, and returns normally.
//
// Kinds, in this order: CException*, _com_error*, a text (TCHAR*), anything else; each goes to the form of
//   ReportCustErrorEx that fits, with the place given and the main program as module. Anything else is
//   reported as unknown and asks for a stack report.
// Result: what the body did before it failed stands; the caller gives its result another way.
// Any thread.
//
//   int result = 1;
//   lorv::Guarded(LORV_HERE, [&] { result = Unpack(archive); });
namespace lorv {

// A place in the source; the texts are literals.
struct SourcePlace {
  const char* file;
  const char* signature;
  int line;
};

// Reports the failure now being handled: to be called from a catch-all clause only.
COMM_LORV_API void ReportCaught(const SourcePlace& place) noexcept;

template <class Body>
void Guarded(const SourcePlace& place, Body&& body) {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    ReportCaught(place);
  }
}

}  // namespace lorv

// The place where it stands, with the full signature of the function around it.
#define LORV_HERE (::lorv::SourcePlace{__FILE__, static_cast<const char*>(__PRETTY_FUNCTION__), __LINE__})
