#pragma once

#include <string>
#include <string_view>

#include "tools/lorv/csv/input_bytes.h"

namespace lorv::tool {

enum class Encoding { kAuto, kUtf8, kGbk, kUtf16Little, kUtf16Big };

// "auto", "utf-8", "gbk", "utf-16le", "utf-16be"; throws BadInput for any other name.
Encoding EncodingByName(const std::string& name);

// Turns the bytes of a text file into UTF-8, whole lines at a time, however large the file is.
//
// Edges: a byte order mark decides and is taken off; without one, zero bytes in every second place of the
//   beginning show UTF-16, and the first block that is not plain ASCII decides between UTF-8 and GBK (the
//   Chinese code page 936, what spreadsheets write in China). Text without any such byte is all of them at
//   once.
// Failure: throws BadInput with the line of the first byte that is no text in that encoding, and for a line
//   that does not end within kMaxCsvLine bytes.
class TextDecoder {
 public:
  TextDecoder(InputBytes& bytes, Encoding encoding) : bytes_(bytes), encoding_(encoding) {}

  // The next lines with their ends, the last one of the file perhaps without; false when nothing is left.
  bool Next(std::string& utf8);

  // The encoding as far as it is known by now; kAuto while all was ASCII.
  Encoding Found() const { return encoding_; }
  // Whether the file begins with a byte order mark.
  bool HasMark() const { return has_mark_; }

 private:
  bool Fill();
  void Recognise();
  void TakeMark(Encoding encoding, std::size_t size);
  std::size_t WholeLines() const;
  std::string Decoded(std::string_view raw);
  std::string FromUtf16(std::string_view raw) const;
  std::string FromGbk(std::string_view raw) const;
  std::string CheckedUtf8(std::string_view raw) const;
  [[noreturn]] void Fail(std::string_view good, const std::string& message) const;
  bool Wide() const { return encoding_ == Encoding::kUtf16Little || encoding_ == Encoding::kUtf16Big; }

  InputBytes& bytes_;
  Encoding encoding_;
  std::string raw_;  // read and not yet given out
  bool begun_ = false;
  bool ended_ = false;
  bool has_mark_ = false;
  long long line_ = 1;  // of the first unit in raw_
};

// The length of the longest beginning that is valid UTF-8.
std::size_t ValidUtf8(std::string_view bytes);

}  // namespace lorv::tool
