#include "framework/drawing/context_handles.h"

#include <cstdint>
#include <map>
#include <mutex>

// A number is given once and never again, so that the handle of a context that is gone names nothing. They
// begin above all that the systems hand out, whose handles have 32 bits.
namespace lorv {
namespace {

struct Contexts {
  std::mutex mutex;
  std::map<HDC, CDC*> by_handle;
  std::uintptr_t last = std::uintptr_t{1} << 40;
};

// Never ended: contexts of other statics may end later.
Contexts& Known() {
  static auto* const known = new Contexts;
  return *known;
}

}  // namespace

ContextHandle::ContextHandle(CDC& context) {
  Contexts& known = Known();
  const std::lock_guard<std::mutex> lock(known.mutex);
  handle_ = reinterpret_cast<HDC>(++known.last);
  known.by_handle[handle_] = &context;
}

ContextHandle::~ContextHandle() {
  Contexts& known = Known();
  const std::lock_guard<std::mutex> lock(known.mutex);
  known.by_handle.erase(handle_);
}

CDC* ContextOf(HDC handle) {
  Contexts& known = Known();
  const std::lock_guard<std::mutex> lock(known.mutex);
  const auto found = known.by_handle.find(handle);
  return found == known.by_handle.end() ? nullptr : found->second;
}

}  // namespace lorv
