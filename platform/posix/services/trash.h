#pragma once

#include <filesystem>
#include <system_error>

namespace lorv {

// Moves a file or folder into the user's trash folder, with the note that lets the desktop put it back.
// Without an error nothing is left where it stood; with one, everything is. A trash folder on another file
// system than the file's is an error.
std::error_code MoveToTrash(const std::filesystem::path& path);

}  // namespace lorv
