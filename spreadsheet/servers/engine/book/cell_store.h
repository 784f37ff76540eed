#pragma once

#include <cstdint>
#include <vector>

namespace lorv::engine {

enum class CellKind : std::uint8_t { kEmpty, kNumber, kText, kBool, kError };

// A cell in 16 bytes: its place, kind and style in one word, and what it holds in the other.
//
// Units: rows and columns count from 0. A text, and an error's spelling, is its number in the text pool.
class Cell {
 public:
  Cell() = default;
  Cell(std::uint64_t key, std::uint16_t style)
      : bits_(key << kKeyShift | std::uint64_t{style} << kStyleShift) {}

  // Orders cells by row, then by column.
  static constexpr std::uint64_t Key(long row, long column) {
    return static_cast<std::uint64_t>(row) << kColumnBits | static_cast<std::uint64_t>(column);
  }

  std::uint64_t key() const { return bits_ >> kKeyShift; }
  long row() const { return static_cast<long>(key() >> kColumnBits); }
  long column() const { return static_cast<long>(key() & ((1U << kColumnBits) - 1)); }
  CellKind kind() const { return static_cast<CellKind>(bits_ & kKindMask); }
  std::uint16_t style() const { return static_cast<std::uint16_t>(bits_ >> kStyleShift); }
  void SetStyle(std::uint16_t style) {
    bits_ = (bits_ & ~(std::uint64_t{0xFFFF} << kStyleShift)) | std::uint64_t{style} << kStyleShift;
  }

  double number() const { return number_; }
  std::uint32_t text() const { return text_; }
  bool flag() const { return text_ != 0; }

  void SetEmpty() { SetKind(CellKind::kEmpty); }
  void SetNumber(double value) {
    SetKind(CellKind::kNumber);
    number_ = value;
  }
  // Texts, errors and truth values.
  void SetWord(CellKind kind, std::uint32_t word) {
    SetKind(kind);
    text_ = word;
  }

 private:
  static constexpr unsigned kColumnBits = 14;
  static constexpr unsigned kStyleShift = 4;
  static constexpr unsigned kKeyShift = 20;
  static constexpr std::uint64_t kKindMask = 0xF;

  void SetKind(CellKind kind) { bits_ = (bits_ & ~kKindMask) | static_cast<std::uint64_t>(kind); }

  std::uint64_t bits_ = 0;
  union {
    double number_ = 0;
    std::uint32_t text_;
  };
};

// The cells of a sheet in the order of rows and columns, in blocks, so that memory goes with the cells and
// not with the area they lie in.
//
// A pointer to a cell is valid until a cell is added. Looking up the cell that was looked up last, or the one
// behind it, costs no search.
class CellStore {
 public:
  // Null where no cell is.
  const Cell* Find(long row, long column) const;
  // Made empty with style 0 where none is.
  Cell& At(long row, long column);
  std::size_t Size() const { return size_; }

  // Hands the cells of a row to a visitor, in their order.
  template <class Visitor>
  void VisitRow(long row, Visitor&& visit) const {
    for (Place at = Seek(Cell::Key(row, 0)); at.block < blocks_.size(); ++at.block, at.cell = 0) {
      for (; at.cell < blocks_[at.block].size(); ++at.cell) {
        const Cell& cell = blocks_[at.block][at.cell];
        if (cell.row() != row) return;
        visit(cell);
      }
    }
  }

  // The walk in order: blocks, and the cells of each.
  const std::vector<std::vector<Cell>>& Blocks() const { return blocks_; }

 private:
  struct Place {
    std::size_t block = 0;
    std::size_t cell = 0;
  };

  // The first place whose cell's key is not below the key; behind the last cell of its block if none is.
  Place Seek(std::uint64_t key) const;
  bool Holds(Place place, std::uint64_t key) const {
    return place.block < blocks_.size() && place.cell < blocks_[place.block].size() &&
           blocks_[place.block][place.cell].key() == key;
  }
  Cell& Insert(Place place, std::uint64_t key);

  friend class CellCursor;

  std::vector<std::vector<Cell>> blocks_;
  std::size_t size_ = 0;
  mutable Place last_;
};

// Cells for who asks for places that only go up: none of them is searched for. The cells must not change.
class CellCursor {
 public:
  CellCursor(const CellStore& cells, long row, long column)
      : cells_(cells), at_(cells.Seek(Cell::Key(row, column))) {}

  // Null where no cell is. The place is behind the one asked before.
  const Cell* At(long row, long column) {
    const std::uint64_t key = Cell::Key(row, column);
    const Cell* cell = Here();
    while (cell != nullptr && cell->key() < key) {
      ++at_.cell;
      cell = Here();
    }
    return cell != nullptr && cell->key() == key ? cell : nullptr;
  }

 private:
  // Null behind the last cell.
  const Cell* Here() {
    while (at_.block < cells_.blocks_.size()) {
      const auto& block = cells_.blocks_[at_.block];
      if (at_.cell < block.size()) return &block[at_.cell];
      ++at_.block;
      at_.cell = 0;
    }
    return nullptr;
  }

  const CellStore& cells_;
  CellStore::Place at_;
};

}  // namespace lorv::engine
