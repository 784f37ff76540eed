#include "spreadsheet/servers/office/posix/uno/office_sockets.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <system_error>

// The office makes up the name of one of its pipes by itself, so the system is asked: a process has sockets
// by numbers, and the list of all sockets has their files.

namespace lorv::office {
namespace {

namespace fs = std::filesystem;

std::set<std::string> SocketNumbersOf(pid_t process) {
  std::set<std::string> numbers;
  std::error_code gone;
  for (const auto& entry : fs::directory_iterator("/proc/" + std::to_string(process) + "/fd", gone)) {
    // "socket:[4711]"
    const std::string target = fs::read_symlink(entry.path(), gone).string();
    const std::string begin = "socket:[";
    if (target.starts_with(begin))
      numbers.insert(target.substr(begin.size(), target.size() - begin.size() - 1));
  }
  return numbers;
}

}  // namespace

std::vector<std::string> SocketFilesOf(pid_t office) {
  const std::set<std::string> numbers = SocketNumbersOf(office);
  // A connection has the file of the pipe that it came in by.
  std::set<std::string> files;
  std::ifstream list("/proc/net/unix");
  for (std::string line; std::getline(list, line);) {
    std::istringstream fields(line);
    std::string skipped;
    std::string number;
    std::string file;
    for (int i = 0; i < 6; ++i) fields >> skipped;
    if (!(fields >> number >> file) || !numbers.contains(number)) continue;
    if (fs::path(file).filename().string().starts_with("OSL_PIPE_")) files.insert(file);
  }
  return {files.begin(), files.end()};
}

}  // namespace lorv::office
