#include "tests/support/data.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

namespace lorv::test {
namespace {

namespace fs = std::filesystem;

// The first folder from the working folder upwards for which the test holds.
template <class Test>
std::optional<fs::path> Upwards(Test test) {
  for (fs::path folder = fs::current_path();; folder = folder.parent_path()) {
    if (test(folder)) return folder;
    if (folder == folder.parent_path()) return std::nullopt;
  }
}

std::optional<fs::path> DataFolder() {
  if (const char* named = std::getenv("LORV_DATA")) return fs::path(named);
  const auto above = Upwards([](const fs::path& folder) { return fs::exists(folder / "shared" / "data"); });
  if (!above) return std::nullopt;
  return *above / "shared" / "data";
}

}  // namespace

std::optional<fs::path> FindData(const std::string& name) {
  const auto folder = DataFolder();
  if (folder && fs::exists(*folder / name)) return *folder / name;
  if (std::getenv("CI") != nullptr) {
    ADD_FAILURE() << "the data folder or " << name << " in it is missing";
  } else {
    std::cout << "no data folder here: " << name << " was not looked at\n";
  }
  return std::nullopt;
}

fs::path ProjectFolder() {
  const auto folder =
      Upwards([](const fs::path& at) { return fs::exists(at / "cmake" / "LorvBuild.cmake"); });
  if (!folder) ADD_FAILURE() << "the tests run outside the project's folder";
  return folder.value_or(fs::current_path());
}

ScratchFolder::ScratchFolder() {
  static std::atomic<int> count{0};
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  path_ = fs::temp_directory_path() / ("lorv-" + std::to_string(now) + "-" + std::to_string(++count));
  fs::create_directories(path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string ReadBytes(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteBytes(const fs::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace lorv::test
