#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// TIFF files made for tests, field by field.
namespace lorv::test {

struct MadeField {
  unsigned tag = 0;
  unsigned type = 4;  // 1: bytes, 3: of 16 bits, 4: of 32 bits
  std::vector<std::uint32_t> values;
};

struct MadePage {
  std::vector<MadeField> fields;  // beside those of the pieces
  std::vector<std::string> pieces;
  bool tiled = false;
};

class TiffMaker {
 public:
  explicit TiffMaker(bool high_first = false) : high_first_(high_first) {
    bytes_ = high_first ? std::string("MM\0*", 4) : std::string("II*\0", 4);
    bytes_ += Number(0, 4);
  }

  // Puts the page behind those before; gives where its directory begins.
  std::uint32_t Add(const MadePage& page) {
    MadeField offsets{page.tiled ? 324U : 273U, 4, {}};
    MadeField sizes{page.tiled ? 325U : 279U, 4, {}};
    for (const std::string& piece : page.pieces) {
      offsets.values.push_back(At());
      sizes.values.push_back(static_cast<std::uint32_t>(piece.size()));
      bytes_ += piece;
    }
    std::vector<MadeField> fields = page.fields;
    fields.push_back(offsets);
    fields.push_back(sizes);
    std::string entries;
    for (const MadeField& field : fields) entries += Entry(field);
    const std::uint32_t at = At();
    bytes_ += Number(static_cast<std::uint32_t>(fields.size()), 2) + entries;
    Link(at);
    next_at_ = bytes_.size();
    bytes_ += Number(0, 4);
    return at;
  }
  // The directory that follows the last one.
  void Link(std::uint32_t at) { bytes_.replace(next_at_, 4, Number(at, 4)); }
  const std::string& Bytes() const { return bytes_; }

  std::string Number(std::uint32_t value, int size) const {
    std::string number;
    for (int i = 0; i < size; ++i)
      number += static_cast<char>(value >> 8 * (high_first_ ? size - 1 - i : i) & 255);
    return number;
  }

 private:
  std::uint32_t At() const { return static_cast<std::uint32_t>(bytes_.size()); }
  std::string Entry(const MadeField& field) {
    const int size = field.type == 1 ? 1 : field.type == 3 ? 2 : 4;
    std::string values;
    for (const std::uint32_t value : field.values) values += Number(value, size);
    if (values.size() > 4) {
      const std::uint32_t at = At();
      bytes_ += values;
      values = Number(at, 4);
    }
    values.resize(4, '\0');
    return Number(field.tag, 2) + Number(field.type, 2) +
           Number(static_cast<std::uint32_t>(field.values.size()), 4) + values;
  }

  bool high_first_;
  std::string bytes_;
  std::size_t next_at_ = 4;
};

// The fields that every page has: width, height, bits, packing, meaning, samples, rows of a strip.
inline std::vector<MadeField> PageFields(std::uint32_t width, std::uint32_t height, std::uint32_t bits,
                                         std::uint32_t packing, std::uint32_t meaning,
                                         std::uint32_t samples = 1) {
  return {{256, 4, {width}},   {257, 4, {height}},  {258, 3, std::vector<std::uint32_t>(samples, bits)},
          {259, 3, {packing}}, {262, 3, {meaning}}, {277, 3, {samples}}};
}

inline std::string MadeTiff(const MadePage& page, bool high_first = false) {
  TiffMaker maker(high_first);
  maker.Add(page);
  return maker.Bytes();
}

}  // namespace lorv::test
