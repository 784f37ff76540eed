#pragma once

#include "framework/text/cstring.h"

// What each system has for taking files away when the program is ended from outside.
namespace lorv::tool {

// A path as the system's call for removing a file takes it: made beforehand, as nothing may be made later.
struct NativeName;
NativeName* MakeNativeName(const CString& path);
void FreeNativeName(NativeName* name);
void RemoveNativeFile(const NativeName& name);

// From now on `remove` is called when the program is about to be ended by the user, by a closed terminal or
// pipe, or by the system; then it ends as it would have. Signals that are ignored stay so. `remove` may only
// read what is there and call RemoveNativeFile.
void CallBeforeTheEnd(void (*remove)());

}  // namespace lorv::tool
