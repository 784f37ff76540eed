#include "compress/lzari_tree.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "compress/byte_order.h"

namespace lorv::lzari {
namespace {

constexpr int kMask = kWindow - 1;

// Length and nearness in one number: the greater one is the better match.
int Score(int length, int r, int p) {
  return length << 12 | (kMask - ((r - p) & kMask));
}

}  // namespace

inline std::uint64_t SearchTree::WordAt(int p) const {
  return LoadBig64(&text_[static_cast<std::size_t>(p)]);
}

void SearchTree::InitTree() {
  text_.fill(0);
  std::fill_n(text_.begin(), kWindow - kLongest, static_cast<unsigned char>(' '));
  for (int root = kWindow + 1; root <= kWindow + 256; ++root) SetSon(root, kGreater, kNil);
  std::fill_n(parent_.begin(), kWindow, static_cast<Link>(kNil));
  equal_ = kNil;
}

void SearchTree::PutByte(int s, unsigned char byte) {
  text_[static_cast<std::size_t>(s)] = byte;
  if (s < kLongest - 1) text_[static_cast<std::size_t>(s) + kWindow] = byte;
}

// Equal bytes at the beginning of the strings at `r` and `p`, from 9 on, as 9 of them are known; 60 at most.
int SearchTree::EqualBytes(int r, int p) const {
  for (int at = 9; at < kLongest; at += 8) {
    const std::uint64_t differing = WordAt(r + at) ^ WordAt(p + at);
    if (differing != 0) return std::min(at + std::countl_zero(differing) / 8, kLongest);
  }
  return kLongest;
}

inline void SearchTree::Attach(int r, int p, Side side) {
  SetSon(p, side, r);
  Parent(r) = static_cast<Link>(p);
}

// The new string `r` steps into the place of `p`, its equal.
void SearchTree::Replace(int r, int p) {
  sons_[static_cast<std::size_t>(r)] = sons_[static_cast<std::size_t>(p)];
  Parent(Son(p, kSmaller)) = static_cast<Link>(r);
  Parent(Son(p, kGreater)) = static_cast<Link>(r);
  TakePlace(r, p);
  equal_ = p;
}

inline void SearchTree::TakePlace(int q, int p) {
  const int above = Parent(p);
  Parent(q) = static_cast<Link>(above);
  SetSon(above, Son(above, kGreater) == p ? kGreater : kSmaller, q);
  Parent(p) = kNil;
}

inline void SearchTree::KeepBest(int best) {
  match_length_ = best >> 12;
  match_position_ = kMask - (best & kMask);
}

// Down from the node `p` to the place of `r`.
void SearchTree::Walk(int r, int p) {
  const std::uint64_t key = WordAt(r + 1);
  int best = 0;
  for (;;) {
    const Sons sons = sons_[static_cast<std::size_t>(p)];
    const std::uint64_t other = WordAt(p + 1);
    bool greater = key > other;
    int length = 0;
    if (key != other) {
      length = 1 + std::countl_zero(key ^ other) / 8;
    } else {
      length = EqualBytes(r, p);
      greater = length < kLongest && ByteAt(r + length) > ByteAt(p + length);
    }
    if (length == kLongest) {
      KeepBest(Score(length, r, p));
      return Replace(r, p);
    }
    best = std::max(best, Score(length, r, p));
    const int next = static_cast<int>((greater ? sons >> 16 : sons) & 0xFFFF);
    if (next == kNil) {
      Attach(r, p, greater ? kGreater : kSmaller);
      return KeepBest(best);
    }
    p = next;
  }
}

void SearchTree::InsertNode(int r) {
  sons_[static_cast<std::size_t>(r)] = kNil << 16 | kNil;
  if (equal_ != kNil) {
    const int p = (equal_ + 1) & kMask;
    if (Parent(p) != kNil && WordAt(p) == WordAt(r) && ByteAt(p + 8) == ByteAt(r + 8) &&
        EqualBytes(r, p) == kLongest) {
      KeepBest(Score(kLongest, r, p));
      equal_ = kNil;
      return Replace(r, p);
    }
    equal_ = kNil;
  }
  const int root = kWindow + 1 + ByteAt(r);
  const int top = Son(root, kGreater);
  if (top != kNil) return Walk(r, top);
  Attach(r, root, kGreater);
  KeepBest(0);
}

// The greatest string below `p`, taken out of its place and given the sons of `p`.
int SearchTree::Predecessor(int p) {
  int q = Son(p, kSmaller);
  if (Son(q, kGreater) != kNil) {
    while (Son(q, kGreater) != kNil) q = Son(q, kGreater);
    SetSon(Parent(q), kGreater, Son(q, kSmaller));
    Parent(Son(q, kSmaller)) = Parent(q);
    SetSon(q, kSmaller, Son(p, kSmaller));
    Parent(Son(p, kSmaller)) = static_cast<Link>(q);
  }
  SetSon(q, kGreater, Son(p, kGreater));
  Parent(Son(p, kGreater)) = static_cast<Link>(q);
  return q;
}

void SearchTree::DeleteNode(int p) {
  if (Parent(p) == kNil) return;
  const int smaller = Son(p, kSmaller);
  const int greater = Son(p, kGreater);
  int q = greater == kNil ? smaller : greater;
  if (smaller != kNil && greater != kNil) q = Predecessor(p);
  TakePlace(q, p);
}

}  // namespace lorv::lzari
