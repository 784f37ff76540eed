#include "tests/compress/lzari/lzari_samples.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "tests/support/data.h"

namespace lorv::test {
namespace {

const unsigned char* Bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

std::string Text(const unsigned char* bytes, int length) {
  return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)};
}

std::string Repeated(const std::string& piece, std::size_t length) {
  std::string text;
  while (text.size() < length) text += piece;
  text.resize(length);
  return text;
}

// Rows as a take-off table has them: much alike, with numbers that differ.
std::string Table(int rows) {
  std::string text;
  for (int i = 0; i < rows; ++i) {
    text += "KL" + std::to_string(i % 37) + ",C30,250*" + std::to_string(300 + 50 * (i % 7)) + "," +
            std::to_string(i * 7919 % 100003) + ".5\r\n";
  }
  return text;
}

// The same few beginnings with other bytes behind: many matches of one length, of which the tree's way
// decides.
std::string Ties(std::size_t length) {
  std::mt19937 next(8);
  std::string text;
  while (text.size() < length) {
    text += next() % 3 == 0 ? "abcd" : "abc";
    text += static_cast<char>(next() % 256);
  }
  return text;
}

// Long pieces that come again, each a little cut: strings are replaced again and again by their equals.
std::string Renewed(std::size_t length) {
  std::mt19937 next(9);
  const std::string piece = Noise(90, 10, 4);
  std::string text;
  while (text.size() < length) text += piece.substr(next() % 20) + static_cast<char>(next() % 2);
  return text;
}

}  // namespace

std::string Noise(std::size_t length, unsigned seed, int alphabet) {
  std::mt19937 next(seed);
  std::string text(length, '\0');
  for (char& c : text) c = static_cast<char>(next() % static_cast<unsigned>(alphabet));
  return text;
}

std::vector<Sample> LzariSamples() {
  std::vector<Sample> samples = {
      {"one byte", "x"},
      {"one zero", std::string(1, '\0')},
      {"spaces like the empty window", std::string(5000, ' ')},
      {"zeros like the unwritten part", std::string(5000, '\0')},
      {"hello", "hello world"},
      {"long run", std::string(20000, 'a')},
      {"two letters", Repeated("ab", 9000)},
      {"period near the longest match", Repeated(Noise(61, 5), 9000)},
      {"period of the window", Repeated(Noise(4096, 6), 20000)},
      {"period just beyond the reach", Repeated(Noise(4097, 7), 20000)},
      {"table", Table(2500)},
      {"ties", Ties(30000)},
      {"equal strings renewed", Renewed(30000)},
      {"rising bytes", {}},
  };
  for (int i = 0; i < 9000; ++i) samples.back().bytes.push_back(static_cast<char>(i / 16));
  for (const std::size_t length : std::vector<std::size_t>{2, 3, 4, 58, 59, 60, 61, 62, 118, 119, 120, 121,
                                                           4035, 4036, 4037, 4095, 4096, 4097}) {
    samples.push_back({"noise of " + std::to_string(length), Noise(length, 1)});
    samples.push_back({"few letters, " + std::to_string(length), Noise(length, 2, 3)});
  }
  samples.push_back({"long noise", Noise(70000, 3)});
  samples.push_back({"long noise of 40 letters", Noise(70000, 4, 40)});
  return samples;
}

std::vector<Sample> RealSamples() {
  std::vector<Sample> samples;
  for (const char* name : {"components/fzk_house.csv", "components/relations.csv",
                           "text/building_manual_004.txt", "text/gbk.txt", "text/building_terms_zh_CN.ts.xml",
                           "spreadsheets/cn_school.xls", "zip/entries_1006.zip", "images/gif/chi.gif"}) {
    if (const auto file = FindData(name)) samples.push_back({name, ReadBytes(*file)});
  }
  return samples;
}

std::string Packed(const std::string& plain) {
  const auto packer = std::make_unique<CAdRar>();
  const unsigned char* result = nullptr;
  int length = 0;
  testing::internal::CaptureStdout();
  packer->Compress(Bytes(plain), static_cast<int>(plain.size()), result, length);
  testing::internal::GetCapturedStdout();
  return Text(result, length);
}

std::string Unpacked(const std::string& stream, bool exact) {
  const auto unpacker = std::make_unique<CAdRar>();
  unpacker->SetExactDecoding(exact);
  const unsigned char* result = nullptr;
  int length = 0;
  testing::internal::CaptureStdout();
  try {
    unpacker->UnCompress(Bytes(stream), static_cast<int>(stream.size()), result, length);
  } catch (int) {
    testing::internal::GetCapturedStdout();
    throw;
  }
  testing::internal::GetCapturedStdout();
  return result == nullptr ? std::string() : Text(result, length);
}

bool IsRefused(const std::string& stream) {
  try {
    Unpacked(stream, true);
  } catch (int code) {
    return code == 1;
  }
  return false;
}

}  // namespace lorv::test
