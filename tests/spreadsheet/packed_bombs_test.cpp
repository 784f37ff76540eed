#include <gtest/gtest.h>

#include <cstdint>

#include "compress/zip/zip_writer.h"
#include "framework/objects/exceptions.h"
#include "tests/spreadsheet/exchange_desk.h"

// Workbooks whose archives unpack to more than anybody has memory for, or say so.

namespace lorv::engine {
namespace {

using test::Utf8;

constexpr LPCTSTR kPath = _T("C:\\bomb.xlsx");
constexpr const char* kSheet = "xl/sheet.xml";
constexpr const char* kTooLarge = "工作簿文件展开后过大。";

class PackedBombs : public test::ExchangeDesk {
 protected:
  // A workbook of sheets that all name one part.
  static std::string Archive(int sheets, const std::string& part) {
    std::string listed;
    for (int i = 0; i < sheets; ++i) listed += "<sheet name='S" + std::to_string(i) + "' r:id='a'/>";
    ZipWriter zip;
    zip.Create(nullptr, 0);
    const auto add = [&](const char* name, const std::string& xml) { zip.Add(name, xml.data(), xml.size()); };
    add("xl/workbook.xml", "<workbook xmlns:r='r'><sheets>" + listed + "</sheets></workbook>");
    add("xl/_rels/workbook.xml.rels",
        "<Relationships><Relationship Id='a' Type='x/worksheet' Target='sheet.xml'/></Relationships>");
    add(kSheet, part);
    zip.Close();
    const void* data = nullptr;
    std::size_t size = 0;
    zip.GetMemory(data, size);
    return {static_cast<const char*>(data), size};
  }

  // A part of so many bytes that hold nothing but remarks.
  static std::string Remarks(std::size_t size) {
    constexpr std::size_t kRemark = 500000;
    std::string part = "<worksheet>";
    while (part.size() < size) part += "<!--" + std::string(kRemark, ' ') + "-->";
    return part + "</worksheet>";
  }

  // Writes what the sheet's part claims to unpack to into the archive's directory.
  static void Claim(std::string& archive, std::uint32_t size) {
    constexpr std::size_t kNameInHeader = 46;
    constexpr std::size_t kSizeInHeader = 24;
    const std::size_t name = archive.rfind(kSheet);
    ASSERT_EQ(archive.substr(name - kNameInHeader, 4), "PK\x01\x02");
    for (unsigned i = 0; i < 4; ++i) {
      archive[name - kNameInHeader + kSizeInHeader + i] = static_cast<char>(size >> (8 * i) & 0xFF);
    }
  }

  std::string Refusal(const std::string& archive) {
    machine.files.Put(kPath, archive);
    try {
      ReadWorkbook(kPath);
      return {};
    } catch (COleDispatchException* failure) {
      std::string text = Utf8(failure->m_strDescription);
      failure->Delete();
      return text;
    }
  }
};

TEST_F(PackedBombs, APartThatClaimsMoreThanTheLimitIsNotUnpacked) {
  std::string archive = Archive(1, "<worksheet/>");
  EXPECT_EQ(Refusal(archive), "");
  for (const std::uint32_t claimed : {0x40000000U, 0x60000000U, 0x7FFFFFFFU}) {
    Claim(archive, claimed);
    EXPECT_EQ(Refusal(archive), kTooLarge) << claimed;
  }
  // Beyond what the reader of archives takes at all.
  for (const std::uint32_t claimed : {0x80000000U, 0xFFFFFFFFU}) {
    Claim(archive, claimed);
    EXPECT_NE(Refusal(archive), "") << claimed;
  }
}

TEST_F(PackedBombs, APartThatHoldsMoreThanItClaimsIsRefused) {
  std::string archive = Archive(1, Remarks(4000000));
  EXPECT_EQ(Refusal(archive), "");
  EXPECT_LT(archive.size(), 50000U);
  for (const std::uint32_t claimed : {0U, 100U, 3999999U}) {
    Claim(archive, claimed);
    EXPECT_NE(Refusal(archive), "") << claimed;
  }
}

// Each of the parts is within bounds; all of them together are 1.2 GiB, from an archive of 130 KB.
TEST_F(PackedBombs, SheetsThatNameOnePartAgainAndAgainAreCountedEach) {
  const std::string archive = Archive(40, Remarks(std::size_t{1} << 25));
  EXPECT_LT(archive.size(), 300000U);
  EXPECT_EQ(Refusal(archive), kTooLarge);
}

// What cannot be read is reported by the exchange, and no workbook stays open.
TEST_F(PackedBombs, TheUserIsReportedABomb) {
  std::string archive = Archive(3, "<worksheet/>");
  Claim(archive, 0x60000000U);
  machine.files.Put(kPath, archive);
  test::OpenExchange in;
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
  EXPECT_EQ(in.LoadExcel2(kPath, tables, names, 0), 0);
  EXPECT_EQ(Messages(), std::vector<std::string>{kTooLarge});
  EXPECT_TRUE(tables.empty());
}

}  // namespace
}  // namespace lorv::engine
