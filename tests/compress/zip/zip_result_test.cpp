#include "compress/zip/zip_result.h"

#include <gtest/gtest.h>

#include <string>

#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_writer.h"

namespace lorv::test {
namespace {

std::string Message(DWORD code) {
  char text[100];
  const unsigned length = FormatZipMessage(code, text, sizeof text);
  EXPECT_EQ(length, std::string(text).size());
  return text;
}

TEST(ZipResult, EveryCodeHasItsText) {
  const struct {
    DWORD code;
    const char* text;
  } rows[] = {
      {0, "Success"},
      {0x100, "Culdn't duplicate handle"},
      {0x200, "Couldn't create/open file"},
      {0x300, "Failed to allocate memory"},
      {0x400, "Error writing to file"},
      {0x500, "File not found in the zipfile"},
      {0x600, "Still more data to unzip"},
      {0x700, "Zipfile is corrupt or not a zipfile"},
      {0x800, "Error reading file"},
      {0x10000, "Caller: faulty arguments"},
      {0x20000, "Caller: can only get memory of a memory zipfile"},
      {0x30000, "Caller: not enough space allocated for memory zipfile"},
      {0x40000, "Caller: there was a previous error"},
      {0x50000, "Caller: additions to the zip have already been ended"},
      {0x60000, "Zip-bug: the anticipated size turned out wrong"},
      {0x70000, "Caller: the file had already been partially unzipped"},
      {0x80000, "Caller: mixing creation and opening of zip"},
      {0x1000000, "Zip-bug: internal initialisation not completed"},
      {0x2000000, "Zip-bug: trying to seek the unseekable"},
      {0x4000000, "Zip-bug: tried to change mind, but not allowed"},
      {0x5000000, "Zip-bug: an internal error during flation"},
      {2, "unknown zip result code"},
      {0xFFFFFFFF, "unknown zip result code"},
      {0x3000000, "unknown zip result code"},
  };
  for (const auto& row : rows) EXPECT_EQ(Message(row.code), row.text) << row.code;
}

TEST(ZipResult, TextIsCutToTheBuffer) {
  char text[8] = "xxxxxxx";
  EXPECT_EQ(FormatZipMessage(0, text, 8), 7U);
  EXPECT_STREQ(text, "Success");
  EXPECT_EQ(FormatZipMessage(0, text, 7), 7U);
  EXPECT_STREQ(text, "Succes");
  EXPECT_EQ(FormatZipMessage(0, text, 1), 7U);
  EXPECT_STREQ(text, "");
  text[0] = 'y';
  EXPECT_EQ(FormatZipMessage(0, text, 0), 7U);
  EXPECT_EQ(text[0], 'y');
  EXPECT_EQ(FormatZipMessage(0x200, nullptr, 9), 25U);
}

TEST(ZipResult, OneStandsForTheLastResultOfEitherSide) {
  ZipReader reader;
  EXPECT_EQ(reader.Open("no/such/archive.zip"), kZipNoFile);
  EXPECT_EQ(LastZipOpening(), kZipNoFile);
  EXPECT_EQ(Message(1), "Couldn't create/open file");
  ZipWriter writer;
  EXPECT_EQ(writer.Create(nullptr, 0), kZipOk);
  EXPECT_EQ(LastZipCreation(), kZipOk);
  EXPECT_EQ(LastZipOpening(), kZipNoFile);
  EXPECT_EQ(Message(1), "Success");
}

}  // namespace
}  // namespace lorv::test
