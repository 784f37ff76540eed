#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "framework/text/text_compare.h"

// Texts that are rewritten in place. All rewriting of formulas goes through one operation, Splice, so that
// the same rules serve a caller's buffer, a growing text, and a text that remembers where each unit was
// typed.
namespace lorv {

// A caller's buffer of unknown size, terminated: the caller has left room for the grown text.
class BufferEdit {
 public:
  explicit BufferEdit(LPTSTR text) : text_(text), length_(TextLength(text)) {}

  LPCTSTR Text() const { return text_; }
  std::size_t Length() const { return length_; }

  // Puts `fresh` in place of `count` units at `at`. `fresh` lies outside this text.
  void Splice(std::size_t at, std::size_t count, TextView fresh) {
    const std::size_t tail = length_ - at - count + 1;  // the terminator included
    std::memmove(text_ + at + fresh.size(), text_ + at + count, tail * sizeof(TCHAR));
    std::memcpy(text_ + at, fresh.data(), fresh.size() * sizeof(TCHAR));
    length_ = length_ - count + fresh.size();
  }

 private:
  LPTSTR text_;
  std::size_t length_;
};

// A text of its own that grows as it needs; short ones take no heap block, and a block once taken is kept.
class GrowingEdit {
 public:
  GrowingEdit() { inline_[0] = 0; }
  GrowingEdit(const GrowingEdit& other) { Assign(other.View()); }
  GrowingEdit& operator=(const GrowingEdit& other) {
    if (this != &other) Assign(other.View());
    return *this;
  }

  LPTSTR Text() { return text_; }
  LPCTSTR Text() const { return text_; }
  std::size_t Length() const { return length_; }
  TextView View() const { return {text_, length_}; }

  void Assign(TextView text) {
    std::memcpy(Overwrite(text.size()), text.data(), text.size() * sizeof(TCHAR));
  }

  // Room for `length` units that the caller writes at once; the terminator stands behind them.
  LPTSTR Overwrite(std::size_t length) {
    if (length > capacity_) Grow(length, 0);
    length_ = length;
    text_[length] = 0;
    return text_;
  }

  void Splice(std::size_t at, std::size_t count, TextView fresh) {
    const std::size_t length = length_ - count + fresh.size();
    if (length > capacity_) Grow(std::max(length, 2 * capacity_), length_ + 1);
    const std::size_t tail = length_ - at - count + 1;
    std::memmove(text_ + at + fresh.size(), text_ + at + count, tail * sizeof(TCHAR));
    std::memcpy(text_ + at, fresh.data(), fresh.size() * sizeof(TCHAR));
    length_ = length;
  }

 private:
  static constexpr std::size_t kInline = 255;

  // Takes a block for `capacity` units and moves `kept` units over.
  void Grow(std::size_t capacity, std::size_t kept) {
    std::vector<TCHAR> block(capacity + 1);
    std::copy_n(text_, kept, block.begin());
    block_.swap(block);
    text_ = block_.data();
    capacity_ = capacity;
  }

  TCHAR inline_[kInline + 1];
  std::vector<TCHAR> block_;
  LPTSTR text_ = inline_;
  std::size_t length_ = 0;
  std::size_t capacity_ = kInline;
};

// A stretch of the text as it was typed.
struct TypedRange {
  int first;
  int behind;
};

// A text whose units know which stretch of the first text they, or what they stand for, were typed as.
class TracedEdit {
 public:
  explicit TracedEdit(TextView text) : text_(text), origins_(text.size()) {
    for (std::size_t i = 0; i < origins_.size(); ++i)
      origins_[i] = {static_cast<int>(i), static_cast<int>(i) + 1};
  }

  LPCTSTR Text() const { return text_.c_str(); }
  std::size_t Length() const { return text_.size(); }

  // What is put in stands for what it replaces; an insertion for the unit before it.
  void Splice(std::size_t at, std::size_t count, TextView fresh) {
    const std::size_t first = count == 0 && at > 0 ? at - 1 : at;
    const TypedRange origin = Range(first, count == 0 ? first + 1 : at + count);
    text_.replace(at, count, fresh);
    const auto place = origins_.begin() + static_cast<std::ptrdiff_t>(at);
    origins_.insert(origins_.erase(place, place + static_cast<std::ptrdiff_t>(count)), fresh.size(), origin);
  }

  // What the units from `first` up to `behind` were typed as; an empty range behind the end is the typed end.
  TypedRange Range(std::size_t first, std::size_t behind) const {
    if (origins_.empty()) return {0, 0};
    if (first >= origins_.size()) return {origins_.back().behind, origins_.back().behind};
    const std::size_t last = std::clamp(behind, first + 1, origins_.size()) - 1;
    return {origins_[first].first, origins_[last].behind};
  }

 private:
  std::basic_string<TCHAR> text_;
  std::vector<TypedRange> origins_;
};

}  // namespace lorv
