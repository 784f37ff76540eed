#pragma once

#include "framework/collections/string_array.h"
#include "framework/text/cstring.h"

// Messages collected by a caller and written at the end to one text file, which may be opened for the user.
//
// Units: formatted lines hold 16-bit units, at most lorv::kMaxLogLine; longer ones are cut to it. Lines added
//   as they are have no limit of their own.
// Edges: a null text counts as the empty one. The file is written in the system's narrow code page.
// Result: OutputErrorLog reports only whether all of its steps were done; no message is shown.
// An object belongs to one thread at a time. Texts are copied.
//
//   CPrintErrorLog log;  log.AddErrorLog(_T("%s: %d"), _T("KL1"), 3);
//   log.OutputErrorLog(_T("C:\\Temp"), _T("check.txt"), true, false)  writes the line "KL1: 3"
class COMM_LORV_API CPrintErrorLog {
 public:
  CPrintErrorLog() = default;
  virtual ~CPrintErrorLog() = default;

  // The folder that OutputErrorLog uses when it is given none.
  void SetDefaultUsingPath(LPCTSTR directory) { m_strDefaultPath = directory; }

  // Adds a line as it stands.
  void AddOneString(LPCTSTR text) { m_arrLines.Add(text); }

  // Adds a line made by printf's formats; see framework/text/format.h.
  template <class... Args>
  void AddErrorLog(LPCTSTR format, const Args&... args) {
    AddFormatted(lorv::FormatText(format == nullptr ? _T("") : format, {lorv::FormatArg(args)...}));
  }

  // Forgets all lines. The default folder stays.
  void InitErrorLog() { InitStringArray(); }

  // Writes the lines to `directory`\`file_name`, replacing what stands there.
  //
  // An empty directory means the default one. It is made if only its last level is missing. A separator comes
  // between the two even if the directory ends in one. With `clear` the lines are forgotten afterwards; with
  // `open` the file is opened in the text viewer. Result: false when there is no directory, it cannot be
  //   made, THERE ARE NO LINES (the directory is made all the same), the file cannot be written, or, with
  //   `open`, no viewer starts. But for the last case the lines stay, so that another directory can be tried.
  bool OutputErrorLog(LPCTSTR directory, LPCTSTR file_name, bool clear, bool open);

  const CStringArray& Lines() const { return m_arrLines; }

 private:
  void AddFormatted(lorv::TextView line);
  void InitStringArray() { m_arrLines.RemoveAll(); }
  bool OutputToFile(const CString& path) const;

  CStringArray m_arrLines;
  CString m_strDefaultPath;
};

namespace lorv {

// Units of a line that AddErrorLog formats.
constexpr int kMaxLogLine = 512;

}  // namespace lorv
