#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "compress/lzari/byte_order.h"
#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_time.h"
#include "compress/zip/zip_writer.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/compress/lzari/lzari_samples.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

namespace fs = std::filesystem;

using Entries = std::vector<std::pair<std::string, std::string>>;

std::string MemoryArchive(const Entries& entries) {
  ZipWriter zip;
  EXPECT_EQ(zip.Create(nullptr, 0), kZipOk);
  for (const auto& [name, bytes] : entries) {
    EXPECT_EQ(zip.Add(name.c_str(), bytes.data(), bytes.size()), kZipOk) << name;
  }
  EXPECT_EQ(zip.Close(), kZipOk);
  const void* data = nullptr;
  std::size_t size = 0;
  EXPECT_EQ(zip.GetMemory(data, size), kZipOk);
  return {static_cast<const char*>(data), size};
}

std::string Unzipped(ZipReader& zip, int index, DWORD expected = kZipOk) {
  std::string bytes;
  EXPECT_EQ(zip.UnzipItem(index,
                          [&](std::span<const unsigned char> more) {
                            bytes.append(reinterpret_cast<const char*>(more.data()), more.size());
                            return true;
                          }),
            expected);
  return bytes;
}

const unsigned char* At(const std::string& bytes, std::size_t position) {
  return reinterpret_cast<const unsigned char*>(bytes.data()) + position;
}

std::size_t CentralAt(const std::string& archive) {
  return LoadLittle32(At(archive, archive.size() - 22 + 16));
}

TEST(ZipLayer, MemoryArchiveComesBackWhole) {
  const Entries entries = {{"a.txt", "hello"},
                           {"empty.dat", ""},
                           {"long.dat", Noise(300000, 1, 60)},
                           {"exact.dat", Noise(128 * 1024, 2, 60)},
                           {"packed.zip", Noise(40000, 3)}};
  const std::string archive = MemoryArchive(entries);
  ZipReader zip;
  ASSERT_EQ(zip.Open(archive.data(), archive.size()), kZipOk);
  ZipEntry entry;
  ASSERT_EQ(zip.GetItem(-1, entry), kZipOk);
  ASSERT_EQ(entry.index, 5);
  for (int i = 0; i < 5; ++i) {
    const auto& [name, bytes] = entries[static_cast<std::size_t>(i)];
    ASSERT_EQ(zip.GetItem(i, entry), kZipOk);
    EXPECT_EQ(entry.index, i);
    EXPECT_EQ(entry.name, name);
    EXPECT_EQ(entry.size, static_cast<std::int32_t>(bytes.size()));
    EXPECT_TRUE(Unzipped(zip, i) == bytes) << name;
  }
  EXPECT_EQ(zip.GetItem(5, entry), kZipArguments);
  EXPECT_EQ(zip.GetItem(-2, entry), kZipArguments);
  EXPECT_EQ(zip.Close(), kZipOk);
  EXPECT_EQ(zip.GetItem(-1, entry), kZipArguments);
}

TEST(ZipLayer, LocalHeaderHasTheseFields) {
  const std::string archive = MemoryArchive({{"d\\a.txt", "hello"}});
  EXPECT_EQ(LoadLittle32(At(archive, 0)), 0x04034b50U);
  EXPECT_EQ(LoadLittle16(At(archive, 4)), 20) << "version needed";
  EXPECT_EQ(LoadLittle16(At(archive, 6)), 0) << "no descriptor, as memory can be patched";
  EXPECT_EQ(LoadLittle16(At(archive, 8)), 8) << "deflated";
  EXPECT_EQ(LoadLittle32(At(archive, 14)), 0x3610a686U) << "CRC-32 of hello";
  EXPECT_EQ(LoadLittle32(At(archive, 22)), 5U);
  EXPECT_EQ(LoadLittle16(At(archive, 26)), 7);
  EXPECT_EQ(LoadLittle16(At(archive, 28)), 17);
  EXPECT_EQ(archive.substr(30, 7), "d/a.txt");
  EXPECT_EQ(archive.substr(37, 2), "UT");
  EXPECT_EQ(LoadLittle16(At(archive, 39)), 13);
  EXPECT_EQ(archive[41], 7);
}

