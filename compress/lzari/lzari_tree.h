#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "compress/lzari/lzari_format.h"

namespace lorv::lzari {

// The window of the text being packed, and the binary trees of the strings in it, one tree a first byte.
//
// Which of several equally long matches is found depends on the very shape of the trees, so every link is
// made as the plain algorithm makes it. What is faster here is the way to a string's place. The strings of a
// tree also form a row in their order, each with the count of bytes it shares with the one before it. Between
// its neighbours in that row a string has one place only in a tree of any shape; so finding the neighbours is
// finding the place. And they are mostly near: what was next to a string, one byte further on, is close to
// the next string.
class SearchTree {
 public:
  // Zeros and spaces in the window, no string in the trees.
  void InitTree();

  // Puts the string at `r` into its tree. A string equal in all 60 bytes is replaced.
  void InsertNode(int r);

  // Sets the best match of the string at `r`, the last one put in, among the strings above it in its tree:
  // the longest, and of equally long ones the nearest. Under a length of 3 the position means nothing.
  void FindMatch(int r);

  // Takes the string at `p` out; nothing if it is not in.
  void DeleteNode(int p);

  // A byte of text at `s`, and behind the window's end if a string may run over it.
  void PutByte(int s, unsigned char byte) {
    text_[static_cast<std::size_t>(s)] = byte;
    if (s < kLongest - 1) text_[static_cast<std::size_t>(s) + kWindow] = byte;
  }
  // A byte at a place of the first 60, which may lie behind the window's end.
  void PutAhead(int at, unsigned char byte) { text_[static_cast<std::size_t>(at)] = byte; }
  unsigned char ByteAt(int r) const { return text_[static_cast<std::size_t>(r)]; }

  int MatchLength() const { return match_length_; }
  int MatchPosition() const { return match_position_; }

 private:
  using Link = std::uint16_t;
  using Index = std::uint32_t;
  enum Side : Index { kSmaller = 0, kGreater = 1 };

  // What stands on either side of a string.
  template <class Value>
  using Pair = std::array<Value, 2>;

  struct Neighbour {
    Index node;    // kNil: none, the row ends
    Index shared;  // equal bytes at the beginning
  };
  static constexpr Neighbour kNobody = {kNil, 0};

  // Compared are words of 8 bytes from any byte of a string on, and one may begin behind the window.
  static constexpr int kSlack = 9;

  static constexpr Link kNone = kNil;
  static constexpr Index kMask = kWindow - 1;

  std::uint64_t WordAt(Index p) const;
  Index EqualBytes(Index r, Index p, Index known) const;
  bool InsertNearby(Index r);
  bool WalkRow(Index r, Index p, Index side, Index length);
  void WalkTree(Index r);
  void Attach(Index r, Pair<Neighbour> beside);
  void AttachBetween(Index r, Index side, Neighbour passed, Neighbour next);
  void Plant(Index r, Index root);
  void Replace(Index r, Index p);
  void TakePlace(Index q, Index p);
  void TakePredecessor(Index p);
  Index NearestAbove(Index r, Index length) const;

  std::array<unsigned char, kWindow + kLongest - 1 + kSlack> text_{};
  int match_position_ = 0;
  int match_length_ = 0;
  std::array<Pair<Link>, kWindow + 257> son_{};  // the 256 roots lie behind the nodes, with greater sons only
  std::array<Pair<Link>, kWindow + 1>
      next_{};                              // in the row; the greater one of a replaced string is its heir
  std::array<Link, kWindow + 1> parent_{};  // kNil: not in a tree
  std::array<std::uint8_t, kWindow + 1>
      shared_{};              // equal bytes at the beginning, with the smaller neighbour
  Index last_ = kNil;         // the string last put in; kNil: none
  Pair<Neighbour> beside_{};  // its neighbours
  Index equal_ = kNil;        // or what it has replaced
};

}  // namespace lorv::lzari
