#include "framework/objects/file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "framework/objects/exceptions.h"

namespace {

std::string TextOf(const CMemFile& file) {
  return {file.GetBytes().begin(), file.GetBytes().end()};
}

// The cause of what an operation raises; -1 if it raises nothing.
template <class Operation>
int CauseOf(Operation operation) {
  try {
    operation();
  } catch (CFileException* failure) {
    const int cause = failure->m_cause;
    failure->Delete();
    return cause;
  }
  return -1;
}

}  // namespace

TEST(MemFile, HeaderExample) {
  CMemFile f;
  f.Write("ab", 2);
  f.SeekToBegin();
  char buffer[5] = {};
  EXPECT_EQ(f.Read(buffer, 5), 2U);
  EXPECT_EQ(std::string(buffer), "ab");
}

TEST(MemFile, BeginsWithACopyAtItsStart) {
  BYTE bytes[] = {1, 2, 3};
  CMemFile f(bytes, 3);
  bytes[0] = 9;
  BYTE read[3] = {};
  EXPECT_EQ(f.GetPosition(), 0U);
  EXPECT_EQ(f.Read(read, 3), 3U);
  EXPECT_EQ(read[0], 1);
  EXPECT_EQ(CMemFile(nullptr, 7).GetLength(), 0U);
}

TEST(MemFile, EveryPlaceToCountFromIsKnown) {
  CMemFile f;
  f.Write("abcdef", 6);
  EXPECT_EQ(f.Seek(2, CFile::begin), 2U);
  EXPECT_EQ(f.Seek(3, CFile::current), 5U);
  EXPECT_EQ(f.Seek(-1, CFile::current), 4U);
  EXPECT_EQ(f.Seek(-6, CFile::end), 0U);
  EXPECT_EQ(f.SeekToEnd(), 6U);
  EXPECT_EQ(f.Seek(4, CFile::end), 10U);
}

TEST(MemFile, ARefusedPlaceLeavesThePosition) {
  CMemFile f;
  f.Write("abc", 3);
  f.Seek(1, CFile::begin);
  EXPECT_EQ(CauseOf([&] { f.Seek(-1, CFile::begin); }), CFileException::badSeek);
  EXPECT_EQ(CauseOf([&] { f.Seek(-2, CFile::current); }), CFileException::badSeek);
  EXPECT_EQ(CauseOf([&] { f.Seek(-4, CFile::end); }), CFileException::badSeek);
  EXPECT_EQ(CauseOf([&] { f.Seek(0, 3); }), CFileException::badSeek);
  EXPECT_EQ(CauseOf([&] { f.Seek(0x7FFFFFFFFFFFFFFF, CFile::current); }), CFileException::badSeek);
  EXPECT_EQ(CauseOf([&] { f.Seek(-0x7FFFFFFFFFFFFFFF - 1, CFile::end); }), CFileException::badSeek);
  EXPECT_EQ(f.GetPosition(), 1U);
  EXPECT_EQ(f.Seek(0x7FFFFFFFFFFFFFFF, CFile::begin), 0x7FFFFFFFFFFFFFFFU);
  char unit = 'x';
  EXPECT_EQ(f.Read(&unit, 1), 0U);
  EXPECT_EQ(unit, 'x');
}

TEST(MemFile, LengthCutsAndFillsAndDoesNotMove) {
  CMemFile f;
  f.Write("abcdef", 6);
  f.SetLength(2);
  EXPECT_EQ(TextOf(f), "ab");
  EXPECT_EQ(f.GetPosition(), 6U);
  f.SetLength(4);
  EXPECT_EQ(TextOf(f), std::string("ab\0\0", 4));
  f.Write("x", 1);
  EXPECT_EQ(TextOf(f), std::string("ab\0\0\0\0x", 7));
}

TEST(MemFile, WritingNothingFillsNoGap) {
  CMemFile f;
  f.Seek(100, CFile::begin);
  f.Write("", 0);
  EXPECT_EQ(f.GetLength(), 0U);
  EXPECT_EQ(f.GetPosition(), 100U);
}

// Random operations against a plain text with a position.
TEST(MemFile, BehavesAsAPlainText) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    CMemFile file;
    std::string model;
    std::size_t at = 0;
    for (int step = 0; step < 40; ++step) {
      const std::size_t number = random() % 50;
      switch (random() % 4) {
        case 0: {
          const std::string bytes(number, static_cast<char>('a' + step % 26));
          file.Write(bytes.data(), static_cast<UINT>(number));
          if (number != 0 && model.size() < at + number) model.resize(at + number, '\0');
          model.replace(at < model.size() ? at : model.size(), number, bytes);
          at += number;
          break;
        }
        case 1: {
          std::string read(number, '?');
          const UINT count = file.Read(read.data(), static_cast<UINT>(number));
          const std::string expected = at < model.size() ? model.substr(at, number) : std::string();
          ASSERT_EQ(read.substr(0, count), expected);
          at += count;
          break;
        }
        case 2:
          at = static_cast<std::size_t>(file.Seek(static_cast<long long>(number), CFile::begin));
          break;
        default:
          file.SetLength(number);
          model.resize(number, '\0');
      }
      ASSERT_EQ(file.GetPosition(), at);
      ASSERT_EQ(TextOf(file), model);
    }
  }
}
