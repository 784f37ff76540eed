#include "framework/values/com_error.h"

// The failure of an automation call: its code, its rich error object if there is one, and its texts. Texts
// are fetched only on demand, as most failures are caught and ignored.

namespace {

// The range of codes that carry an old server's 16-bit number.
constexpr std::uint32_t kFirstWCode = 0x80040200;
constexpr std::uint32_t kLastWCode = 0x8004FFFF;

}  // namespace

_com_error::_com_error(HRESULT code, IErrorInfo* info, bool add_ref) noexcept : code_(code), info_(info) {
  if (info_ != nullptr && add_ref) info_->AddRef();
}

_com_error::_com_error(const _com_error& other)
    // The copy holds a reference of its own; the message is made again where it is asked for.
    : code_(other.code_), info_(other.ErrorInfo()), own_text_(other.own_text_) {}

_com_error& _com_error::operator=(const _com_error& other) {
  _com_error copy(other);
  std::swap(code_, copy.code_);
  std::swap(info_, copy.info_);
  std::swap(own_text_, copy.own_text_);
  // It belonged to the old code.
  message_.Empty();
  return *this;
}

_com_error::~_com_error() {
  if (info_ != nullptr) info_->Release();
}

IErrorInfo* _com_error::ErrorInfo() const noexcept {
  if (info_ != nullptr) info_->AddRef();
  return info_;
}

_bstr_t _com_error::Description() const {
  if (info_ == nullptr) return own_text_.IsEmpty() ? _bstr_t() : _bstr_t(own_text_);
  BSTR text = nullptr;
  info_->GetDescription(&text);
  return {text, false};
}

_bstr_t _com_error::Source() const {
  if (info_ == nullptr) return {};
  BSTR text = nullptr;
  info_->GetSource(&text);
  return {text, false};
}

LPCTSTR _com_error::ErrorMessage() const {
  if (!message_.IsEmpty()) return message_;
  message_ = lorv::SystemErrorText(code_);
  if (!message_.IsEmpty()) return message_;
  if (WCode() != 0) {
    message_.Format(_T("IDispatch error #%d"), WCode());
  } else {
    message_.Format(_T("Unknown error 0x%08X"), code_);
  }
  return message_;
}

HRESULT _com_error::WCodeToHRESULT(WORD code) noexcept {
  constexpr std::uint32_t kRoom = kLastWCode - kFirstWCode;
  // Numbers that have no room share the last code, as the platform has it.
  return static_cast<HRESULT>(code >= kRoom ? kLastWCode : kFirstWCode + code);
}

WORD _com_error::HRESULTToWCode(HRESULT code) noexcept {
  const auto bits = static_cast<std::uint32_t>(code);
  return bits >= kFirstWCode && bits <= kLastWCode ? static_cast<WORD>(bits - kFirstWCode) : WORD{0};
}

void _com_raise_error(HRESULT code, IErrorInfo* info) {
  throw _com_error(code, info);
}

void _com_issue_error(HRESULT code) {
  throw _com_error(code);
}
