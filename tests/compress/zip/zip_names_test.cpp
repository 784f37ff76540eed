#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "compress/CompressFiles.h"
#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_writer.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

// Names of entries in code page 936: characters, whatever their bytes.
namespace lorv::test {
namespace {

// Every character of two bytes that the code page has, as narrow text.
std::vector<std::string> WideCharacters() {
  std::vector<std::string> characters;
  for (unsigned unit = 0x80; unit < 0x10000; ++unit) {
    const TCHAR text[] = {static_cast<TCHAR>(unit)};
    const std::string narrow = SuiteCodePage().ToNarrow({text, 1});
    if (narrow.size() == 2) characters.push_back(narrow);
  }
  return characters;
}

class MemoryZip {
 public:
  MemoryZip() { writer.Create(nullptr, 0); }
  ZipReader& Read() {
    const void* data = nullptr;
    std::size_t size = 0;
    writer.Close();
    writer.GetMemory(data, size);
    reader.Open(data, size);
    return reader;
  }
  std::string NameAt(int index) {
    ZipEntry entry;
    return reader.GetItem(index, entry) == kZipOk ? entry.name : "(none)";
  }
  ZipWriter writer;
  ZipReader reader;
};

TEST(ZipNames, EveryCharacterComesBackAndOnlyTheBackslashBecomesASlash) {
  const std::vector<std::string> characters = WideCharacters();
  ASSERT_GT(characters.size(), 21000U);
  int with_backslash = 0;
  MemoryZip zip;
  for (const std::string& c : characters) {
    with_backslash += c[1] == '\\';
    ASSERT_EQ(zip.writer.Add(("d\\" + c + "\\" + c + ".txt").c_str(), "x", 1), kZipOk);
  }
  EXPECT_GT(with_backslash, 100) << "characters whose second byte is that of the backslash";
  ZipReader& reader = zip.Read();
  for (std::size_t i = 0; i < characters.size(); ++i) {
    ASSERT_EQ(zip.NameAt(static_cast<int>(i)), "d/" + characters[i] + "/" + characters[i] + ".txt");
  }
  std::string bytes;
  EXPECT_EQ(reader.UnzipItem(0, [](std::span<const unsigned char>) { return true; }), kZipOk);
}

TEST(ZipNames, FilesOfEveryCharacterArePackedAndUnpacked) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  CStringArray paths;
  std::vector<CString> names;
  for (const std::string& c : WideCharacters()) {
    if (c[1] != '\\' && c[1] != '/' && names.size() % 40 != 0) continue;
    names.push_back(CString(SuiteCodePage().ToText(c)) + _T(".txt"));
    machine.files.Put(_T("C:\\p\\") + names.back(), "bytes of " + c);
    paths.Add(_T("C:\\p\\") + names.back());
  }
  ASSERT_GT(names.size(), 100U);
  machine.files.Put(_T("E:\\誠運\\工鋅\\here"), "");
  EXPECT_EQ(CompressFiles(_T("E:\\誠運\\工鋅.zip"), paths), 1);
  EXPECT_EQ(DecompressFiles(_T("E:\\誠運\\工鋅.zip"), _T("E:\\誠運\\")), 1);
  for (const CString& name : names) {
    EXPECT_EQ(machine.files.BytesOf(_T("E:\\誠運\\工鋅\\") + name),
              machine.files.BytesOf(_T("C:\\p\\") + name))
        << Utf8(name);
  }
}

TEST(ZipNames, FoldersOfOthersThatEndInABackslashAreFolders) {
  const auto attributes_of = [](const std::string& name) {
    // The writer would change the separators: the name is put in afterwards, at both its places.
    const std::string place(name.size(), 'n');
    ZipWriter writer;
    writer.Create(nullptr, 0);
    writer.Add(place.c_str(), "", 0);
    writer.Close();
    const void* data = nullptr;
    std::size_t size = 0;
    writer.GetMemory(data, size);
    std::string archive(static_cast<const char*>(data), size);
    for (std::size_t at = archive.find(place); at != std::string::npos; at = archive.find(place)) {
      archive.replace(at, place.size(), name);
    }
    ZipReader reader;
    ZipEntry entry;
    EXPECT_EQ(reader.Open(archive.data(), archive.size()), kZipOk);
    EXPECT_EQ(reader.GetItem(0, entry), kZipOk);
    EXPECT_EQ(entry.name, name);
    return entry.attributes;
  };
  EXPECT_EQ(attributes_of("d\\e\\"), kAttributeFolder);
  EXPECT_EQ(attributes_of("d/e/"), kAttributeFolder);
  EXPECT_EQ(attributes_of("d\\e"), kAttributeNormal);
  EXPECT_EQ(attributes_of("\xDF\x5C"), kAttributeNormal) << "one character, no backslash";
  EXPECT_EQ(attributes_of("\xDF\x5C\x5C"), kAttributeFolder);
}

TEST(ZipNames, CaseIsThatOfCharactersNotOfBytes) {
  // Two characters whose second bytes are "a" and "A".
  const std::string small = "\x81\x61", large = "\x81\x41";
  ASSERT_EQ(SuiteCodePage().ToText(small).size(), 1U);
  ASSERT_EQ(SuiteCodePage().ToText(large).size(), 1U);
  MemoryZip zip;
  zip.writer.Add((small + ".txt").c_str(), "x", 1);
  zip.writer.Add((large + ".TXT").c_str(), "x", 1);
  ZipReader& reader = zip.Read();
  ZipEntry entry;
  EXPECT_EQ(reader.FindItem((large + ".txt").c_str(), true, entry), kZipOk);
  EXPECT_EQ(entry.index, 1);
  EXPECT_EQ(reader.FindItem((large + ".txt").c_str(), false, entry), kZipNotFound);
}

}  // namespace
}  // namespace lorv::test
