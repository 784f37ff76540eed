#pragma once

#include <string>

// Names of entries, UTF-8 with "/" between folders, against paths of files. What packing makes of a path,
// unpacking takes: both ask the same questions here.
namespace lorv::tool {

// A path's name in an archive: without a drive, without what leads to it from the top or from above; empty
// for a path that is only that.
//
//   EntryNameOf("../a/./b/../c.txt")  gives "a/c.txt"
std::string EntryNameOf(std::string path);

// The narrow name of an entry, in the suite's code page. A character without a code becomes "#U4E00" by its
// number, or "_" where the name would else be too long.
std::string NarrowEntryName(const std::string& name);

// The name to be stored beside the narrow one: the name itself; empty where both are the same bytes.
std::string UnicodeEntryName(const std::string& name, const std::string& narrow);

// Whether a name leads out of the folder that it is unpacked to, on this system or another.
bool LeadsOut(const std::string& name);

// ---- What each system has of its own ----

std::string WithoutDrive(const std::string& path);
// Whether no file of this system can have the name: a colon, a device's name and the like.
bool IsNoNameHere(const std::string& name);

}  // namespace lorv::tool
