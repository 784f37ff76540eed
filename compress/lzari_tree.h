#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "compress/lzari_format.h"

namespace lorv::lzari {

// The window of the text being packed, and the binary trees of the strings in it, one tree a first byte.
//
// Which of several equally long matches is found depends on the very shape of the trees, so every link is
// made as the plain algorithm makes it. What is faster here is the way down. Tables remember, for the first
// three and the first eight bytes of a string, the topmost node that shares them. Every node above that one
// shares fewer bytes, and so cannot give the best match; the walk may begin there. An entry that is no longer
// certain is dropped, and the next walk that begins higher finds it again.
class SearchTree {
 public:
  // Zeros and spaces in the window, no string in the trees.
  void InitTree();

  // Puts the string at `r` into its tree, and sets the best match among the strings met on the way: the
  // longest, and of equally long ones the nearest. A string equal in all 60 bytes is replaced.
  // Match length 0: no match of 3 or more.
  void InsertNode(int r);

  // Takes the string at `p` out; nothing if it is not in.
  void DeleteNode(int p);

  // A byte of text at `s`, and behind the window's end if a string may run over it.
  void PutByte(int s, unsigned char byte);
  // A byte at a place of the first 60, which may lie behind the window's end.
  void PutAhead(int at, unsigned char byte) { text_[static_cast<std::size_t>(at)] = byte; }
  unsigned char ByteAt(int r) const { return text_[static_cast<std::size_t>(r)]; }

  int MatchLength() const { return match_length_; }
  int MatchPosition() const { return match_position_; }

 private:
  using Link = std::uint16_t;
  // Both sons in one word: the smaller strings in the low half, the greater in the high half.
  using Sons = std::uint32_t;
  enum Side { kSmaller = 0, kGreater = 1 };
  // Compared are words of 8 bytes behind the first byte, so the last one reads 5 bytes too far.
  static constexpr int kSlack = 5;

  std::uint64_t WordAt(int p) const;
  int EqualBytes(int r, int p) const;
  void Walk(int r, int p);
  void Attach(int r, int p, Side side);
  void Replace(int r, int p);
  void TakePlace(int q, int p);
  int Predecessor(int p);
  void KeepBest(int best);

  int Son(int p, Side side) const {
    return static_cast<int>(sons_[static_cast<std::size_t>(p)] >> (16 * side) & 0xFFFF);
  }
  void SetSon(int p, Side side, int son) {
    Sons& sons = sons_[static_cast<std::size_t>(p)];
    sons = (sons & 0xFFFF0000U >> (16 * side)) | static_cast<Sons>(son) << (16 * side);
  }
  Link& Parent(int p) { return parent_[static_cast<std::size_t>(p)]; }

  std::array<unsigned char, kWindow + kLongest - 1 + kSlack> text_{};
  int match_position_ = 0;
  int match_length_ = 0;
  std::array<Sons, kWindow + 257> sons_{};  // the 256 roots lie behind the nodes and have greater sons only
  std::array<Link, kWindow + 1> parent_{};
  int equal_ = kNil;  // what the last inserted string has replaced, if it has
};

}  // namespace lorv::lzari
