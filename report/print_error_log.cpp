#include "report/print_error_log.h"

#include "comm/AdLorvComm.h"

// Lines gathered during a run and written as one text file. Nothing is written for a run without messages, so
// an old log of another run stays.

void CPrintErrorLog::AddFormatted(lorv::TextView line) {
  m_arrLines.Add(CString(line.substr(0, lorv::kMaxLogLine)));
}

bool CPrintErrorLog::OutputToFile(const CString& path) const {
  if (m_arrLines.IsEmpty()) return false;
  return CAdLorvComm::WriteStringArrayToTextFile(path, m_arrLines, false);
}

bool CPrintErrorLog::OutputErrorLog(LPCTSTR directory, LPCTSTR file_name, bool clear, bool open) {
  CString folder(directory);
  if (folder.IsEmpty()) folder = m_strDefaultPath;
  if (folder.IsEmpty() || !CAdLorvComm::CreatePath(folder)) return false;
  const CString path = folder + _T("\\") + file_name;
  if (!OutputToFile(path)) return false;
  if (clear) InitStringArray();
  return !open || CAdLorvComm::CreateNotepadProcess(path);
}
