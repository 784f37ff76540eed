#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "compress/CompressFiles.h"
#include "compress/lzari/byte_order.h"
#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_time.h"
#include "compress/zip/zip_writer.h"
#include "framework/objects/exceptions.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

// What files, pipes and memory leave of themselves in an archive, and their times.
namespace lorv::test {
namespace {

// A file of the kind that gets the right to be executed.
std::string MarkedProgram() {
  std::string program(200, '\0');
  program[0] = static_cast<char>(21677 & 0xFF);
  program[1] = static_cast<char>(21677 >> 8);
  program[36] = 100;
  program.replace(100, 2, "PE");
  return program;
}

// The external attributes of the only entry of an archive in memory.
DWORD AttributesOf(ZipWriter& writer) {
  const void* data = nullptr;
  std::size_t size = 0;
  EXPECT_EQ(writer.Close(), kZipOk);
  EXPECT_EQ(writer.GetMemory(data, size), kZipOk);
  const auto* const bytes = static_cast<const unsigned char*>(data);
  return LoadLittle32(bytes + LoadLittle32(bytes + size - 22 + 16) + 38);
}

TEST(ZipSources, WhatIsNoDiskFileHasTheOneAttributeWhateverItsBytes) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  const std::string program = MarkedProgram();
  machine.files.Put(_T("C:\\a.bin"), program);
  {
    ZipWriter zip;
    zip.Create(nullptr, 0);
    EXPECT_EQ(zip.Add("a.bin", "C:\\a.bin"), kZipOk);
    EXPECT_EQ(AttributesOf(zip), 0x81C00000U) << "a file on disk";
  }
  {
    const auto file = machine.files.Open(_T("C:\\a.bin"), FileUse::kRead, nullptr);
    ZipWriter zip;
    zip.Create(nullptr, 0);
    EXPECT_EQ(zip.Add("a.bin", *file, nullptr), kZipOk);
    EXPECT_EQ(AttributesOf(zip), 0x80000000U) << "a handle to something else";
  }
  ZipWriter zip;
  zip.Create(nullptr, 0);
  EXPECT_EQ(zip.Add("a.bin", program.data(), program.size()), kZipOk);
  EXPECT_EQ(AttributesOf(zip), 0x80000000U) << "memory";
}

TEST(ZipSources, PipesAreReportedAndNotWaitedFor) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  machine.files.Put(_T("C:\\a.txt"), "hello");
  machine.files.Put(_T("C:\\pipe.txt"), "");
  machine.files.streams.insert(_T("C:\\pipe.txt"));
  CStringArray paths;
  paths.Add(_T("C:\\a.txt"));
  paths.Add(_T("C:\\pipe.txt"));
  try {
    CompressFiles(_T("C:\\p.zip"), paths);
    FAIL() << "nothing was raised";
  } catch (CFileException* error) {
    EXPECT_EQ(error->m_cause, CFileException::invalidFile);
    EXPECT_EQ(Utf8(error->m_strFileName), "C:\\pipe.txt");
    error->Delete();
  }
  for (const CString& asked : machine.files.asked) EXPECT_NE(Utf8(asked), "open read C:\\pipe.txt");
  ZipReader zip;
  ZipEntry entry;
  ASSERT_EQ(zip.Open("C:\\p.zip"), kZipOk);
  zip.GetItem(-1, entry);
  EXPECT_EQ(entry.index, 1) << "what came before is kept";
}

// The time that comes back when a file of this time is packed.
std::int64_t TimeThroughAnArchive(std::int64_t time) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  machine.files.Put(_T("C:\\a.txt"), "hello");
  machine.files.SetTimes(_T("C:\\a.txt"), {time, time, time});
  ZipWriter writer;
  writer.Create("C:\\p.zip");
  writer.Add("a.txt", "C:\\a.txt");
  writer.Close();
  ZipReader zip;
  ZipEntry entry;
  zip.Open("C:\\p.zip");
  EXPECT_EQ(zip.GetItem(0, entry), kZipOk);
  EXPECT_EQ(entry.access_time, entry.write_time);
  EXPECT_EQ(entry.creation_time, entry.write_time);
  return entry.write_time;
}

constexpr std::int64_t FileTimeAt(std::int64_t unix_time) {
  return (unix_time + 11'644'473'600) * 10'000'000;
}

TEST(ZipSources, TimesLastUntil2106) {
  for (const std::int64_t time : {0LL, 1LL, 1'700'000'000LL, 0x7FFFFFFELL, 0x7FFFFFFFLL, 0x80000000LL,
                                  0x80000001LL, 3'000'000'000LL, 0xFFFFFFFELL, 0xFFFFFFFFLL}) {
    EXPECT_EQ(TimeThroughAnArchive(FileTimeAt(time)), FileTimeAt(time)) << time;
  }
  EXPECT_EQ(TimeThroughAnArchive(FileTimeAt(0x100000000LL)), FileTimeAt(0xFFFFFFFFLL)) << "the last one";
  EXPECT_EQ(TimeThroughAnArchive(FileTimeAt(0x200000000LL)), FileTimeAt(0xFFFFFFFFLL));
  EXPECT_EQ(TimeThroughAnArchive(FileTimeAt(-1)), FileTimeAt(0)) << "the first one";
}

}  // namespace
}  // namespace lorv::test
