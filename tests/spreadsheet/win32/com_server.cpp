#include "tests/spreadsheet/win32/com_server.h"

#include <objbase.h>

#include <utility>

#include "framework/objects/exceptions.h"
#include "spreadsheet/servers/engine/objects/engine_objects.h"

namespace lorv::test {
namespace {

using com::ComPointer;

// By which an object of ours is known among dispatches.
constexpr GUID kOurs = {0x3C0E6A11, 0x7B52, 0x4F4D, {0x8E, 0x10, 0x55, 0xA0, 0x62, 0x9C, 0x41, 0x7E}};
constexpr GUID kExcelClass = {0x8A7E0C31, 0x1D20, 0x4B6B, {0xA1, 0x6D, 0x30, 0x4C, 0x7B, 0x82, 0x95, 0x01}};
constexpr GUID kEtClass = {0x8A7E0C32, 0x1D20, 0x4B6B, {0xA1, 0x6D, 0x30, 0x4C, 0x7B, 0x82, 0x95, 0x02}};
constexpr LPCTSTR kKey = _T("Software\\Classes\\");

bool Same(REFIID a, REFIID b) {
  return IsEqualGUID(a, b) != FALSE;
}

// Type information that has an id and nothing else.
ComPointer<ITypeInfo> TypeInfoOf(const GUID& id) {
  TCHAR folder[MAX_PATH] = {};
  TCHAR path[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, folder);
  GetTempFileNameW(folder, _T("tlb"), 0, path);
  ComPointer<ICreateTypeLib2> library;
  ComPointer<ICreateTypeInfo> making;
  ComPointer<ITypeInfo> info;
  CreateTypeLib2(SYS_WIN64, path, library.Receive());
  TCHAR name[] = _T("Workbook");
  library->CreateTypeInfo(name, TKIND_DISPATCH, making.Receive());
  making->SetGuid(id);
  making->LayOut();
  making->QueryInterface(IID_ITypeInfo, reinterpret_cast<void**>(info.Receive()));
  DeleteFileW(path);
  return info;
}

class EngineDispatch : public IDispatch {
 public:
  EngineDispatch(AutoRef target, ComPointer<ITypeInfo> info)
      : target_(std::move(target)), info_(std::move(info)) {}
  virtual ~EngineDispatch() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!Same(id, IID_IUnknown) && !Same(id, IID_IDispatch) && !Same(id, kOurs)) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --count_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = info_ ? 1 : 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*language*/, ITypeInfo** info) override {
    if (index != 0 || !info_) return DISP_E_BADINDEX;
    *info = info_.Get();
    (*info)->AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID dispid, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                   VARIANT* answer, EXCEPINFO* failure, UINT*) override;

  const AutoRef& Target() const { return target_; }

 private:
  ULONG count_ = 0;
  AutoRef target_;
  ComPointer<ITypeInfo> info_;
};

AutoValue FromVariant(const VARIANT& value) {
  ComPointer<IDispatch> ours;
  if (value.vt == VT_DISPATCH && value.pdispVal != nullptr &&
      SUCCEEDED(value.pdispVal->QueryInterface(kOurs, reinterpret_cast<void**>(ours.Receive())))) {
    return AutoValue(static_cast<EngineDispatch*>(ours.Get())->Target());
  }
  return AutoValue(_variant_t(value));
}

