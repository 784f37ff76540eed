#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "framework/values/variant.h"

namespace lorv {

// Values side by side in one piece of memory, with their texts behind them: the cells of a table of which
// nobody has asked for more than that. A number takes 10 bytes, a text as much and its units; each by itself
// would take a call of the heap, and twice to four times the memory.
//
// Units: values count from 0, texts in 16-bit units (zero units inside count).
// Edges: holds what Takes() answers true for: the plain kinds, and texts of at most kMostUnits. At most
//   kMostValues. The indices given must be those of values.
// Result: a lack of memory raises std::bad_alloc; the values are then as they were.
// What it holds is its own. A text handed out stands until the next change. One thread at a time.
//
//   PackedValues values;  values.Resize(2);  values.Set(1, _variant_t(_T("C30")));  values.TextOf(1)  gives
//   C30
class PackedValues {
 public:
  static constexpr int kMostValues = 16384;
  static constexpr unsigned kMostUnits = 4096;

  static bool Takes(const VARIANT& value);

  int Count() const { return memory_ == nullptr ? 0 : static_cast<int>(HeadOf().count); }
  bool IsEmpty() const { return Count() == 0; }
  // Room for so many values and for texts of so many units, so that adding them moves nothing.
  void Reserve(int values, unsigned units);
  // Puts empty values to the end, or takes values off it.
  void Resize(int count);
  void Add(const VARIANT& value);
  void Set(int index, const VARIANT& value);
  // Takes the value out and puts it in again, so that it has the index `to`.
  void Move(int from, int to);
  void Clear() { memory_.reset(); }

  VARTYPE TypeOf(int index) const;
  // Of a VT_BSTR; empty for any other, and for one without a text.
  TextView TextOf(int index) const;
  _variant_t Copy(int index) const;

 private:
  struct Head {
    std::uint32_t bytes;  // of the whole memory
    std::uint32_t used;   // of it; texts are put behind that
    std::uint32_t count;
    std::uint32_t room;  // for so many values
  };
  struct Freeing {
    void operator()(std::byte* memory) const { std::free(memory); }
  };
  using Memory = std::unique_ptr<std::byte, Freeing>;

  // Where a text stands in the memory, in bytes (0: there is no text at all), and its units.
  struct TextPlace {
    std::uint32_t at;
    std::uint32_t units;
  };
  static std::size_t BytesBefore(std::uint32_t room) { return sizeof(Head) + room * kSlotBytes; }

  Head& HeadOf() const { return *reinterpret_cast<Head*>(memory_.get()); }
  std::span<std::uint64_t> Payloads() const;
  std::span<std::uint16_t> Types() const;
  TextPlace PlaceOf(int index) const;
  std::size_t BytesOfTexts() const;
  void Rebuild(std::uint32_t room, std::size_t bytes_of_texts);
  void MakeRoom(std::size_t bytes);
  void SetText(int index, TextView text);

  static constexpr std::size_t kSlotBytes = sizeof(std::uint64_t) + sizeof(std::uint16_t);

  Memory memory_;
};

}  // namespace lorv
