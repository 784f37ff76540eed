#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/ports/files.h"

// What the systems' files have in common: transfers that a system does in parts, and what a folder's list
// holds.
namespace lorv {

// Reads up to `size` bytes. `read(to, room)` gives how many came, 0 at the end, less on failure. How many
// came in all, or -1.
template <class Read>
std::int64_t ReadInParts(void* out, std::size_t size, Read read) {
  std::size_t done = 0;
  while (done < size) {
    const std::int64_t count = read(static_cast<char*>(out) + done, size - done);
    if (count < 0) return -1;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<std::int64_t>(done);
}

// Writes all of it. `write(from, room)` gives how many went; none means that none ever will.
template <class Write>
bool WriteInParts(const void* bytes, std::size_t size, Write write) {
  std::size_t done = 0;
  while (done < size) {
    const std::int64_t count = write(static_cast<const char*>(bytes) + done, size - done);
    if (count <= 0) return false;
    done += static_cast<std::size_t>(count);
  }
  return true;
}

// The names of a folder that fit a pattern: never "." and "..", and in order, where a system lists in any.
class COMM_LORV_API FolderList {
 public:
  explicit FolderList(LPCTSTR pattern) : pattern_(pattern) {}

  bool Wants(const CString& name) const;
  void Add(const CString& name, bool is_folder) { found_.push_back({name, is_folder}); }
  std::vector<FoundFile> InOrder();

 private:
  CString pattern_;
  std::vector<FoundFile> found_;
};

}  // namespace lorv
