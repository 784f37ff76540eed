#include "framework/values/bstr.h"

#include <utility>

#include "framework/values/com_error.h"
#include "framework/values/variant.h"

// The owner of an automation text. Each object has a copy of its own, where the platform's class shares one
// among copies and counts them: so an object may go to another thread, and its text may be taken out (Detach)
// without a look at others.

namespace {

// Null stays null: "no text" is not the empty text.
BSTR Allocated(LPCTSTR text, std::size_t length) {
  if (text == nullptr) return nullptr;
  const BSTR fresh = length <= 0x7FFFFFFF ? SysAllocStringLen(text, static_cast<UINT>(length)) : nullptr;
  if (fresh == nullptr) _com_raise_error(E_OUTOFMEMORY);
  return fresh;
}

}  // namespace

_bstr_t::_bstr_t(LPCTSTR text) : text_(Allocated(text, text == nullptr ? 0 : lorv::TextLength(text))) {}

_bstr_t::_bstr_t(const CString& text) : text_(Allocated(text.GetString(), text.View().size())) {}

_bstr_t::_bstr_t(const _variant_t& value) {
  VARIANT text{};
  lorv::CheckResult(lorv::ChangeValueType(text, value, VT_BSTR));
  text_ = text.bstrVal;
}

_bstr_t::_bstr_t(BSTR text, bool copy) : text_(copy ? Allocated(text, SysStringLen(text)) : text) {}

_bstr_t::_bstr_t(const _bstr_t& other) : _bstr_t(other.text_, true) {}

_bstr_t& _bstr_t::operator=(const _bstr_t& other) {
  if (this != &other) Assign(other.text_);
  return *this;
}

_bstr_t& _bstr_t::operator=(_bstr_t&& other) noexcept {
  if (this != &other) Attach(other.Detach());
  return *this;
}

lorv::TextView _bstr_t::View() const noexcept {
  return text_ == nullptr ? lorv::TextView() : lorv::TextView(text_, length());
}

BSTR _bstr_t::copy(bool copy) const {
  return copy ? Allocated(text_, length()) : text_;
}

BSTR* _bstr_t::GetAddress() noexcept {
  // The receiver of the address writes a new text there; the old one would leak.
  Attach(nullptr);
  return &text_;
}

void _bstr_t::Assign(BSTR text) {
  Attach(Allocated(text, SysStringLen(text)));
}

void _bstr_t::Attach(BSTR text) noexcept {
  SysFreeString(std::exchange(text_, text));
}

BSTR _bstr_t::Detach() noexcept {
  return std::exchange(text_, nullptr);
}

_bstr_t& _bstr_t::operator+=(const _bstr_t& other) {
  // Nothing and nothing stays nothing, not the empty text.
  if (text_ == nullptr && other.text_ == nullptr) return *this;
  std::basic_string<TCHAR> joined(View());
  joined.append(other.View());
  Attach(Allocated(joined.data(), joined.size()));
  return *this;
}

int _bstr_t::Compared(const _bstr_t& other) const noexcept {
  // "No text" comes before every text, the empty one included.
  if (text_ == nullptr || other.text_ == nullptr) {
    return static_cast<int>(text_ != nullptr) - static_cast<int>(other.text_ != nullptr);
  }
  return lorv::CompareExact(View(), other.View());
}