TEST(ZipLayer, CentralHeaderHasTheseFields) {
  const std::string archive = MemoryArchive({{"d\\a.txt", "hello"}});
  const std::size_t at = CentralAt(archive);
  EXPECT_EQ(LoadLittle32(At(archive, at)), 0x02014b50U);
  EXPECT_EQ(LoadLittle16(At(archive, at + 4)), 2839) << "version made by";
  EXPECT_EQ(LoadLittle16(At(archive, at + 6)), 20);
  EXPECT_EQ(LoadLittle32(At(archive, at + 38)), 0x80000000U) << "no disk file";
  EXPECT_EQ(archive.substr(at + 46, 9), "d/a.txtUT");
  EXPECT_EQ(LoadLittle16(At(archive, at + 55)), 5);
  EXPECT_EQ(archive[at + 57], 7);
  EXPECT_EQ(LoadLittle32(At(archive, at + 58)), LoadLittle32(At(archive, 42))) << "the write time";
  EXPECT_EQ(at + 62, archive.size() - 22);
}

TEST(ZipLayer, NamesOfPackedFilesAndFoldersAreStored) {
  for (const char* name : {"a.Z", "a.zip", "a.ZIP", "a.zoo", "a.arc", "a.lzh", "a.arj", "a.gz", "x/a.tgz"}) {
    EXPECT_EQ(LoadLittle16(At(MemoryArchive({{name, "aaaaaaaaaa"}}), 8)), 0) << name;
  }
  for (const char* name : {"a.txt", "zip", "a.zipx", "a.7z", "a.gz.txt"}) {
    EXPECT_EQ(LoadLittle16(At(MemoryArchive({{name, "aaaaaaaaaa"}}), 8)), 8) << name;
  }
}

TEST(ZipLayer, FolderHasItsSlashAndAttributes) {
  ZipWriter zip;
  zip.Create(nullptr, 0);
  EXPECT_EQ(zip.AddFolder("a\\b"), kZipOk);
  EXPECT_EQ(zip.AddFolder("c/"), kZipOk);
  zip.Close();
  const void* data = nullptr;
  std::size_t size = 0;
  zip.GetMemory(data, size);
  const std::string archive(static_cast<const char*>(data), size);
  EXPECT_EQ(LoadLittle16(At(archive, 8)), 0) << "stored";
  EXPECT_EQ(archive.substr(30, 4), "a/b/");
  EXPECT_EQ(LoadLittle32(At(archive, CentralAt(archive) + 38)), 0x41C00010U);
  ZipReader reader;
  reader.Open(archive.data(), archive.size());
  ZipEntry entry;
  reader.GetItem(1, entry);
  EXPECT_STREQ(entry.name, "c/");
  EXPECT_EQ(entry.attributes, kAttributeFolder);
}

TEST(ZipLayer, FixedBlockOfMemoryIsFilledOrRefused) {
  std::vector<unsigned char> block(200);
  ZipWriter zip;
  ASSERT_EQ(zip.Create(block.data(), block.size()), kZipOk);
  EXPECT_EQ(zip.Add("a.txt", "hello", 5), kZipOk);
  const std::string noise = Noise(300, 1);
  EXPECT_EQ(zip.Add("b.txt", noise.data(), noise.size()), kZipMemoryFull);
  EXPECT_EQ(zip.Add("c.txt", "x", 1), kZipFailedBefore);
  EXPECT_EQ(LastZipCreation(), kZipFailedBefore);
}

TEST(ZipLayer, AddAfterTheCloseIsRefused) {
  ZipWriter zip;
  EXPECT_EQ(zip.Add("a.txt", "x", 1), kZipArguments) << "nothing was created";
  zip.Create(nullptr, 0);
  EXPECT_EQ(zip.Close(), kZipOk);
  EXPECT_EQ(zip.Add("a.txt", "x", 1), kZipEnded);
  EXPECT_EQ(zip.Close(), kZipEnded);
}

