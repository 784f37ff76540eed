#pragma once

#include <memory>

#include "framework/text/cstring.h"
#include "platform/ports/printing.h"

// The one page that a failure dialog prints.
namespace lorv {

// Asks the user for a printer and begins the page; null if it does not come to that.
std::unique_ptr<PrintJob> AskPage(HWND owner);

// Prints what stands before each line feed, a line under the other from the page's top on, and nothing behind
// the last one. There is no second page: what does not fit is lost.
void PrintLines(PrintJob& job, const CString& text);

}  // namespace lorv
