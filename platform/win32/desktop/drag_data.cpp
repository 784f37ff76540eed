#include "platform/win32/desktop/drag_data.h"

#include <algorithm>

#include "platform/win32/desktop/global_data.h"
#include "platform/win32/services/system_object.h"

// Content of ours as the system's data object, and another program's data object as our content, for drags.
// All content goes in blocks of global memory, which every program reads.

namespace lorv {
namespace {

FORMATETC FormatOf(UINT number) {
  return {static_cast<CLIPFORMAT>(number), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

void FillFormat(const UINT& number, FORMATETC& format) {
  format = FormatOf(number);
}
using FormatList = CountedList<IEnumFORMATETC, FORMATETC, UINT, &FillFormat>;

class KeptData : public CountedObject<IDataObject> {
 public:
  explicit KeptData(TransferData data) : data_(std::move(data)), numbers_(NumbersOf(data_)) {}

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* medium) override {
    if (medium == nullptr) return E_POINTER;
    // Empty at failure too: a caller frees whatever it finds in it.
    *medium = {};
    const HRESULT known = QueryGetData(wanted);
    if (known != S_OK) return known;
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = BlockOf(data_, wanted->cfFormat);
    return medium->hGlobal == nullptr ? E_OUTOFMEMORY : S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override {
    if (wanted == nullptr) return E_POINTER;
    if ((wanted->tymed & TYMED_HGLOBAL) == 0) return DV_E_TYMED;
    const bool known = std::find(numbers_.begin(), numbers_.end(), wanted->cfFormat) != numbers_.end();
    return known ? S_OK : DV_E_FORMATETC;
  }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** list) override {
    if (list == nullptr) return E_POINTER;
    *list = nullptr;
    if (direction != DATADIR_GET) return E_NOTIMPL;
    *list = new FormatList(numbers_);
    return S_OK;
  }
  // No format of ours depends on a device, which is said by an empty answer.
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* /*in*/, FORMATETC* out) override {
    if (out == nullptr) return E_POINTER;
    out->ptd = nullptr;
    return E_NOTIMPL;
  }
  // A receiver cannot change what is dragged.
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC* /*wanted*/, STGMEDIUM* /*medium*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC* /*format*/, STGMEDIUM* /*medium*/, BOOL /*give*/) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* /*format*/, DWORD /*flags*/, IAdviseSink* /*sink*/,
                                    DWORD* /*number*/) override {
    return OLE_E_ADVISENOTSUPPORTED;
  }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD /*number*/) override { return OLE_E_ADVISENOTSUPPORTED; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** /*list*/) override {
    return OLE_E_ADVISENOTSUPPORTED;
  }

 private:
  TransferData data_;
  std::vector<UINT> numbers_;
};

// A format of the data, as long as it is read.
class ReadMedium {
 public:
  ReadMedium(IDataObject* data, UINT number) {
    FORMATETC wanted = FormatOf(number);
    // A source that fails may have written to the medium; that must not be freed.
    if (data == nullptr || FAILED(data->GetData(&wanted, &medium_))) medium_ = {};
  }
  ReadMedium(const ReadMedium&) = delete;
  ReadMedium& operator=(const ReadMedium&) = delete;
  ~ReadMedium() {
    if (medium_.tymed != TYMED_NULL) ReleaseStgMedium(&medium_);
  }
  HGLOBAL Block() const { return medium_.tymed == TYMED_HGLOBAL ? medium_.hGlobal : nullptr; }

 private:
  STGMEDIUM medium_ = {};
};

}  // namespace

IDataObject* MakeDataObject(const TransferData& data) {
  return new KeptData(data);
}

bool DataContent::Offers(UINT number) const {
  FORMATETC wanted = FormatOf(number);
  return data_ != nullptr && data_->QueryGetData(&wanted) == S_OK;
}

CString DataContent::Text() const {
  return TextOfBlock(ReadMedium(data_, CF_UNICODETEXT).Block());
}

bool DataContent::Has(const CString& format) const {
  return Offers(NumberOfFormat(format));
}

std::vector<BYTE> DataContent::Bytes(const CString& format) const {
  return BytesOfBlock(ReadMedium(data_, NumberOfFormat(format)).Block(), format);
}

}  // namespace lorv
