#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "TEXPRESSCAL/simd/formula_step.h"
#include "framework/text/text_compare.h"

// Evaluates a program on a block of rows at a time: each step is a loop over the block, which stays in the
// processor's nearest cache, and the loops are compiled for several generations of processors.
namespace lorv {

constexpr std::size_t kBlockRows = 256;

// While a value is read, the one this many rows further on is prefetched. No whole number of pages: values
// at the same place of their pages share a small part of the nearest cache.
constexpr std::size_t kRowsAhead = 640;

// Blocks are evaluated in whole strides of this many rows.
constexpr std::size_t kBlockStride = 8;

// A step that saves a number saves a block of them; formulas nest no deeper than this, or have no loops.
constexpr std::size_t kMaxSavedBlocks = 48;

// Texts are compared this many units at a step.
constexpr std::size_t kTypedStep = 32;

// Rows are read in groups; a word of marks has a bit for each of a group's.
constexpr std::size_t kGroupRows = 64;
using RowMarks = std::array<std::uint64_t, kBlockRows / kGroupRows>;

// What stands in a cell for all rows of a block: a column of numbers, or one number.
struct BlockCell {
  const double* column;  // readable to the end of the last stride; null: the number
  double number;
};

// The size of a cache line in bytes.
constexpr std::size_t kMemoryLine = 64;

// Which rows a branch is evaluated for.
enum class Guard : std::uint8_t { kAbove, kNotAbove, kTruth, kNoTruth };

// Which part of the rows.
enum class Share : std::uint8_t { kNone, kSome, kAll };

// One thread's scratch memory. What is in it holds during one run of a program.
struct alignas(kMemoryLine) BlockScratch {
  double blocks[kMaxSavedBlocks + 1][kBlockRows];
  const double* saved[kMaxSavedBlocks];
  // Of the branches that are being evaluated: the tests, what they ask for, and of choices which share of the
  // rows takes the first.
  const double* guarding[kMaxSavedBlocks];
  Guard guards[kMaxSavedBlocks];
  Share shares[kMaxSavedBlocks];
};

struct BlockJob {
  const Step* steps;
  std::size_t step_count;  // the end among them
  const BlockCell* cells;  // of the variables and the constants
  std::size_t saved_from;  // the first cell for intermediate results
  std::size_t rows;        // at most kBlockRows
  double* results;         // of the rows
  bool streams;            // write the results past the caches; they begin at a line of memory
  std::uint8_t* errors;    // the last error of each row; 0 when the run begins
  BlockScratch* scratch;
  double (*function)(unsigned short kind, double x);  // functions of one number that have no loop
  // The columns of a whole block, of which the values further on are fetched; none where no more are wanted.
  const double* const* columns;
  std::size_t column_count;
};

// Values of which the i-th stands places[i] bytes behind a first one, and where they go.
struct ScatteredValues {
  const std::size_t* places;
  std::size_t count;  // a multiple of `lanes`
  double* values;
  double* readings;
};

// The loops for one generation of processors.
struct BlockLoops {
  const char* name;
  // Runs a program on a block; true if an error was reported for any row.
  bool (*evaluate)(const BlockJob& job);
  // The numbers that values read as: the values themselves where all of them are, else `readings`. Rows whose
  // number does not follow from the value alone are marked in `refused`, whose other marks stay, and are read
  // as anything. `often_thirds` stays with the column, and is set when one of them may be a third.
  const double* (*read)(const double* values, double* readings, std::size_t rows, bool& often_thirds,
                        RowMarks& refused);
  // Reads at most 64 values, in whole strides of blocks, as numbers and divisors: a third as 1 and 3. A bit
  // for each of which the number does not surely follow.
  std::uint64_t (*read_thirds)(const double* values, double* numbers, double* divisors, std::size_t rows);
  std::size_t lanes;  // numbers that one instruction works on
  // Reads values that lie scattered. True, with the numbers that they read as, where these follow from all
  // values alone. The values are copied in any case.
  bool (*read_places)(const char* first, const ScatteredValues& scattered);
  bool (*read_stride)(const char* first, const ScatteredValues& scattered);  // the same for `lanes` values
  // Whether a text is a known one: both are read in steps, of the last one only the bits set in `counts`
  // count.
  bool (*is_typed)(const TCHAR* text, const TCHAR* known, std::size_t last_step, const TCHAR* counts);
  // Writes zeros past the caches.
  void (*stream_no_errors)(int* errors, std::size_t rows);
  // After writing past the caches this is called before another thread may read.
  void (*end_stream)();
};

// Those that this processor can run, the best first; at most `room` of them.
std::size_t UsableBlockLoops(const BlockLoops** loops, std::size_t room);

// The best of them for a program that saves this many intermediate results; null where there is no room for
// them.
const BlockLoops* BestBlockLoops(std::size_t saved_numbers);

extern const BlockLoops kBaselineLoops;
extern const BlockLoops kAvx2Loops;
extern const BlockLoops kAvx512Loops;

}  // namespace lorv
