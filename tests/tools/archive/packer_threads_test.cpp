#include "tools/lorv/archive/packer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "compress/zip/zip_reader.h"
#include "platform/ports/platform.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

constexpr int kFiles = 300;
constexpr std::size_t kLarge = 1500000;  // goes into the archive by itself

std::string BytesOf(int i) {
  std::string bytes;
  for (int j = 0; j < i * 97 % 30000; ++j) bytes += static_cast<char>(i * j / 7);
  return bytes;
}

// A folder with files of all sizes, and what is known of it.
class Project {
 public:
  Project() {
    std::filesystem::create_directories(Folder());
    for (int i = 0; i < kFiles; ++i) WriteBytes(Folder() / Name(i), BytesOf(i));
    WriteBytes(Folder() / Name(150), std::string(kLarge, 'x'));
    list.Add(Folder().string());
  }
  static std::string Name(int i) { return "f" + std::to_string(1000 + i); }
  std::filesystem::path Folder() const { return scratch_.Path() / "in"; }

  std::istringstream in;
  std::ostringstream out, err;
  tool::Console console{in, out, err};
  tool::EntryTroubles troubles;

 private:
  ScratchFolder scratch_;

 public:
  tool::SourceList list{"a.zip", troubles};
  std::size_t Pack(ZipWriter& zip) {
    tool::ProgressBar bar(console, list.Total());
    return tool::Packer(list.Sources(), "a.zip", zip, troubles, bar).Run();
  }
};

std::string Memory(const ZipWriter& zip) {
  const void* data = nullptr;
  std::size_t size = 0;
  EXPECT_EQ(zip.GetMemory(data, size), kZipOk);
  return {static_cast<const char*>(data), size};
}

TEST(PackerThreads, TheArchiveIsThatOfOneFileAfterTheOther) {
  Project project;
  ZipWriter packed, plain;
  packed.Create(nullptr, 0);
  EXPECT_EQ(project.Pack(packed), static_cast<std::size_t>(kFiles) + 1);
  EXPECT_EQ(packed.Close(), kZipOk);
  plain.Create(nullptr, 0);
  for (const tool::Source& source : project.list.Sources()) {
    if (source.facts.IsFolder()) {
      EXPECT_EQ(plain.AddFolder(source.narrow.c_str(), source.unicode), kZipOk);
      continue;
    }
    const auto file = PortsInForce().files->Open(CString::FromUtf8(source.path), FileUse::kRead);
    EXPECT_EQ(plain.Add(source.narrow.c_str(), *file, &source.facts, source.unicode), kZipOk);
  }
  EXPECT_EQ(plain.Close(), kZipOk);
  // All but the first entry, a folder, which has the time of now in its header and in the directory.
  const std::string some = Memory(packed), same = Memory(plain);
  ASSERT_EQ(some.size(), same.size());
  const std::size_t behind = some.find("PK\3\4", 4), directory = some.find("PK\1\2");
  const std::size_t second = some.find("PK\1\2", directory + 4);
  EXPECT_TRUE(some.substr(behind, directory - behind) == same.substr(behind, directory - behind));
  EXPECT_TRUE(some.substr(second) == same.substr(second));
  EXPECT_EQ(project.troubles.Count(), 0U);
}

TEST(PackerThreads, WhatVanishedIsReportedAndWhatGrewIsPackedWhole) {
  Project project;
  std::filesystem::remove(project.Folder() / Project::Name(7));
  const std::string grown(kLarge * 2, 'g');
  WriteBytes(project.Folder() / Project::Name(9), grown);
  ZipWriter zip;
  zip.Create(nullptr, 0);
  EXPECT_EQ(project.Pack(zip), static_cast<std::size_t>(kFiles));
  EXPECT_EQ(zip.Close(), kZipOk);
  EXPECT_EQ(project.troubles.Count(), 1U);
  project.troubles.Print(project.console, "{} was not packed: {}");
  EXPECT_NE(project.err.str().find(Project::Name(7) + "\" was not packed: it cannot be opened"),
            std::string::npos)
      << project.err.str();
  const std::string archive = Memory(zip);
  ZipReader reader;
  ASSERT_EQ(reader.Open(archive.data(), archive.size()), kZipOk);
  ZipEntry count;
  reader.GetItem(-1, count);
  bool found = false;
  for (int i = 0; i < count.index; ++i) {
    ZipEntry entry;
    ASSERT_EQ(reader.GetItem(i, entry), kZipOk);
    if (!std::string(entry.name).ends_with(Project::Name(9))) continue;
    std::string bytes(grown.size(), ' ');
    EXPECT_EQ(reader.UnzipItem(i, bytes.data(), bytes.size()), kZipOk);
    found = bytes == grown;
  }
  EXPECT_TRUE(found);
}

TEST(PackerThreads, AtTheLimitOfEntriesTheFirstOnesArePacked) {
  Project project;
  ZipWriter zip;
  zip.Create(nullptr, 0);
  for (std::size_t i = 0; i + 5 < zip::kMaxEntries; ++i) zip.AddFolder("d");
  EXPECT_EQ(project.Pack(zip), 5U);
  EXPECT_EQ(project.troubles.Count(), static_cast<std::size_t>(kFiles) + 1 - 5);
  EXPECT_EQ(zip.Close(), kZipOk);
}

// A disk that is full after a while.
class SmallDisk : public File {
 public:
  std::int64_t Read(void* /*out*/, std::size_t /*size*/) override { return -1; }
  bool Write(const void* /*bytes*/, std::size_t size) override {
    left_ -= static_cast<std::int64_t>(size);
    return left_ >= 0;
  }
  bool Seek(std::uint64_t /*position*/) override { return false; }
  std::int64_t Size() override { return -1; }
  bool Flush() override { return true; }

 private:
  std::int64_t left_ = 200000;
};

TEST(PackerThreads, AFullDiskEndsAllThreads) {
  Project project;
  SmallDisk disk;
  ZipWriter zip;
  zip.Create(disk);
  EXPECT_THROW(project.Pack(zip), tool::BadInput);
}

}  // namespace
}  // namespace lorv::test
