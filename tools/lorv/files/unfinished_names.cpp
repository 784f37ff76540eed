#include "tools/lorv/files/unfinished_names.h"

#include <array>
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

#include "tools/lorv/files/interrupts.h"

// The names of files that are to vanish when the program is interrupted. A signal comes at any moment, even
// inside the allocation of memory, so its handler finds ready names in a fixed array and only removes files.

namespace lorv::tool {
namespace {

// Read by a signal handler, which may wait for nothing: no lock guards them.
std::array<std::atomic<NativeName*>, kMostUnfinished> slots;
std::atomic<std::size_t> next_slot = 0;
std::atomic<bool> ending = false;

// Where a name was put; one behind the last slot where all are taken.
std::size_t Put(NativeName* name) {
  for (std::size_t i = 0; i < kMostUnfinished; ++i) {
    // From where the last one was put: the next slot is free more often than not.
    const std::size_t slot = next_slot++ % kMostUnfinished;
    NativeName* none = nullptr;
    if (slots[slot].compare_exchange_strong(none, name)) return slot;
  }
  // Its file stays behind an interruption, which is better than no file at all.
  FreeNativeName(name);
  return kMostUnfinished;
}

}  // namespace

UnfinishedName::UnfinishedName(const CString& path) {
  static std::once_flag installed;
  std::call_once(installed, [] {
    CallBeforeTheEnd([] {
      ending = true;
      RemoveUnfinishedFiles();
    });
  });
  slot_ = Put(MakeNativeName(path));
}

UnfinishedName::~UnfinishedName() {
  if (slot_ == kMostUnfinished) return;
  NativeName* const name = slots[slot_].exchange(nullptr);
  // A handler that began before the exchange may hold the name still: the program ends there and then.
  while (ending) std::this_thread::sleep_for(std::chrono::seconds(1));
  FreeNativeName(name);
}

void RemoveUnfinishedFiles() {
  for (const auto& slot : slots) {
    if (const NativeName* const name = slot.load()) RemoveNativeFile(*name);
  }
}

}  // namespace lorv::tool
