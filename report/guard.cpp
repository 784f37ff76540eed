#include "report/guard.h"

#include <string_view>

#include "report/error_report.h"

// The library's border: what a guarded function throws is caught there by kind and reported. The four kinds
// and their order are fixed; whatever else was thrown is "anything else".

namespace lorv {
namespace {

// The file's name alone: the folders are those of the machine that built the library.
std::string_view BareName(std::string_view path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

template <class Caught>
void Report(Caught caught, const SourcePlace& place) {
  const CString file = CString::FromUtf8(BareName(place.file));
  const CString signature = CString::FromUtf8(place.signature);
  ReportCustErrorEx(caught, file, signature, place.line, nullptr);
}

void ReportByKind(const SourcePlace& place) {
  try {
    throw;
  } catch (CException* caught) {
    Report(caught, place);
  } catch (_com_error* caught) {
    Report(caught, place);
  } catch (LPTSTR caught) {
    Report(static_cast<LPCTSTR>(caught), place);
  } catch (...) {
    Report(static_cast<CException*>(nullptr), place);
  }
}

}  // namespace

void ReportCaught(const SourcePlace& place) noexcept {
  try {
    ReportByKind(place);
  } catch (...) {  // no memory for the report itself: nothing more can be done
    return;
  }
}

}  // namespace lorv
