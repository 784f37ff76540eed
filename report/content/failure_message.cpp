#include "report/content/failure_message.h"

#include <array>
#include <memory>

#include "report/content/report_limits.h"

// The message of each kind of failure, as the report's first line. A failure object that was thrown as a
// pointer is ended here, once its message is taken.

namespace lorv {
namespace {

// By CFileException::m_cause. The text of cause 8 speaks of a missing folder although the cause is a full
// one; users and their support know it so.
constexpr std::array<LPCTSTR, 15> kFileCauses = {
    _T("没有错误发生."),
    _T("错误类型不明."),
    _T("不能找到文件."),
    _T("路径错误."),
    _T("打开文件数量太多."),
    _T("文件不能访问."),
    _T("试图使用错误的文件句柄."),
    _T("当前的工作路径不能被删除."),
    _T("文件目录不存在."),
    _T("当设置一个文件的指针的时候,发生错误."),
    _T("硬件错误."),
    _T("SHARE.EXE 不能加载,或者是因为共享错误."),
    _T("不能锁定文件,因为已经被锁定."),
    _T("磁盘满."),
    _T("到文件尾."),
};
constexpr LPCTSTR kNoMemory = _T("内存出界");
constexpr LPCTSTR kUnknown = _T("未知错误.");

struct DeleteFailure {
  void operator()(CException* failure) const { failure->Delete(); }
};

CString OwnMessage(const CException& failure) {
  std::array<TCHAR, kFailureMessageRoom> text{};
  failure.GetErrorMessage(text.data(), kFailureMessageRoom);
  // A class of a caller's may have forgotten it.
  text.back() = 0;
  return text.data();
}

}  // namespace

CString MessageOf(CException* caught) {
  if (caught == nullptr) return kUnknown;
  const std::unique_ptr<CException, DeleteFailure> owned(caught);
  if (dynamic_cast<const CMemoryException*>(caught) != nullptr) return kNoMemory;
  if (const auto* file = dynamic_cast<const CFileException*>(caught)) {
    // A negative cause becomes a large number and has no row.
    const auto cause = static_cast<std::size_t>(file->m_cause);
    if (cause < kFileCauses.size()) return kFileCauses[cause];
  }
  return OwnMessage(*caught);
}

CString MessageOf(const _com_error* caught) {
  if (caught == nullptr) return {};
  const _bstr_t description = caught->Description();
  return MessageOf(static_cast<LPCTSTR>(description));
}

CString MessageOf(LPCTSTR text) {
  return CString(text).Left(kFailureMessageRoom - 1);
}

}  // namespace lorv