HRESULT STDMETHODCALLTYPE EngineDispatch::Invoke(DISPID dispid, REFIID, LCID, WORD flags, DISPPARAMS* params,
                                                 VARIANT* answer, EXCEPINFO* failure, UINT*) {
  std::vector<AutoValue> args;
  for (UINT i = params->cArgs; i > 0; --i) args.push_back(FromVariant(params->rgvarg[i - 1]));
  const Form form = flags == DISPATCH_PROPERTYGET   ? Form::kGet
                    : flags == DISPATCH_PROPERTYPUT ? Form::kPut
                                                    : Form::kCall;
  try {
    const AutoValue value = target_->Invoke(dispid, form, args);
    if (answer == nullptr) return S_OK;
    _variant_t plain = value.object ? _variant_t(Dispatched(value.object).Get()) : value.data;
    *answer = plain.Detach();
    return S_OK;
  } catch (COleDispatchException* described) {
    failure->bstrDescription = described->m_strDescription.AllocSysString();
    failure->scode = described->m_scError;
    described->Delete();
    return DISP_E_EXCEPTION;
  } catch (COleException* failed) {
    const HRESULT code = failed->m_sc;
    failed->Delete();
    return code;
  }
}

class Factory : public IClassFactory {
 public:
  explicit Factory(ProgramClass& program) : program_(program) {}
  virtual ~Factory() = default;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (!Same(id, IID_IUnknown) && !Same(id, IID_IClassFactory)) return E_NOINTERFACE;
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++count_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --count_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* /*outer*/, REFIID id, void** object) override {
    return Dispatched(program_.NewApplication())->QueryInterface(id, object);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL /*lock*/) override { return S_OK; }

 private:
  ULONG count_ = 0;
  ProgramClass& program_;
};

const GUID& ClassOf(Program family) {
  return family == Program::kExcel ? kExcelClass : kEtClass;
}

CString TextOf(const GUID& id) {
  TCHAR text[64] = {};
  StringFromGUID2(id, text, 64);
  return CString(LPCTSTR{text});
}

void WriteKey(const CString& path, const CString& value) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, path, nullptr, REG_SZ, value.GetString(),
                  static_cast<DWORD>((value.GetLength() + 1) * 2));
}

}  // namespace

ComPointer<IDispatch> Dispatched(const AutoRef& target, const std::optional<GUID>& type) {
  ComPointer<IDispatch> object;
  auto* const made = new EngineDispatch(target, type ? TypeInfoOf(*type) : ComPointer<ITypeInfo>());
  made->AddRef();
  *object.Receive() = made;
  return object;
}

ProgramKeys::ProgramKeys(Program family, const CString& command) : family_(family) {
  const CString id = TextOf(ClassOf(family));
  const CString class_key = kKey + (_T("CLSID\\") + id);
  WriteKey(kKey + CString(ProgramId(family)) + _T("\\CLSID"), id);
  WriteKey(class_key, ProgramId(family));
  if (!command.IsEmpty()) WriteKey(class_key + _T("\\LocalServer32"), command);
}

ProgramKeys::~ProgramKeys() {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey + CString(ProgramId(family_)));
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey + (_T("CLSID\\") + TextOf(ClassOf(family_))));
}

ProgramClass::ProgramClass(Program family, Before before)
    : family_(family), before_(std::move(before)), engine_(family) {
  ComPointer<IClassFactory> factory;
  auto* const made = new Factory(*this);
  made->AddRef();
  *factory.Receive() = made;
  CoRegisterClassObject(ClassOf(family), factory.Get(), CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                        REGCLS_MULTIPLEUSE, &class_object_);
}

void ProgramClass::Revoke() {
  if (class_object_ != 0) CoRevokeClassObject(std::exchange(class_object_, 0));
}

AutoRef ProgramClass::NewApplication() {
  const AutoRef application = engine_.CreateDispatch(ProgramId(family_));
  return before_ ? before_(application) : application;
}

RunningEntry::RunningEntry(const ComPointer<IDispatch>& object, LPCTSTR name) {
  ComPointer<IMoniker> moniker;
  CreateFileMoniker(name, moniker.Receive());
  GetRunningObjectTable(0, table_.Receive());
  table_->Register(ROTFLAGS_REGISTRATIONKEEPSALIVE, object.Get(), moniker.Get(), &entry_);
}

RunningEntry::~RunningEntry() {
  table_->Revoke(entry_);
}

}  // namespace lorv::test
