#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

// The tables of the system's own toolkit, doing the work of grid_bench without the library.
namespace lorv_bench {

// What both sides hold and show. Texts are made of row and column, so that each side makes its own.
struct Table {
  int rows = 100000;
  int columns = 10;
  int column_width = 80;  // pixels
  int row_height = 24;    // pixels
  int shown_rows = 30;

  int Width() const { return columns * column_width + 60; }
  int Height() const { return (shown_rows + 1) * row_height; }
};

// A text of a take-off table: a member's name in every fourth cell, else a number with three decimals. Gives
// the units written, at most 20; `turn` makes other texts of the same length. Nearly all texts of a column
// differ.
inline int WriteCellText(char16_t* text, int row, int column, int turn) {
  const auto digits = [&](char16_t* to, int number, int least) {
    char16_t reversed[12];
    int count = 0;
    for (; number > 0 || count < least; number /= 10)
      reversed[count++] = static_cast<char16_t>(u'0' + number % 10);
    for (int i = 0; i < count; ++i) to[i] = reversed[count - 1 - i];
    return count;
  };
  if (column % 4 == 0) {
    text[0] = u'\u6881';
    text[1] = turn % 2 == 0 ? u'K' : u'L';
    return 2 + digits(text + 2, row, 6);
  }
  const int whole = digits(text, (row * 7 + column + turn) % 997, 3);
  text[whole] = u'.';
  return whole + 1 + digits(text + whole + 1, (row + 31 * column) % 1000, 3);
}

class GridPeer {
 public:
  GridPeer() = default;
  GridPeer(const GridPeer&) = delete;
  GridPeer& operator=(const GridPeer&) = delete;
  virtual ~GridPeer() = default;

  virtual std::string Name() const = 0;
  virtual void Fill() = 0;              // all cells, the window open
  virtual void SetAgain(int turn) = 0;  // each cell once more, views notified of each
  virtual void InsertRow(int row) = 0;
  virtual void FitColumn(int column) = 0;  // by all of its rows
  virtual void ScrollTo(int row) = 0;      // that row becomes the first one; painted and shown
  virtual void Activate() = 0;  // its window becomes the active one, as a user's click would make it
  // The cell becomes the current one and its editor comes by F2; painted and shown.
  virtual void OpenEditor(int row, int column) = 0;
  virtual void TypeDigit(int digit) = 0;  // into the editor; painted and shown
  // Return puts the text into the cell, which stays the current one; painted and shown.
  virtual void CloseEditor() = 0;
  virtual std::u16string TextAt(int row, int column) = 0;
  virtual void Sort(int column, bool ascending) = 0;
  // The rows whose cell in the column holds the text, whatever its letter case: the others are out of sight
  // from then on. An empty text shows all. How many are to be seen.
  virtual int Filter(int column, const char16_t* text) = 0;
  virtual int CountCells(const char16_t* text) = 0;  // that hold it, whatever its letter case
  // Cells of the column in which the regular expression is found.
  virtual int CountMatches(int column, const char16_t* pattern) = 0;
  virtual void MoveColumn(int from, int to) = 0;  // painted and shown
  // The number by which the other calls know the column at that place.
  virtual int ColumnAt(int place) { return place; }
};

std::vector<std::unique_ptr<GridPeer>> MakeGridPeers(const Table& table);

// Bytes of the heap that are in use; 0 where the system does not say.
std::size_t HeapInUse();

}  // namespace lorv_bench
