#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace lorv::office {

// The files of the pipes that a running office listens at. One that is killed leaves them behind.
std::vector<std::string> SocketFilesOf(pid_t office);

}  // namespace lorv::office
