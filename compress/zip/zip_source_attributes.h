#pragma once

#include <cstdint>
#include <span>

#include "framework/native/native_types.h"
#include "platform/ports/files.h"

// The external attributes of an entry, against those of a file.
namespace lorv::zip {

// For a file on disk with these attributes of Windows.
std::uint32_t ExternalAttributes(DWORD attributes);

// Whether a file bears the marks that give it the right to be executed. `beginning` is what was read of it
// so far, from its start; `file` stands behind that and does so again afterwards.
bool LooksExecutable(std::span<const unsigned char> beginning, File& file);

// The attributes of Windows that an entry asks for: from the low word where a system of that kind made it,
// else from the rights of Unix. A name that ends in a separator is a folder whatever they say. 0x80 for
// none.
DWORD FileAttributes(std::uint32_t external, std::uint32_t made_by, bool folder_name);

}  // namespace lorv::zip
