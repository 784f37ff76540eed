#pragma once

#include <memory>
#include <string>
#include <vector>

#include "grid/basic/basic_grid.h"

namespace lorv::tool {

// The suite's grid with a cell of every kind, as an estimator would meet it.
struct SampleGrid {
  std::string name;   // of its picture, without an ending
  std::string title;  // for the terminal
  bool chinese;
};

// In Chinese and in English.
std::vector<SampleGrid> SampleGrids();

// Pixels that the filled grid takes at 96 dots per inch.
constexpr int kSampleGridWidth = 926;
constexpr int kSampleGridHeight = 240;

// Fills a grid whose window is shown: columns under a header of two lines, rows, merged cells, a hidden row,
// a selection with a current cell in it.
void FillSampleGrid(CBCGPBasicGridCtrl& grid, const SampleGrid& sample);

}  // namespace lorv::tool
