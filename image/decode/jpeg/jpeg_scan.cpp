#include "image/decode/jpeg/jpeg_scan.h"

#include <algorithm>

// One scan of a picture: blocks in the order of the file, either whole and turned into samples at once, or a
// part of the coefficients of every block, which later scans complete. A damaged scan ends where the damage
// shows; what was read before stays in the picture.

namespace lorv::jpeg {
namespace {

class ScanReader {
 public:
  ScanReader(std::string_view bytes, std::size_t at, const Scan& scan, const CodeTables& tables,
             Picture& picture)
      : bits_(bytes, at), scan_(scan), tables_(tables), picture_(picture) {}

  std::size_t Read();

 private:
  bool BeginUnit();
  bool ReadUnit(int x, int y);
  bool ReadBlock(const Scan::Part& part, int x, int y);
  bool Sequential(const Scan::Part& part, Block& block);
  bool Progressive(const Scan::Part& part, Block& block);
  bool Level(const Scan::Part& part, Block& block);
  bool FirstBits(const Codes& codes, Block& block);
  bool MoreBits(const Codes& codes, Block& block);
  int SkipOverZeros(Block& block, int at, int zeros);
  void Refine(std::int16_t& coefficient);
  bool IsLevelScan() const { return scan_.first == 0; }

  Bits bits_;
  const Scan& scan_;
  const CodeTables& tables_;
  Picture& picture_;
  int units_ = 0;
  bool has_others_ = false;  // beside the level of the block read last
  int empty_blocks_ = 0;     // blocks to come that bring nothing new
};

// At a restart everything begins anew.
bool ScanReader::BeginUnit() {
  if (picture_.restart_interval > 0 && units_ > 0 && units_ % picture_.restart_interval == 0) {
    // Damage before a restart mark ends there: nothing behind it counts from a block before it.
    if (!bits_.Restart()) return false;
    for (const Scan::Part& part : scan_.parts) picture_.components[part.component].last_level = 0;
    empty_blocks_ = 0;
  }
  ++units_;
  return true;
}

std::size_t ScanReader::Read() {
  for (const Scan::Part& part : scan_.parts) picture_.components[part.component].last_level = 0;
  int across = picture_.units_across;
  int down = picture_.units_down;
  if (scan_.parts.size() == 1) {  // its own blocks, without those that fill up
    const Component& only = picture_.components[scan_.parts[0].component];
    across = (only.width + kBlockSize - 1) / kBlockSize;
    down = (only.height + kBlockSize - 1) / kBlockSize;
  }
  for (int y = 0; y < down; ++y) {
    for (int x = 0; x < across; ++x) {
      if (!BeginUnit() || !ReadUnit(x, y)) return bits_.At();
    }
  }
  return bits_.At();
}

bool ScanReader::ReadUnit(int x, int y) {
  if (scan_.parts.size() == 1) return ReadBlock(scan_.parts[0], x, y);
  for (const Scan::Part& part : scan_.parts) {
    const Component& component = picture_.components[part.component];
    for (int i = 0; i < component.across * component.down; ++i) {
      const int column = x * component.across + i % component.across;
      if (!ReadBlock(part, column, y * component.down + i / component.across)) return false;
    }
  }
  return true;
}

bool ScanReader::ReadBlock(const Scan::Part& part, int x, int y) {
  // With restart marks the rest of the picture may still come behind the next of them.
  if (bits_.IsAtEnd() && picture_.restart_interval == 0) return false;
  Component& component = picture_.components[part.component];
  if (picture_.progressive) {
    const std::size_t at = static_cast<std::size_t>(y) * static_cast<std::size_t>(component.blocks_across);
    return Progressive(part, component.blocks[at + static_cast<std::size_t>(x)]);
  }
  Block block = {};
  const bool whole = Sequential(part, block);
  // A block of which bits were missing would show as noise: the grey stays.
  if (bits_.IsAtEnd()) return picture_.restart_interval != 0;
  const Quantities& quantities = picture_.quantities[component.quantities];
  unsigned char* const to = component.BlockAt(x, y);
  // Smooth areas have nothing but levels.
  if (has_others_) {
    TransformBlock(block, quantities, to, component.Stride());
  } else {
    TransformLevel(block[0], quantities, to, component.Stride());
  }
  return whole;
}

bool ScanReader::Level(const Scan::Part& part, Block& block) {
  const int size = tables_.levels[part.levels].Next(bits_);
  if (size < 0 || size > 15) return false;
  int& last = picture_.components[part.component].last_level;
  // Differences of a hostile file would add up beyond any number.
  last = std::clamp(last + bits_.Signed(size), -32768, 32767);
  block[0] = static_cast<std::int16_t>(static_cast<unsigned>(last) << scan_.low_bit);
  return true;
}

bool ScanReader::Sequential(const Scan::Part& part, Block& block) {
  has_others_ = false;
  if (!Level(part, block)) return false;
  for (int at = 1; at < kBlockArea; ++at) {
    const int code = tables_.others[part.others].Next(bits_);
    if (code < 0) return false;
    if ((code & 15) == 0) {
      // The end of the block, or sixteen zeros in the middle of it.
      if (code != 0xF0) return true;
      at += 15;
      continue;
    }
    at += code >> 4;
    const int value = bits_.Signed(code & 15);
    if (at >= kBlockArea) return false;
    block[kZigzag[static_cast<std::size_t>(at)]] = static_cast<std::int16_t>(value);
    has_others_ = true;
  }
  return true;
}

bool ScanReader::Progressive(const Scan::Part& part, Block& block) {
  if (IsLevelScan()) {
    if (scan_.high_bit == 0) return Level(part, block);
    if (bits_.Take(1) != 0) block[0] = static_cast<std::int16_t>(block[0] | 1 << scan_.low_bit);
    return true;
  }
  const Codes& codes = tables_.others[part.others];
  return scan_.high_bit == 0 ? FirstBits(codes, block) : MoreBits(codes, block);
}

bool ScanReader::FirstBits(const Codes& codes, Block& block) {
  if (empty_blocks_ > 0) {
    --empty_blocks_;
    return true;
  }
  for (int at = scan_.first; at <= scan_.last; ++at) {
    const int code = codes.Next(bits_);
    if (code < 0) return false;
    const int run = code >> 4;
    const int size = code & 15;
    if (size == 0 && run < 15) {
      // This block is the first of them.
      empty_blocks_ = (1 << run) - 1 + bits_.Take(run);
      return true;
    }
    at += run;
    const int value = bits_.Signed(size);
    if (at >= kBlockArea) return false;
    // Sixteen zeros: nothing is put, and the walk goes on behind them.
    if (size == 0) continue;
    block[kZigzag[static_cast<std::size_t>(at)]] =
        static_cast<std::int16_t>(static_cast<unsigned>(value) << scan_.low_bit);
  }
  return true;
}

// One bit more for a coefficient that is not 0.
void ScanReader::Refine(std::int16_t& coefficient) {
  const int bit = 1 << scan_.low_bit;
  if (bits_.Take(1) == 0 || (coefficient & bit) != 0) return;
  coefficient = static_cast<std::int16_t>(coefficient + (coefficient > 0 ? bit : -bit));
}

// Behind so many coefficients that are 0, refining the others on the way: the place of the next that is 0, or
// one behind the last.
int ScanReader::SkipOverZeros(Block& block, int at, int zeros) {
  for (; at <= scan_.last; ++at) {
    std::int16_t& coefficient = block[kZigzag[static_cast<std::size_t>(at)]];
    if (coefficient != 0) {
      Refine(coefficient);
    } else if (zeros-- == 0) {
      break;
    }
  }
  return at;
}

bool ScanReader::MoreBits(const Codes& codes, Block& block) {
  int at = scan_.first;
  while (at <= scan_.last && empty_blocks_ == 0) {
    const int code = codes.Next(bits_);
    if (code < 0) return false;
    const int run = code >> 4;
    int value = 0;
    if ((code & 15) != 0) {
      // The bit comes before those that refine what is passed on the way, and is put behind them.
      value = bits_.Take(1) != 0 ? 1 << scan_.low_bit : -(1 << scan_.low_bit);
    } else if (run < 15) {
      empty_blocks_ = (1 << run) + bits_.Take(run);
      break;
    }
    at = SkipOverZeros(block, at, run);
    if (at > scan_.last) return true;
    if (value != 0) block[kZigzag[static_cast<std::size_t>(at)]] = static_cast<std::int16_t>(value);
    ++at;
  }
  if (empty_blocks_ > 0) {
    // A block with nothing new still refines the coefficients that it has.
    SkipOverZeros(block, at, kBlockArea);
    --empty_blocks_;
  }
  return true;
}

}  // namespace

std::size_t ReadScan(std::string_view bytes, std::size_t at, const Scan& scan, const CodeTables& tables,
                     Picture& picture) {
  return ScanReader(bytes, at, scan, tables, picture).Read();
}

}  // namespace lorv::jpeg
