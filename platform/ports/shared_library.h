#pragma once

#include <initializer_list>
#include <memory>

#include "framework/native/export.h"

namespace lorv {

// A library of the system that is loaded while the program runs; it is let go with the object.
class COMM_LORV_API SharedLibrary {
 public:
  SharedLibrary() = default;
  SharedLibrary(const SharedLibrary&) = delete;
  SharedLibrary& operator=(const SharedLibrary&) = delete;
  virtual ~SharedLibrary() = default;

  // The address of what it exports under that name; null: nothing.
  virtual void* Find(const char* name) const = 0;
};

// The first of the libraries that the system can load, by the names that its loader knows; null: none of
// them.
//
//   OpenSharedLibrary({"libsqlite3.so.0", "sqlite3.dll"})
COMM_LORV_API std::unique_ptr<SharedLibrary> OpenSharedLibrary(std::initializer_list<const char*> names);

}  // namespace lorv
