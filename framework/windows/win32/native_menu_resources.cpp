#include "framework/native/native_types.h"
#include "framework/windows/menu_resources.h"

// Menu templates from the resources that the linker put into a module: those of the program first, then
// those of this library, as a program may bring its own menu under the same number.

namespace lorv {
namespace {

constexpr WORD kMenuType = 4;

std::string ResourceOf(HMODULE module, UINT number) {
  const HRSRC found =
      FindResourceW(module, MAKEINTRESOURCEW(static_cast<WORD>(number)), MAKEINTRESOURCEW(kMenuType));
  const HGLOBAL loaded = found == nullptr ? nullptr : LoadResource(module, found);
  const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
  if (bytes == nullptr) return {};
  return {static_cast<const char*>(bytes), SizeofResource(module, found)};
}

HMODULE OwnModule() {
  HMODULE own = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&OwnModule), &own);
  return own;
}

}  // namespace

std::string NativeMenuResource(UINT number) {
  std::string bytes = ResourceOf(nullptr, number);
  return bytes.empty() ? ResourceOf(OwnModule(), number) : bytes;
}

}  // namespace lorv
