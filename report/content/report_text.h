#pragma once

#include "framework/text/cstring.h"

namespace lorv {

struct FailurePlace {
  CString file;
  int line = 0;
  HINSTANCE module = nullptr;  // null: the main program
};

// The text of a report, each line ended by a line feed but the last:
//
//   the message
//   错误发生的模块是:C:\Suite\suite.exe          (if the module has a path)
//   版本信息:10.0.1                              (if it has a version)
//   发生错误文件的位置为: a.cpp, 第 5行
//   剩余内存空间: 4194304KB
CString ReportText(const CString& message, const FailurePlace& place);

// Appends a report to the user's log: a line with the local time, the report, an empty line. Where the log
// does not open nothing is written and nothing is said.
void AppendToLog(const CString& report);

}  // namespace lorv
