#include "platform/posix/services/trash.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <string>

#include "platform/posix/services/user_folders.h"

// The trash of the desktop's standard: the file under a free name in one folder, a note where it came from in
// another. The note is made first and exclusively, which reserves the name; a file is only ever renamed and
// never copied, as half a copy would lose data.

namespace lorv {
namespace {

namespace fs = std::filesystem;

constexpr int kMostNames = 10000;

fs::path TrashFolder() {
  const std::string data = EnvironmentValue("XDG_DATA_HOME");
  const bool named = !data.empty() && data[0] == '/';
  return fs::path(named ? data : EnvironmentValue("HOME") + "/.local/share") / "Trash";
}

// Bytes of a path as the note wants them: all but plain ones as "%" and two digits.
std::string Escaped(const std::string& path) {
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~/";
  constexpr std::string_view kHexadecimal = "0123456789ABCDEF";
  std::string out;
  for (const char c : path) {
    if (kPlain.find(c) != std::string_view::npos) {
      out += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      out += {'%', kHexadecimal[byte >> 4], kHexadecimal[byte & 15]};
    }
  }
  return out;
}

std::string NoteFor(const fs::path& path) {
  const std::time_t now = std::time(nullptr);
  tm calendar{};
  localtime_r(&now, &calendar);
  std::array<char, 32> date{};
  std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &calendar);
  return "[Trash Info]\nPath=" + Escaped(path.string()) + "\nDeletionDate=" + date.data() + "\n";
}

// Makes the note under a name that no other has; the process that creates it first owns the name.
std::error_code WriteNote(const fs::path& note, const std::string& text) {
  const int descriptor = open(note.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor < 0) return {errno, std::generic_category()};
  const bool written = write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  const std::error_code result(written ? 0 : EIO, std::generic_category());
  close(descriptor);
  return result;
}

}  // namespace

std::error_code MoveToTrash(const fs::path& path) {
  std::error_code error;
  const fs::path from = fs::absolute(path, error);
  if (error || !fs::exists(fs::symlink_status(from)))
    return std::make_error_code(std::errc::no_such_file_or_directory);
  const fs::path trash = TrashFolder();
  fs::create_directories(trash / "files", error);
  fs::create_directories(trash / "info", error);
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name = from.filename().string() + (i == 0 ? "" : "." + std::to_string(i));
    const fs::path note = trash / "info" / (name + ".trashinfo");
    error = WriteNote(note, NoteFor(from));
    if (error == std::errc::file_exists) continue;
    if (!error) fs::rename(from, trash / "files" / name, error);
    // A note without a file would show an entry that cannot be restored.
    if (error) unlink(note.c_str());
    break;
  }
  return error;
}

}  // namespace lorv
