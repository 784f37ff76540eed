#include "tools/lorv/archive/unpacker.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "compress/zip/zip_writer.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

constexpr int kEntries = 400;

std::string EntryBytes(int i) {
  std::string bytes;
  for (int j = 0; j < i * 37 % 5000; ++j) bytes += static_cast<char>(i * j);
  return bytes;
}

// An archive with one damaged entry among many.
void MakeArchive(const std::string& path) {
  ZipWriter writer;
  ASSERT_EQ(writer.Create(path.c_str()), kZipOk);
  for (int i = 0; i < kEntries; ++i) {
    const std::string bytes = EntryBytes(i);
    const std::string name = "d" + std::to_string(i % 7) + "/f" + std::to_string(i) + ".zip";
    ASSERT_EQ(writer.Add(name.c_str(), bytes.data(), bytes.size()), kZipOk);
  }
  ASSERT_EQ(writer.Close(), kZipOk);
  std::string archive = ReadBytes(path);
  const std::size_t at = archive.find("d5/f201.zip") + 60;
  archive[at] = static_cast<char>(archive[at] ^ 1);
  WriteBytes(path, archive);
}

TEST(UnpackerThreads, ManyEntriesComeBackWholeAndTheDamagedOneIsReported) {
  const ScratchFolder scratch;
  const std::string path = (scratch.Path() / "a.zip").string();
  MakeArchive(path);
  for (const bool force : {false, true}) {
    std::istringstream in;
    std::ostringstream out, err;
    tool::Console console{in, out, err};
    tool::ArchiveReader archive(path);
    tool::EntryTroubles troubles;
    const tool::UnpackWishes wishes{(scratch.Path() / "back").string(), force};
    tool::ProgressBar bar(console, archive.Total());
    tool::Unpacker unpacker(archive, wishes, bar, troubles);
    unpacker.Check();
    unpacker.Run();
    EXPECT_EQ(troubles.Count(), 1U);
    troubles.Print(console, "{} was not unpacked: {}");
    EXPECT_NE(err.str().find("\"d5/f201.zip\" was not unpacked: its data are damaged"), std::string::npos)
        << err.str();
    for (int i = 0; i < kEntries; ++i) {
      const auto file =
          scratch.Path() / "back" / ("d" + std::to_string(i % 7)) / ("f" + std::to_string(i) + ".zip");
      EXPECT_EQ(std::filesystem::exists(file), i != 201) << i;
      if (i == 201) continue;
      EXPECT_TRUE(ReadBytes(file) == EntryBytes(i)) << i;
    }
  }
}

}  // namespace
}  // namespace lorv::test
