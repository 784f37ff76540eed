#include "framework/objects/exceptions.h"

#include <algorithm>
#include <array>
#include <cerrno>

// The framework's failure objects: thrown as pointers, ended by Delete, with a short Chinese text each, the
// same on every system. A failure must be able to arise when everything else fails, so the one for lack of
// memory is a static object and texts are constants.

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)
IMPLEMENT_DYNAMIC(CInvalidArgException, CException)
IMPLEMENT_DYNAMIC(CResourceException, CException)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)
IMPLEMENT_DYNAMIC(COleException, CException)
IMPLEMENT_DYNAMIC(COleDispatchException, CException)

namespace {

struct CauseOfError {
  int error;
  int cause;
};

using File = CFileException;

// What is not listed is the general cause, as in the framework.
constexpr std::array kCausesOfErrno = {
    CauseOfError{0, File::none},
    CauseOfError{EPERM, File::accessDenied},
    CauseOfError{EACCES, File::accessDenied},
    CauseOfError{EROFS, File::accessDenied},
    CauseOfError{ENOENT, File::fileNotFound},
    CauseOfError{ENOTDIR, File::badPath},
    CauseOfError{ENAMETOOLONG, File::badPath},
    CauseOfError{EMFILE, File::tooManyOpenFiles},
    CauseOfError{ENFILE, File::tooManyOpenFiles},
    CauseOfError{EBADF, File::invalidFile},
    CauseOfError{EIO, File::hardIO},
    CauseOfError{ENOSPC, File::diskFull},
    CauseOfError{ESPIPE, File::badSeek},
    CauseOfError{EDEADLK, File::lockViolation},
};

// Numbers of the Windows error list.
constexpr std::array kCausesOfOsError = {
    CauseOfError{0, File::none},
    CauseOfError{2, File::fileNotFound},
    CauseOfError{3, File::badPath},
    CauseOfError{4, File::tooManyOpenFiles},
    CauseOfError{5, File::accessDenied},
    CauseOfError{6, File::fileNotFound},
    CauseOfError{15, File::badPath},
    CauseOfError{16, File::removeCurrentDir},
    CauseOfError{18, File::fileNotFound},
    CauseOfError{19, File::accessDenied},
    CauseOfError{23, File::hardIO},
    CauseOfError{25, File::badSeek},
    CauseOfError{29, File::hardIO},
    CauseOfError{30, File::hardIO},
    CauseOfError{32, File::sharingViolation},
    CauseOfError{33, File::lockViolation},
    CauseOfError{38, File::endOfFile},
    CauseOfError{39, File::diskFull},
    CauseOfError{53, File::badPath},
    CauseOfError{65, File::accessDenied},
    CauseOfError{82, File::directoryFull},
    CauseOfError{112, File::diskFull},
    CauseOfError{123, File::badPath},
    CauseOfError{131, File::badSeek},
    CauseOfError{161, File::badPath},
    CauseOfError{206, File::badPath},
};

template <std::size_t N>
int CauseIn(const std::array<CauseOfError, N>& table, LONG error) {
  const auto row = std::find_if(table.begin(), table.end(), [=](const auto& r) { return r.error == error; });
  return row == table.end() ? static_cast<int>(File::genericException) : row->cause;
}

constexpr std::array<LPCTSTR, 15> kFileTexts = {
    _T("没有错误发生。"),       _T("文件操作失败。"), _T("找不到文件。"),     _T("路径无效。"),
    _T("打开的文件太多。"),     _T("文件拒绝访问。"), _T("文件句柄无效。"),   _T("不能删除当前目录。"),
    _T("目录已满。"),           _T("文件定位失败。"), _T("读写设备时出错。"), _T("文件正被另一程序使用。"),
    _T("文件的一部分被锁定。"), _T("磁盘已满。"),     _T("已到文件末尾。"),
};

constexpr std::array<LPCTSTR, 9> kArchiveTexts = {
    _T("没有错误发生。"),         _T("存取数据失败。"),   _T("数据只能读取。"),
    _T("数据意外结束。"),         _T("数据只能写入。"),   _T("数据格式错误。"),
    _T("数据中的对象类型不符。"), _T("数据的版本不符。"), _T("缓冲区已满。"),
};

template <std::size_t N>
CString TextIn(const std::array<LPCTSTR, N>& texts, int cause) {
  const bool known = cause >= 0 && cause < static_cast<int>(N);
  // Row 1 is the general failure: the cause comes from a caller and may be any number.
  return texts[known ? static_cast<std::size_t>(cause) : 1];
}

// The failure of a lack of memory must not need memory.
CMemoryException& NoMemory() {
  static CMemoryException the_one(FALSE);
  return the_one;
}

}  // namespace

BOOL CException::GetErrorMessage(LPTSTR error, UINT max_error, UINT* help_context) const {
  if (help_context != nullptr) *help_context = 0;
  if (error == nullptr || max_error == 0) return FALSE;
  const CString text = ErrorText();
  // Cut to the caller's buffer, which always ends with a zero unit.
  const auto length = std::min<std::size_t>(text.View().size(), max_error - 1);
  std::copy_n(text.GetString(), length, error);
  error[length] = 0;
  return TRUE;
}

void CException::Delete() {
  // Objects that no one made by `new` say so and stay.
  if (m_bAutoDelete) delete this;
}

CString CException::ErrorText() const {
  return _T("操作失败。");
}

CString CMemoryException::ErrorText() const {
  return _T("内存不足。");
}

CString CNotSupportedException::ErrorText() const {
  return _T("不支持此操作。");
}

CString CInvalidArgException::ErrorText() const {
  return _T("遇到不适当的参数。");
}

CString CResourceException::ErrorText() const {
  return _T("找不到所需的资源。");
}

CString CFileException::ErrorText() const {
  const CString text = TextIn(kFileTexts, m_cause);
  return m_strFileName.IsEmpty() ? text : m_strFileName + _T(": ") + text;
}

CString CArchiveException::ErrorText() const {
  const CString text = TextIn(kArchiveTexts, m_cause);
  return m_strFileName.IsEmpty() ? text : m_strFileName + _T(": ") + text;
}

int CFileException::ErrnoToException(int error) {
  return CauseIn(kCausesOfErrno, error);
}

int CFileException::OsErrorToException(LONG error) {
  return CauseIn(kCausesOfOsError, error);
}

void CFileException::ThrowErrno(int error, LPCTSTR file_name) {
  throw new CFileException(ErrnoToException(error), error, file_name);
}

void CFileException::ThrowOsError(LONG error, LPCTSTR file_name) {
  throw new CFileException(OsErrorToException(error), error, file_name);
}

void AfxThrowMemoryException() {
  // By pointer, as all failures of the framework are thrown; Delete leaves this one alone.
  throw &NoMemory();
}

void AfxThrowNotSupportedException() {
  throw new CNotSupportedException;
}

void AfxThrowInvalidArgException() {
  throw new CInvalidArgException;
}

void AfxThrowResourceException() {
  throw new CResourceException;
}

void AfxThrowUserException() {
  throw new CUserException;
}

void AfxThrowFileException(int cause, LONG os_error, LPCTSTR file_name) {
  throw new CFileException(cause, os_error, file_name);
}

void AfxThrowArchiveException(int cause, LPCTSTR file_name) {
  throw new CArchiveException(cause, file_name);
}
