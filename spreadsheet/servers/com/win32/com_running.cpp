#include "spreadsheet/servers/com/win32/com_running.h"

#include <objbase.h>

#include "spreadsheet/servers/com/win32/com_object.h"
#include "spreadsheet/servers/com/win32/com_pointer.h"

// The system's table of running objects, where programs enter the workbooks that they have open. Any entry
// may be gone or refuse by the time it is asked, so each question has an answer for failure and the walk
// goes on with the next entry.

namespace lorv::com {
namespace {

// Type information is asked for in the language of the user's own settings.
constexpr LCID kSystemLanguage = 1024;

class Running : public RunningObject {
 public:
  Running(ComPointer<IDispatch> object, ComPointer<IMoniker> moniker, ComPointer<IBindCtx> context)
      : object_(std::move(object)), moniker_(std::move(moniker)), context_(std::move(context)) {}

  unsigned TypeInfoCount() override {
    UINT count = 0;
    return SUCCEEDED(object_->GetTypeInfoCount(&count)) ? count : 0;
  }

  std::optional<GUID> TypeId(unsigned index) override {
    ComPointer<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    if (FAILED(object_->GetTypeInfo(index, kSystemLanguage, info.Receive())) || !info) return std::nullopt;
    // The attributes are the server's; they are copied, and handed back at once.
    if (FAILED(info->GetTypeAttr(&attributes)) || attributes == nullptr) return std::nullopt;
    const GUID id = attributes->guid;
    info->ReleaseTypeAttr(attributes);
    return id;
  }

  bool HasInterface(const GUID& id) override {
    ComPointer<IUnknown> found;
    return SUCCEEDED(object_->QueryInterface(id, reinterpret_cast<void**>(found.Receive())));
  }

  // The name in the table is that of the moniker, for a saved workbook the path of its file.
  std::optional<CString> DisplayName() override {
    LPOLESTR text = nullptr;
    if (FAILED(moniker_->GetDisplayName(context_.Get(), nullptr, &text)) || text == nullptr)
      return std::nullopt;
    const CString name(LPCTSTR{text});
    CoTaskMemFree(text);
    return name;
  }

  AutoRef Object() override { return Wrapped(object_.Get()); }

 private:
  ComPointer<IDispatch> object_;
  ComPointer<IMoniker> moniker_;
  ComPointer<IBindCtx> context_;
};

class Walk : public RunningObjects {
 public:
  // All four steps or nothing: a walk over half a table would pass for one that found nothing.
  bool Open() {
    if (FAILED(CreateBindCtx(0, context_.Receive()))) return false;
    if (FAILED(context_->GetRunningObjectTable(table_.Receive()))) return false;
    if (FAILED(table_->EnumRunning(monikers_.Receive()))) return false;
    return SUCCEEDED(monikers_->Reset());
  }

  bool Next() override { return monikers_->Next(1, moniker_.Receive(), nullptr) == S_OK; }

  std::unique_ptr<RunningObject> Bind() override {
    ComPointer<IDispatch> object;
    const HRESULT code = moniker_->BindToObject(context_.Get(), nullptr, IID_IDispatch,
                                                reinterpret_cast<void**>(object.Receive()));
    if (FAILED(code) || !object) return nullptr;
    return std::make_unique<Running>(std::move(object), moniker_, context_);
  }

 private:
  ComPointer<IBindCtx> context_;
  ComPointer<IRunningObjectTable> table_;
  ComPointer<IEnumMoniker> monikers_;
  ComPointer<IMoniker> moniker_;
};

}  // namespace

std::unique_ptr<RunningObjects> WalkRunningObjects() {
  auto walk = std::make_unique<Walk>();
  if (!walk->Open()) return nullptr;
  return walk;
}

}  // namespace lorv::com
