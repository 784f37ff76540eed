#pragma once

#include <utility>

#include "framework/text/cstring.h"
#include "spreadsheet/servers/office/office_port.h"

namespace lorv::office {

// "The server is not available", as automation's own calls say it of a program that is gone.
constexpr HRESULT kGone = static_cast<HRESULT>(0x800706BA);

// Raises COleDispatchException: kGone where the office is gone, else the failure of the programs, with `what`
// and the office's reason for the user.
[[noreturn]] void RaiseFault(const OfficeFault& fault, const CString& what);

// Runs a body that asks the bridge, and raises its faults.
template <class Body>
auto AskOffice(Body&& body, const CString& what = CString()) {
  try {
    return std::forward<Body>(body)();
  } catch (const OfficeFault& fault) {
    RaiseFault(fault, what);
  }
}

inline Text Plain(const CString& text) {
  return Text(text.View());
}

}  // namespace lorv::office
