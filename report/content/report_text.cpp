#include "report/content/report_text.h"

#include "platform/ports/platform.h"
#include "report/content/report_limits.h"

// The report's text and its entry in the error log. Lines whose facts are not to be had are left out: a
// report must come out on the barest system.

namespace lorv {
namespace {

// English in Unicode first, then the Chinese block of old modules.
constexpr LPCTSTR kVersionBlocks[] = {
    _T("\\StringFileInfo\\040904B0\\FileVersion"),
    _T("\\StringFileInfo\\080403A8\\FileVersion"),
};

CString VersionOf(const CString& path) {
  for (const LPCTSTR block : kVersionBlocks) {
    const auto version = PortsInForce().process->VersionText(path, block);
    if (version && !version->IsEmpty()) return *version;
  }
  return {};
}

void AppendModule(CString& report, HINSTANCE module) {
  const CString path = PortsInForce().process->ModulePath(module, kModulePathRoom);
  if (!path.IsEmpty()) report += _T("错误发生的模块是:") + path + _T("\n");
  const CString version = VersionOf(path);
  if (!version.IsEmpty()) report += _T("版本信息:") + version + _T("\n");
}

// The user's folder: what stands before the last separator of the user's path.
CString LogPath() {
  const CString user = PortsInForce().suite->UserPath();
  int separator = user.ReverseFind('\\');
  if (separator < 0) separator = user.ReverseFind('/');
  return user.Left(separator + 1) + _T("ErrorInfo.er");
}

}  // namespace

CString ReportText(const CString& message, const FailurePlace& place) {
  CString report = message + _T("\n");
  AppendModule(report, place.module);
  report.AppendFormat(_T("发生错误文件的位置为: %s, 第 %d行\n"), place.file, place.line);
  constexpr std::uint64_t kBytesPerKilobyte = 1024;
  report.AppendFormat(_T("剩余内存空间: %luKB"),
                      PortsInForce().process->FreePhysicalMemory() / kBytesPerKilobyte);
  return report;
}

void AppendToLog(const CString& report) {
  const Platform& ports = PortsInForce();
  const SYSTEMTIME now = ports.clock->LocalTime();
  CString block;
  block.Format(_T("%u年%u月%u日 %u时%u分%u秒\n%s\n"), now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
               now.wSecond, report);
  const CString path = LogPath();
  const auto log = ports.files->Open(path, FileUse::kAppend);
  // A failure that cannot be logged is not worth a second failure.
  if (!log) return;
  const std::string bytes = ports.files->WithLineEnds(ports.code_page->ToNarrow(block.View()) + "\n");
  log->Write(bytes.data(), bytes.size());
}

}  // namespace lorv