TEST(ZipLayer, FilesGoInByPathAndHandleWithTheirTimes) {
  const ScratchFolder scratch;
  const std::string path = (scratch.Path() / "a.txt").string();
  WriteBytes(path, "hello");
  Files& files = NativeFiles();
  const CString wide = CString::FromUtf8(path);
  const std::int64_t time = zip::FromUnixTime(1'600'000'001);
  ASSERT_TRUE(files.SetTimes(wide, {time, 0, time}));
  const std::string archive = (scratch.Path() / "p.zip").string();
  ZipWriter writer;
  ASSERT_EQ(writer.Create(archive.c_str()), kZipOk);
  EXPECT_EQ(writer.Add("by_path.txt", path.c_str()), kZipOk);
  const auto file = files.Open(wide, FileUse::kRead);
  const auto facts = files.Facts(wide);
  EXPECT_EQ(writer.Add("by_handle.txt", *file, &*facts), kZipOk);
  EXPECT_EQ(writer.Close(), kZipOk);
  const void* data = nullptr;
  std::size_t size = 0;
  EXPECT_EQ(writer.GetMemory(data, size), kZipNotInMemory);

  ZipReader reader;
  ASSERT_EQ(reader.Open(archive.c_str()), kZipOk);
  for (int i = 0; i < 2; ++i) {
    ZipEntry entry;
    ASSERT_EQ(reader.GetItem(i, entry), kZipOk);
    EXPECT_EQ(entry.write_time, time);
    EXPECT_EQ(Unzipped(reader, i), "hello");
    const std::string target = (scratch.Path() / "out.txt").string();
    EXPECT_EQ(reader.UnzipItem(i, target.c_str()), kZipOk);
    EXPECT_EQ(ReadBytes(target), "hello");
    EXPECT_EQ(files.Facts(CString::FromUtf8(target))->times.write, time);
  }
  EXPECT_EQ(writer.Create((scratch.Path() / "no" / "p.zip").string().c_str()), kZipNoFile);
}

TEST(ZipLayer, ReadOnlyGoesThroughTheAttributes) {
  EXPECT_EQ(zip::ToDosTime(0), 0x00210000U) << "before 1980";
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  ASSERT_TRUE(machine.files.WriteWhole(_T("C:\\a.txt"), "hello"));
  ASSERT_TRUE(machine.files.SetAttributes(_T("C:\\a.txt"), kAttributeReadOnly | kAttributeHidden));
  ZipWriter writer;
  ASSERT_EQ(writer.Create(nullptr, 0), kZipOk);
  ASSERT_EQ(writer.Add("a.txt", "C:\\a.txt"), kZipOk);
  writer.Close();
  const void* data = nullptr;
  std::size_t size = 0;
  writer.GetMemory(data, size);
  const std::string archive(static_cast<const char*>(data), size);
  EXPECT_EQ(LoadLittle32(At(archive, CentralAt(archive) + 38)), 0x81000003U);
  ZipReader reader;
  reader.Open(archive.data(), archive.size());
  ZipEntry entry;
  reader.GetItem(0, entry);
  EXPECT_EQ(entry.attributes, kAttributeReadOnly | kAttributeHidden);
}

TEST(ZipLayer, ExecutableMarkIsExactlyThisOne) {
  std::string program(200, '\0');
  program[0] = static_cast<char>(21677 & 0xFF);
  program[1] = static_cast<char>(21677 >> 8);
  program[36] = 100;
  program.replace(100, 2, "PE");
  const auto attributes = [](const std::string& bytes) {
    const ScratchFolder scratch;
    WriteBytes(scratch.Path() / "a.bin", bytes);
    ZipWriter zip;
    zip.Create(nullptr, 0);
    EXPECT_EQ(zip.Add("a.bin", (scratch.Path() / "a.bin").string().c_str()), kZipOk);
    zip.Close();
    const void* data = nullptr;
    std::size_t size = 0;
    zip.GetMemory(data, size);
    const std::string archive(static_cast<const char*>(data), size);
    ZipReader reader;
    reader.Open(archive.data(), archive.size());
    EXPECT_TRUE(Unzipped(reader, 0) == bytes);
    return LoadLittle32(At(archive, CentralAt(archive) + 38)) & 0xFFFF0000U;
  };
  EXPECT_EQ(attributes(program), 0x81C00000U);
  std::string other = program;
  other[100] = 'Q';
  EXPECT_EQ(attributes(other), 0x81800000U);
  other = program;
  other.replace(0, 2, "MZ");
  EXPECT_EQ(attributes(other), 0x81800000U);
  EXPECT_EQ(attributes(program.substr(0, 153)), 0x81C00000U);
  EXPECT_EQ(attributes(program.substr(0, 152)), 0x81800000U) << "the header must lie below the size";
}

TEST(ZipLayer, NamesHave259BytesAtMost) {
  for (const std::size_t length : {258U, 259U}) {
    const std::string archive = MemoryArchive({{std::string(length, 'n'), "x"}});
    ZipReader reader;
    reader.Open(archive.data(), archive.size());
    ZipEntry entry;
    ASSERT_EQ(reader.GetItem(0, entry), kZipOk);
    EXPECT_EQ(std::string(entry.name).size(), length);
  }
  ZipWriter zip;
  zip.Create(nullptr, 0);
  EXPECT_EQ(zip.Add(std::string(260, 'n').c_str(), "x", 1), kZipArguments);
  ZipWriter unnamed;
  unnamed.Create(nullptr, 0);
  EXPECT_EQ(unnamed.Add("", "x", 1), kZipArguments);
}

// A file of any size that holds zeros only.
class HugeFile : public File {
 public:
  explicit HugeFile(std::int64_t size) : size_(size) {}
  std::int64_t Read(void* /*out*/, std::size_t /*size*/) override {
    ++reads;
    return 0;
  }
  bool Write(const void* /*bytes*/, std::size_t /*size*/) override { return false; }
  bool Seek(std::uint64_t /*position*/) override { return true; }
  std::int64_t Size() override { return size_; }
  bool Flush() override { return true; }
  int reads = 0;

 private:
  std::int64_t size_;
};

TEST(ZipLayer, EntryOf2GbIsRefusedBeforeAnythingIsWritten) {
  for (const std::int64_t size : {0x7FFFFFFELL, 0x7FFFFFFFLL}) {
    HugeFile file(size);
    ZipWriter zip;
    zip.Create(nullptr, 0);
    EXPECT_EQ(zip.Add("huge.dat", file, nullptr), kZipOk) << "it is begun; this one ends early";
  }
  HugeFile file(0x80000000LL);
  ZipWriter zip;
  zip.Create(nullptr, 0);
  EXPECT_EQ(zip.Add("huge.dat", file, nullptr), kZipArguments);
  EXPECT_EQ(file.reads, 0);
  EXPECT_EQ(zip.Add("small.dat", "x", 1), kZipFailedBefore);
  EXPECT_EQ(zip.Close(), kZipOk);
  const void* data = nullptr;
  std::size_t bytes = 0;
  EXPECT_EQ(zip.GetMemory(data, bytes), kZipOk);
  EXPECT_EQ(bytes, 22U) << "an empty archive";
}

TEST(ZipLayer, MoreThan65535EntriesAreRefused) {
  ZipWriter zip;
  zip.Create(nullptr, 0);
  for (int i = 0; i < 65535; ++i) ASSERT_EQ(zip.AddFolder("d"), kZipOk) << i;
  EXPECT_EQ(zip.AddFolder("d"), kZipArguments);
}

// What is written cannot be gone back to.
class Pipe : public File {
 public:
  std::string bytes;
  std::int64_t Read(void* /*out*/, std::size_t /*size*/) override { return -1; }
  bool Write(const void* from, std::size_t size) override {
    bytes.append(static_cast<const char*>(from), size);
    return bytes.size() <= limit;
  }
  bool Seek(std::uint64_t /*position*/) override { return false; }
  std::int64_t Size() override { return -1; }
  bool Flush() override { return true; }
  std::size_t limit = std::size_t{1} << 30;
};

TEST(ZipLayer, PipeGetsADescriptorBehindTheData) {
  Pipe pipe;
  ZipWriter zip;
  ASSERT_EQ(zip.Create(pipe), kZipOk);
  EXPECT_EQ(zip.Add("a.txt", "hello", 5), kZipOk);
  EXPECT_EQ(zip.Close(), kZipOk);
  EXPECT_EQ(LoadLittle16(At(pipe.bytes, 6)), 8);
  EXPECT_EQ(LoadLittle32(At(pipe.bytes, 14)), 0U);
  EXPECT_NE(pipe.bytes.find(std::string("PK\x07\x08", 4)), std::string::npos);
  ZipReader reader;
  ASSERT_EQ(reader.Open(pipe.bytes.data(), pipe.bytes.size()), kZipOk);
  EXPECT_EQ(Unzipped(reader, 0), "hello");
}

TEST(ZipLayer, FailingWritesAndReadsAreReported) {
  Pipe pipe;
  pipe.limit = 50;
  ZipWriter zip;
  ASSERT_EQ(zip.Create(pipe), kZipOk);
  EXPECT_EQ(zip.Add("a.txt", pipe, nullptr), kZipReadFailed);
  EXPECT_EQ(zip.Close(), kZipWriteFailed) << "the limit is reached";
  ZipWriter missing;
  missing.Create(nullptr, 0);
  EXPECT_EQ(missing.Add("a.txt", "no/such/file"), kZipNoFile);
  EXPECT_EQ(missing.Add("a.txt", "no/such/file"), kZipFailedBefore);
}

TEST(ZipLayer, ArchiveGoesBehindWhatAFileHolds) {
  const ScratchFolder scratch;
  const CString path = CString::FromUtf8((scratch.Path() / "p.zip").string());
  {
    const auto file = NativeFiles().Open(path, FileUse::kCreate);
    ASSERT_TRUE(file->Write("prefix", 6));
    ZipWriter zip;
    ASSERT_EQ(zip.Create(*file), kZipOk);
    const std::string noise = Noise(600000, 1);
    EXPECT_EQ(zip.Add("a.txt", noise.data(), noise.size()), kZipOk);
    EXPECT_EQ(zip.Close(), kZipOk);
  }
  const auto file = NativeFiles().Open(path, FileUse::kRead);
  ZipReader reader;
  ASSERT_EQ(reader.Open(*file), kZipOk);
  EXPECT_TRUE(Unzipped(reader, 0) == Noise(600000, 1));
}

TEST(ZipLayer, ItemsAreFoundByName) {
  const std::string archive = MemoryArchive({{"a.txt", "1"}, {"B.txt", "2"}});
  ZipReader zip;
  ZipEntry entry;
  EXPECT_EQ(zip.FindItem("a.txt", false, entry), kZipArguments) << "nothing is open";
  zip.Open(archive.data(), archive.size());
  EXPECT_EQ(zip.FindItem("B.txt", false, entry), kZipOk);
  EXPECT_EQ(entry.index, 1);
  EXPECT_EQ(zip.FindItem("b.TXT", true, entry), kZipOk);
  EXPECT_EQ(zip.FindItem("b.TXT", false, entry), kZipNotFound);
}

TEST(ZipLayer, ItemGoesToMemoryAndIsCutThere) {
  const std::string archive = MemoryArchive({{"a.txt", "hello world"}});
  ZipReader zip;
  zip.Open(archive.data(), archive.size());
  std::string room(11, '.');
  EXPECT_EQ(zip.UnzipItem(0, room.data(), 11), kZipOk);
  EXPECT_EQ(room, "hello world");
  room.assign(11, '.');
  EXPECT_EQ(zip.UnzipItem(0, room.data(), 5), kZipMore);
  EXPECT_EQ(room, "hello......");
}

TEST(ZipLayer, FoldersOfARelativePathAreMade) {
  const std::string archive = MemoryArchive({{"a.txt", "hello"}});
  ZipReader zip;
  zip.Open(archive.data(), archive.size());
  const ScratchFolder scratch;
  const fs::path before = fs::current_path();
  fs::current_path(scratch.Path());
  EXPECT_EQ(zip.UnzipItem(0, "x/y\\z.txt"), kZipOk);
  EXPECT_EQ(ReadBytes(scratch.Path() / "x" / "y" / "z.txt"), "hello");
  EXPECT_EQ(zip.UnzipItem(0, "p/../q/z.txt"), kZipNoFile) << "a path with ../ gets no folders";
  fs::current_path(before);
  EXPECT_EQ(zip.UnzipItem(0, (scratch.Path() / "new" / "z.txt").string().c_str()), kZipNoFile);
  EXPECT_FALSE(fs::exists(scratch.Path() / "new"));
}

TEST(ZipLayer, FolderEntryIsMadeUnderItsOwnName) {
  ZipWriter writer;
  writer.Create(nullptr, 0);
  writer.AddFolder("m/n");
  writer.Close();
  const void* data = nullptr;
  std::size_t size = 0;
  writer.GetMemory(data, size);
  ZipReader zip;
  zip.Open(data, size);
  const ScratchFolder scratch;
  const fs::path before = fs::current_path();
  fs::current_path(scratch.Path());
  EXPECT_EQ(zip.UnzipItem(0, "elsewhere/m"), kZipOk);
  fs::current_path(before);
  EXPECT_TRUE(fs::is_directory(scratch.Path() / "m" / "n"));
  EXPECT_FALSE(fs::exists(scratch.Path() / "elsewhere"));
}

TEST(ZipLayer, DamagedDataAreNotTakenForGood) {
  const std::string good = MemoryArchive({{"a.txt", Noise(5000, 1, 9)}});
  for (std::size_t at = 0; at < good.size(); at += 7) {
    std::string bad = good;
    bad[at] = static_cast<char>(bad[at] ^ 0x40);
    ZipReader zip;
    if (zip.Open(bad.data(), bad.size()) != kZipOk) continue;
    ZipEntry entry;
    zip.GetItem(-1, entry);
    for (int i = 0; i < entry.index; ++i) {
      std::string bytes;
      const DWORD result = zip.UnzipItem(i, [&](std::span<const unsigned char> more) {
        bytes.append(reinterpret_cast<const char*>(more.data()), more.size());
        return true;
      });
      ASSERT_TRUE(result != kZipOk || bytes == Noise(5000, 1, 9)) << "byte " << at;
    }
  }
}

TEST(ZipLayer, TimesGoThereAndBack) {
  for (const std::uint32_t unix_time : {0U, 1U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU, 1'700'000'000U}) {
    EXPECT_EQ(zip::ToUnixTime(zip::FromUnixTime(unix_time)), unix_time) << unix_time;
  }
  EXPECT_EQ(zip::ToUnixTime(0), 0U) << "1601 is before the first that can be stored";
  EXPECT_EQ(zip::ToUnixTime(INT64_MAX), 0xFFFFFFFFU);
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  const std::uint32_t dos_time = (2024U - 1980) << 25 | 2U << 21 | 29U << 16 | 23U << 11 | 59U << 5 | 29U;
  EXPECT_EQ(zip::ToDosTime(zip::FromDosTime(dos_time)), dos_time);
  EXPECT_EQ(zip::FromDosTime(0), 0) << "month 0";
  EXPECT_EQ(zip::ToDosTime(zip::FromDosTime(0x00210000)), 0x00210000U);
}

}  // namespace
}  // namespace lorv::test
