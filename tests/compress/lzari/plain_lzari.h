#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace lorv::test {

// The codec written down step for step, with no thought of speed: the reference of the fast one. Every stream
// and every decoder outcome of `CAdRar` must equal what comes out of here, byte for byte.
//
// One object serves one operation. Throws the int 1 where the codec does ("Read Error").
class PlainLzari {
 public:
  enum class Reading {
    kBuffer,  // normalising stops once the last byte is fetched; bits past the end are 0
    kFile,    // normalising never runs; bits past the end are 1
    kExact,   // no guard; bits past the end are 0
  };

  std::string Encode(const std::string& plain);
  std::string Decode(const std::string& stream, Reading reading);

 private:
  static constexpr int kWindow = 4096;
  static constexpr int kLongest = 60;
  static constexpr int kThreshold = 2;
  static constexpr int kNil = kWindow;
  static constexpr std::uint32_t kQ1 = 0x8000, kQ2 = 0x10000, kQ3 = 0x18000, kQ4 = 0x20000;
  static constexpr int kSymbols = 314;
  static constexpr unsigned kMaxCum = 32767;

  void PutBit(int bit);
  void Output(int bit);
  int GetBit();
  void InitTree();
  void InsertNode(int r);
  void DeleteNode(int p);
  void StartModel();
  void UpdateModel(int symbol);
  void Narrow(unsigned upper, unsigned lower, unsigned total);
  void NormaliseEncoder();
  bool NormaliseDecoderStep();
  void EncodeChar(int character);
  void EncodePosition(int position);
  void EncodeEnd();
  int DecodeChar();
  int DecodePosition();
  void TakeByte(int character, int& r, std::uint32_t& count);

  std::string in_;
  std::size_t in_position_ = 0;
  std::string out_;
  Reading reading_ = Reading::kBuffer;
  int put_buffer_ = 0, put_mask_ = 128, get_buffer_ = 0, get_mask_ = 0;
  std::array<unsigned char, kWindow + kLongest - 1> text_{};
  int match_position_ = 0, match_length_ = 0;
  std::array<int, kWindow + 1> left_{}, parent_{};
  std::array<int, kWindow + 257> right_{};
  std::uint32_t low_ = 0, high_ = kQ4, value_ = 0;
  int shifts_ = 0;
  std::array<int, kSymbols> char_to_symbol_{};
  std::array<int, kSymbols + 1> symbol_to_char_{};
  std::array<unsigned, kSymbols + 1> frequency_{}, cumulative_{};
  std::array<unsigned, kWindow + 1> position_cumulative_{};
};

}  // namespace lorv::test
