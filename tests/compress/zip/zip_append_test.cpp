#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_writer.h"
#include "platform/headless/services/headless_platform.h"

// Archives put together of parts.
namespace lorv::test {
namespace {

using Entries = std::vector<std::pair<std::string, std::string>>;

void AddAll(ZipWriter& zip, const Entries& entries) {
  for (const auto& [name, bytes] : entries) {
    EXPECT_EQ(zip.Add(name.c_str(), bytes.data(), bytes.size()), kZipOk) << name;
  }
  EXPECT_EQ(zip.AddFolder("d", "ö"), kZipOk);
}

std::unique_ptr<ZipWriter> PartOf(const Entries& entries) {
  auto part = std::make_unique<ZipWriter>();
  EXPECT_EQ(part->Create(nullptr, 0), kZipOk);
  AddAll(*part, entries);
  EXPECT_EQ(part->Close(), kZipOk);
  return part;
}

std::string BytesOf(const ZipWriter& zip) {
  const void* data = nullptr;
  std::size_t size = 0;
  EXPECT_EQ(zip.GetMemory(data, size), kZipOk);
  return {static_cast<const char*>(data), size};
}

std::string Noise(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i * i % 251 + i / 999);
  return bytes;
}

const Entries kOne = {{"a.txt", "hello"}, {"empty", ""}, {"b.zip", "stored"}};
// More than an output gathers before it writes.
const Entries kTwo = {{"large", Noise(300000)}, {"large.gz", Noise(200000)}};

std::unique_ptr<ZipWriter> AddedOneByOne() {
  auto zip = std::make_unique<ZipWriter>();
  EXPECT_EQ(zip->Create(nullptr, 0), kZipOk);
  AddAll(*zip, kOne);
  AddAll(*zip, kTwo);
  AddAll(*zip, kOne);
  EXPECT_EQ(zip->Close(), kZipOk);
  return zip;
}

void AppendParts(ZipWriter& zip) {
  AddAll(zip, kOne);
  EXPECT_EQ(zip.Append(*PartOf(kTwo)), kZipOk);
  EXPECT_EQ(zip.Append(*PartOf(kOne)), kZipOk);
  EXPECT_EQ(zip.Close(), kZipOk);
}

TEST(ZipAppend, PartsGiveTheArchiveThatAddingGives) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  ZipWriter zip;
  EXPECT_EQ(zip.Create(nullptr, 0), kZipOk);
  AppendParts(zip);
  EXPECT_TRUE(BytesOf(zip) == BytesOf(*AddedOneByOne()));
}

TEST(ZipAppend, AFileThatHoldsSomethingGetsThemBehindIt) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  Files& files = *PortsInForce().files;
  {
    const auto file = files.Open(_T("C:\\a.zip"), FileUse::kCreate);
    file->Write("front", 5);
    ZipWriter zip;
    EXPECT_EQ(zip.Create(*file), kZipOk);
    AppendParts(zip);
  }
  const std::string bytes = files.ReadAll(_T("C:\\a.zip")).value_or("");
  EXPECT_TRUE(bytes == "front" + BytesOf(*AddedOneByOne()));
}

TEST(ZipAppend, OnlyAClosedArchiveInMemoryOfItsOwnIsAPart) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  ZipWriter zip, open, in_file, in_block;
  char block[4096];
  EXPECT_EQ(zip.Create(nullptr, 0), kZipOk);
  EXPECT_EQ(open.Create(nullptr, 0), kZipOk);
  EXPECT_EQ(in_file.Create("C:\\b.zip"), kZipOk);
  EXPECT_EQ(in_file.Close(), kZipOk);
  EXPECT_EQ(in_block.Create(block, sizeof block), kZipOk);
  for (ZipWriter* const none : {&zip, &open, &in_file, &in_block}) EXPECT_FALSE(zip.CanAppend(*none));
  // Asking has changed nothing.
  EXPECT_EQ(zip.Append(*PartOf(kOne)), kZipOk);
  EXPECT_EQ(zip.Append(open), kZipArguments);
  EXPECT_EQ(zip.Append(*PartOf(kOne)), kZipFailedBefore);
  EXPECT_EQ(zip.Close(), kZipOk);
  EXPECT_EQ(zip.Append(*PartOf(kOne)), kZipEnded);
}

TEST(ZipAppend, EntriesAreCountedOverAllParts) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  const auto part = PartOf({{"a", "1"}});  // with its folder, two
  for (const std::size_t before : {zip::kMaxEntries - 3, zip::kMaxEntries - 2, zip::kMaxEntries - 1}) {
    ZipWriter zip;
    EXPECT_EQ(zip.Create(nullptr, 0), kZipOk);
    for (std::size_t i = 0; i < before; ++i) zip.AddFolder("d");
    EXPECT_EQ(zip.CanAppend(*part), before <= zip::kMaxEntries - 2);
  }
}

}  // namespace
}  // namespace lorv::test
