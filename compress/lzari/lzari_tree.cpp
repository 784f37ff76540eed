#include "compress/lzari/lzari_tree.h"

#include <algorithm>
#include <bit>

#include "compress/lzari/byte_order.h"

// All strings of the window in order: one tree for each first byte, and through all of it a row of neighbours
// with the count of bytes that each shares with the one before. A new string is usually found beside the
// neighbours of the one before it, without a walk down the tree. Which match is the longest, and the nearest
// of equals, follows from the order alone, so it is the one that a plain walk would find.

namespace lorv::lzari {
namespace {

// This many strings are passed in the row before the tree is used instead.
constexpr int kMostSteps = 24;
// Strings that share less have too many others between them.
constexpr std::uint32_t kLeastShared = 3;

constexpr std::uint32_t kWhole = kLongest;

// The bytes of a word that belong to a string if it begins `at` bytes behind the string's beginning.
inline std::uint64_t Comparable(std::uint32_t at) {
  return at <= kWhole - 8 ? ~std::uint64_t{0} : ~std::uint64_t{0} << (at - (kWhole - 8)) * 8;
}

// `a`, or `b` for a choice of 1.
template <class Number>
inline Number Chosen(Number a, Number b, std::uint32_t choice) {
  return a ^ ((a ^ b) & (Number{0} - choice));
}

// The first byte where two words differ, in the order of the text.
inline std::uint32_t DifferingByte(std::uint64_t a, std::uint64_t b) {
  return static_cast<std::uint32_t>(std::countl_zero(a ^ b)) / 8;
}

}  // namespace

inline std::uint64_t SearchTree::WordAt(Index p) const {
  return LoadBig64(&text_[p]);
}

void SearchTree::InitTree() {
  text_.fill(0);
  std::fill_n(text_.begin(), kWindow - kLongest, static_cast<unsigned char>(' '));
  son_.fill({kNone, kNone});
  son_[kNil] = {0, 0};  // has sons, so that nothing is put below it
  next_.fill({kNone, kNone});
  parent_.fill(kNone);
  shared_.fill(0);
  beside_ = {kNobody, kNobody};
  last_ = equal_ = kNil;
}

// Equal bytes at the beginning of the strings at `r` and `p`, of which `known` are; 60 at most.
inline SearchTree::Index SearchTree::EqualBytes(Index r, Index p, Index known) const {
  for (Index at = known; at < kWhole; at += 8) {
    const std::uint64_t a = WordAt(r + at);
    const std::uint64_t b = WordAt(p + at);
    if (a != b) return std::min(at + DifferingByte(a, b), kWhole);
  }
  return kWhole;
}

// Between its neighbours the string `r` has one place: one of them has no son there.
inline void SearchTree::Attach(Index r, Pair<Neighbour> beside) {
  const auto smaller = static_cast<Link>(beside[kSmaller].node);
  const auto greater = static_cast<Link>(beside[kGreater].node);
  const auto link = static_cast<Link>(r);
  // Where there is no smaller one: the empty link always has a son.
  const Index side = son_[smaller][kGreater] == kNil ? kGreater : kSmaller;
  const auto p = static_cast<Link>(Chosen<Index>(greater, smaller, side));
  son_[p][side] = link;
  son_[r] = {kNone, kNone};
  parent_[r] = p;
  next_[r] = {smaller, greater};
  next_[smaller][kGreater] = link;
  next_[greater][kSmaller] = link;
  shared_[r] = static_cast<std::uint8_t>(beside[kSmaller].shared);
  shared_[greater] = static_cast<std::uint8_t>(beside[kGreater].shared);
  beside_ = beside;
}

// The first string of a tree.
inline void SearchTree::Plant(Index r, Index root) {
  son_[root][kGreater] = static_cast<Link>(r);
  son_[r] = next_[r] = {kNone, kNone};
  parent_[r] = static_cast<Link>(root);
  shared_[r] = 0;
  beside_ = {kNobody, kNobody};
}

// `q` steps into the place of `p` below its parent.
inline void SearchTree::TakePlace(Index q, Index p) {
  const Index above = parent_[p];
  parent_[q] = static_cast<Link>(above);
  son_[above][son_[above][kGreater] == p ? kGreater : kSmaller] = static_cast<Link>(q);
  parent_[p] = kNone;
}

// The new string `r` steps into all places of `p`, its equal.
void SearchTree::Replace(Index r, Index p) {
  const auto link = static_cast<Link>(r);
  son_[r] = son_[p];
  next_[r] = next_[p];
  shared_[r] = shared_[p];
  for (const Side side : {kSmaller, kGreater}) {
    parent_[son_[p][side]] = link;
    next_[next_[p][side]][1 - side] = link;
  }
  TakePlace(r, p);
  next_[p][kGreater] = link;
  equal_ = p;
}

// Between `passed`, the last string found before `r` on its way to that side, and `next`, the first behind
// it.
inline void SearchTree::AttachBetween(Index r, Index side, Neighbour passed, Neighbour next) {
  const Neighbour smaller = {Chosen(next.node, passed.node, side), Chosen(next.shared, passed.shared, side)};
  const Neighbour greater = {Chosen(passed.node, next.node, side), Chosen(passed.shared, next.shared, side)};
  Attach(r, {smaller, greater});
}

// Looks for the neighbours of `r` along the row, from `p` on to that side. `length`: what `p` shares with
// `r`. False if they are too far; nothing has been done then.
inline bool SearchTree::WalkRow(Index r, Index p, Index side, Index length) {
  // Turned over, the order to the smaller side is that to the greater one.
  const std::uint64_t turned = std::uint64_t{side} - 1;
  for (int steps = kMostSteps; steps > 0; --steps) {
    // All strings from `p` to `r` share these bytes, so the word behind them puts them in order.
    const std::uint64_t mask = Comparable(length);
    const std::uint64_t key = (WordAt(r + length) ^ turned) & mask;
    std::uint64_t word = (WordAt(p + length) ^ turned) & mask;
    std::uint64_t passed = 0;
    Index next = p;
    Index shared = 0;
    bool before = true;
    do {
      p = next;
      passed = word;
      next = next_[p][side];
      shared = shared_[Chosen(p, next, side)];
      word = (WordAt(next + length) ^ turned) & mask;
      before = (static_cast<int>(shared >= length) & static_cast<int>(word < key)) != 0;
    } while (before && --steps > 0);
    if (before) return false;
    const Neighbour last = {p, length + DifferingByte(passed, key)};
    if (shared < length || word != key) {
      AttachBetween(r, side, last, {next, shared < length ? shared : length + DifferingByte(word, key)});
      return true;
    }
    shared = EqualBytes(r, next, std::min(length + 8, kWhole));
    if (shared == kWhole) {
      Replace(r, next);
      return true;
    }
    if ((text_[r + shared] > text_[next + shared]) != (side == kGreater)) {
      AttachBetween(r, side, last, {next, shared});
      return true;
    }
    p = next;
    length = shared;
  }
  return false;
}

// Begins at a neighbour of the string before, one byte further on, or at the heir of what stood there. One
// byte less is shared there, and the order stays, as long as neither string begins anew at the window's
// start.
inline bool SearchTree::InsertNearby(Index r) {
  const Index equal = equal_;
  const Index nearer = beside_[kGreater].shared > beside_[kSmaller].shared ? kGreater : kSmaller;
  Index p = equal == kNil ? beside_[nearer].node : equal;
  const Index length = (equal == kNil ? beside_[nearer].shared : kWhole) - 1;
  equal_ = kNil;
  if (length + 1 < kLeastShared || r != last_ + 1 || p == kMask) return false;
  for (++p; parent_[p] == kNil && p != kNil;) p = next_[p][kGreater];
  if (p == kNil) return false;
  if (equal == kNil) return WalkRow(r, p, 1 - nearer, length);
  if (text_[r + length] == text_[p + length]) {
    Replace(r, p);
    return true;
  }
  return WalkRow(r, p, text_[r + length] > text_[p + length] ? kGreater : kSmaller, length);
}

// Looks for the neighbours of `r` on the way down its tree.
void SearchTree::WalkTree(Index r) {
  const Index root = kWindow + 1 + text_[r];
  Index p = son_[root][kGreater];
  if (p == kNil) return Plant(r, root);
  Pair<Index> beside = {kNil, kNil};
  const std::uint64_t key = WordAt(r);
  std::uint64_t other = WordAt(p);
  do {
    // The direction cannot be predicted, so there is no branch; both ways are prepared instead.
    const Pair<Index> sons = {son_[p][kSmaller], son_[p][kGreater]};
    const std::uint64_t smaller_word = WordAt(sons[kSmaller]);
    const std::uint64_t greater_word = WordAt(sons[kGreater]);
    auto greater = static_cast<Index>(key > other);
    if (key == other) [[unlikely]] {
      const Index length = EqualBytes(r, p, 8);
      if (length == kWhole) return Replace(r, p);
      greater = text_[r + length] > text_[p + length] ? 1 : 0;
    }
    other = Chosen(smaller_word, greater_word, greater);
    beside = {Chosen(beside[0], p, greater), Chosen(p, beside[1], greater)};
    p = Chosen(sons[kSmaller], sons[kGreater], greater);
  } while (p != kNil);
  Pair<Neighbour> neighbours = {kNobody, kNobody};
  for (const Side side : {kSmaller, kGreater}) {
    if (beside[side] != kNil) neighbours[side] = {beside[side], EqualBytes(r, beside[side], 1)};
  }
  Attach(r, neighbours);
}

void SearchTree::InsertNode(int r) {
  const auto at = static_cast<Index>(r);
  if (!InsertNearby(at)) WalkTree(at);
  last_ = at;
}

// The least distance of the strings above `r` in its tree that share `length` bytes with it.
SearchTree::Index SearchTree::NearestAbove(Index r, Index length) const {
  Pair<bool> open = {beside_[kSmaller].shared == length, beside_[kGreater].shared == length};
  Index nearest = kWindow;
  Index below = r;
  for (Index p = parent_[r]; p < kWindow && (open[kSmaller] || open[kGreater]); p = parent_[p]) {
    const Side side = son_[p][kGreater] == below ? kSmaller : kGreater;
    below = p;
    if (!open[side]) continue;
    // The higher, the less is shared, on either side.
    open[side] = EqualBytes(r, p, 0) >= length;
    if (open[side]) nearest = std::min(nearest, (r - p) & kMask);
  }
  return nearest;
}

void SearchTree::FindMatch(int r) {
  const auto at = static_cast<Index>(r);
  if (equal_ != kNil) {
    // An equal string has been replaced by this one; it was the only one of its kind in the tree.
    match_length_ = kLongest;
    match_position_ = static_cast<int>((at - equal_) & kMask);
    return;
  }
  const Index length = std::max(beside_[kSmaller].shared, beside_[kGreater].shared);
  match_length_ = static_cast<int>(length);
  if (length <= kThreshold) return;
  // Both neighbours lie on the way down; who else shares as much stands beyond them in the row.
  bool more = false;
  Index nearest = kWindow;
  for (const Side side : {kSmaller, kGreater}) {
    if (beside_[side].shared != length) continue;
    const Index p = beside_[side].node;
    nearest = std::min(nearest, (at - p) & kMask);
    more = more || shared_[side == kSmaller ? p : next_[p][kGreater]] >= length;
  }
  match_position_ = static_cast<int>(more ? NearestAbove(at, length) : nearest);
}

// The greatest string below `p`, its smaller neighbour, steps into its place.
void SearchTree::TakePredecessor(Index p) {
  const Index q = next_[p][kSmaller];
  const auto link = static_cast<Link>(q);
  const Pair<Link> sons = son_[p];
  const Link left = son_[q][kSmaller];
  const Link above = parent_[q];
  // A son of `p` keeps its own smaller son; all is written either way, as `p` needs its links no longer.
  const Index is_son = q == sons[kSmaller] ? 1 : 0;
  son_[above][kGreater] = left;
  parent_[left] = static_cast<Link>(Chosen<Index>(above, q, is_son));
  son_[q] = {static_cast<Link>(Chosen<Index>(sons[kSmaller], left, is_son)), sons[kGreater]};
  parent_[sons[kSmaller]] = link;
  parent_[sons[kGreater]] = link;
  TakePlace(q, p);
}

void SearchTree::DeleteNode(int r) {
  const auto p = static_cast<Index>(r);
  if (parent_[p] == kNil) return;
  const auto [smaller, greater] = next_[p];
  next_[p][kGreater] = kNone;
  next_[smaller][kGreater] = greater;
  next_[greater][kSmaller] = smaller;
  // The strings are in order, so two of them share the least of what the neighbours between them share.
  shared_[greater] = std::min(shared_[greater], shared_[p]);
  const auto [below, above] = son_[p];
  if (below != kNil && above != kNil) return TakePredecessor(p);
  TakePlace(above == kNil ? below : above, p);
}

}  // namespace lorv::lzari
