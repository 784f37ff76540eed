#pragma once

#include "framework/text/cstring.h"

namespace lorv::office {

// A format of files that the office writes.
struct FileFilter {
  const char* name = nullptr;  // the office's
  long rows = 0;               // of a sheet
  long columns = 0;
  bool keeps_controls = true;  // characters without a form in XML, and tabs at the end of a text
};

// By the end of a file's name: ".xlsx" and ".ods"; any other is written as the old programs read it (.xls).
//
//   FilterOf(_T("a.ods")).name  gives "calc8"
const FileFilter& FilterOf(const CString& path);

}  // namespace lorv::office
