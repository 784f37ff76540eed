#include <gtest/gtest.h>

#include <string>

#include "compress/lzari/byte_order.h"
#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_writer.h"

// Names in Unicode beside the narrow ones, and what else the listing has beyond an entry's record.
namespace lorv::test {
namespace {

std::string Bytes(ZipWriter& writer) {
  const void* data = nullptr;
  std::size_t size = 0;
  EXPECT_EQ(writer.Close(), kZipOk);
  EXPECT_EQ(writer.GetMemory(data, size), kZipOk);
  return {static_cast<const char*>(data), size};
}

std::string ListedName(const std::string& archive, int index = 0) {
  ZipReader zip;
  ZipListing listing;
  EXPECT_EQ(zip.Open(archive.data(), archive.size()), kZipOk);
  EXPECT_EQ(zip.List(index, listing), kZipOk);
  return listing.name;
}

TEST(ZipUnicode, NameStandsBesideTheNarrowOneInBothHeaders) {
  ZipWriter writer;
  writer.Create(nullptr, 0);
  EXPECT_EQ(writer.AddFolder("_", "😀"), kZipOk);
  const std::string archive = Bytes(writer);
  const auto* const bytes = reinterpret_cast<const unsigned char*>(archive.data());
  EXPECT_EQ(archive.substr(30, 2), "_/");
  EXPECT_EQ(LoadLittle16(bytes + 28), 17 + 4 + 5 + 5) << "extra fields of the local header";
  const std::size_t local = 30 + 2 + 17;
  EXPECT_EQ(LoadLittle16(bytes + local), 0x7075);
  EXPECT_EQ(LoadLittle16(bytes + local + 2), 10);
  EXPECT_EQ(bytes[local + 4], 1) << "version";
  EXPECT_EQ(archive.substr(local + 9, 5), "😀/");
  const std::size_t central = LoadLittle32(bytes + archive.size() - 22 + 16);
  EXPECT_EQ(LoadLittle16(bytes + central + 30), 9 + 14);
  EXPECT_EQ(archive.substr(central + 46 + 2 + 9, 14), archive.substr(local, 14));
  EXPECT_EQ(LoadLittle16(bytes + 6) & 0x800, 0) << "the narrow name is not marked as UTF-8";
  EXPECT_EQ(ListedName(archive), "😀/");
}

TEST(ZipUnicode, FieldOfAnotherNameOrVersionOrWithAZeroDoesNotCount) {
  ZipWriter writer;
  writer.Create(nullptr, 0);
  writer.AddFolder("_", "abcd");
  const std::string archive = Bytes(writer);
  const std::size_t field = archive.rfind("up");
  ASSERT_EQ(ListedName(archive), "abcd/");
  for (const std::size_t at : {std::size_t{4}, std::size_t{5}, std::size_t{8}}) {
    std::string bad = archive;
    bad[field + at] = static_cast<char>(bad[field + at] ^ 2);
    EXPECT_EQ(ListedName(bad), "_/") << at;
  }
  std::string bad = archive;
  bad[field + 11] = '\0';
  EXPECT_EQ(ListedName(bad), "_/");
}

TEST(ZipUnicode, NamesHave65509BytesAtMost) {
  for (const std::size_t length : {65508U, 65509U}) {
    ZipWriter writer;
    writer.Create(nullptr, 0);
    const std::string name(length, 'n');
    EXPECT_EQ(writer.Obstacle("_", 0, name), ZipFault::kNone);
    EXPECT_EQ(writer.Add("_", nullptr, 0), kZipOk);
    EXPECT_EQ(writer.AddFolder("_", name.substr(1)), kZipOk);
    EXPECT_EQ(ListedName(Bytes(writer), 1), name.substr(1) + "/");
  }
  ZipWriter writer;
  writer.Create(nullptr, 0);
  EXPECT_EQ(writer.Obstacle("_", 0, std::string(65510, 'n')), ZipFault::kLongUnicodeName);
  EXPECT_EQ(writer.AddFolder("_", std::string(65509, 'n')), kZipArguments) << "with its separator";
}

TEST(ZipUnicode, ObstaclesAreReportedBeforehandAndLeaveNoTrace) {
  ZipWriter writer;
  writer.Create(nullptr, 0);
  EXPECT_EQ(writer.Obstacle("", 0), ZipFault::kNoName);
  EXPECT_EQ(writer.Obstacle(std::string(259, 'n'), 0), ZipFault::kNone);
  EXPECT_EQ(writer.Obstacle(std::string(260, 'n'), 0), ZipFault::kLongName);
  EXPECT_EQ(writer.Obstacle("a", 0x7FFFFFFF), ZipFault::kNone);
  EXPECT_EQ(writer.Obstacle("a", 0x80000000), ZipFault::kLargeEntry);
  for (int i = 0; i < 65535; ++i) ASSERT_EQ(writer.AddFolder("d"), kZipOk);
  EXPECT_EQ(writer.Obstacle("a", 0), ZipFault::kManyEntries);
  EXPECT_EQ(writer.Close(), kZipOk);
}

TEST(ZipUnicode, OverlapsAreSeenAndDirectoriesCompared) {
  ZipWriter writer;
  writer.Create(nullptr, 0);
  writer.Add("a", "0123456789", 10);
  writer.Add("b", "0123456789", 10);
  std::string archive = Bytes(writer);
  ZipReader good, again, bad;
  ASSERT_EQ(good.Open(archive.data(), archive.size()), kZipOk);
  ASSERT_EQ(again.Open(archive.data(), archive.size()), kZipOk);
  EXPECT_FALSE(good.HasOverlaps());
  EXPECT_TRUE(good.HasDirectoryOf(again));
  // The second entry is said to begin one byte before the first one's end.
  const auto* const bytes = reinterpret_cast<const unsigned char*>(archive.data());
  const std::size_t central = LoadLittle32(bytes + archive.size() - 22 + 16);
  const std::size_t second = central + 46 + 1 + 9;
  std::string moved = archive;
  StoreLittle32(reinterpret_cast<unsigned char*>(moved.data()) + second + 42, 30 + 1 + 5);
  ASSERT_EQ(bad.Open(moved.data(), moved.size()), kZipOk);
  EXPECT_TRUE(bad.HasOverlaps());
  EXPECT_FALSE(good.HasDirectoryOf(bad));
}

}  // namespace
}  // namespace lorv::test
