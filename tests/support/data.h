#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace lorv::test {

// The folder of real components, expressions, archives and the like that lies beside the project and is not
// part of it. Named by LORV_DATA, else looked for as ../shared/data from the working folder upwards.
// Nothing where it is absent (a stranger's clone): the caller then says so and ends. Under CI a missing
// folder is a failure, and this function reports it as one.
std::optional<std::filesystem::path> FindData(const std::string& name);

// The project's own folder: examples and corpora are read from there.
std::filesystem::path ProjectFolder();

// A fresh folder of this test, gone when the object ends.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

std::string ReadBytes(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, const std::string& bytes);

}  // namespace lorv::test
