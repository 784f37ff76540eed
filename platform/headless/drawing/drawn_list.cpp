#include "platform/headless/drawing/drawn_list.h"

#include <algorithm>
#include <utility>

// What can be seen on a surface, as a list of things drawn. Every thing knows which parts of it show; fills
// drawn later take parts away, and a thing without any leaves the list. Tiles lead from a place to the things
// there, so that a page of thousands of cells costs no search through all of them.

namespace lorv {
namespace {

constexpr int kTile = 64;

// How many entries that are gone may stand between the others.
constexpr std::size_t kMostGone = 256;

// How many things of one tile a new one is compared with.
constexpr std::size_t kMostCompared = 64;

}  // namespace

void DrawnList::Resize(SIZE size) {
  all_ = CRect(CPoint(0, 0), size);
  tiles_across_ = (all_.Width() + kTile - 1) / kTile;
  const int tiles_down = (all_.Height() + kTile - 1) / kTile;
  tiles_.assign(static_cast<std::size_t>(tiles_across_) * static_cast<std::size_t>(tiles_down), {});
  entries_.clear();
  alive_ = 0;
}

template <class Visit>
void DrawnList::EachTile(const CRect& rect, Visit visit) {
  const CRect part = rect & all_;
  if (part.IsRectEmpty() != 0) return;
  for (int y = part.top / kTile; y <= (part.bottom - 1) / kTile; ++y)
    for (int x = part.left / kTile; x <= (part.right - 1) / kTile; ++x)
      visit(tiles_[static_cast<std::size_t>(y) * static_cast<std::size_t>(tiles_across_) +
                   static_cast<std::size_t>(x)]);
}

void DrawnList::End(Entry& entry) {
  entry.alive = false;
  entry.seen.Clear();
  --alive_;
}

void DrawnList::Cover(const CRect& rect) {
  // Nothing below can be seen any more.
  if (rect == all_) {
    Resize(all_.Size());
    return;
  }
  EachTile(rect, [&](std::vector<std::uint32_t>& tile) {
    std::erase_if(tile, [&](std::uint32_t number) {
      Entry& entry = entries_[number];
      if (entry.alive) entry.seen.Remove(rect);
      if (entry.alive && entry.seen.IsEmpty()) End(entry);
      return !entry.alive;
    });
  });
}

// An inversion takes the same one back; any other thing replaces itself. Only the latest are compared, so
// that a crowd of things at one place costs no more than a few.
bool DrawnList::Cancels(const Drawn& drawn) {
  bool cancelled = false;
  EachTile(CRect(drawn.bounds.TopLeft(), SIZE{1, 1}), [&](std::vector<std::uint32_t>& tile) {
    const auto last = tile.rbegin() + static_cast<std::ptrdiff_t>(std::min(tile.size(), kMostCompared));
    const auto same = std::find_if(tile.rbegin(), last, [&](std::uint32_t number) {
      return entries_[number].alive && entries_[number].drawn == drawn;
    });
    if (same == last) return;
    End(entries_[*same]);
    cancelled = drawn.kind == Drawn::Kind::Invert;
  });
  return cancelled;
}

void DrawnList::Add(Drawn drawn, Region seen, bool covers) {
  if (seen.IsEmpty()) return;
  if (covers) {
    for (const CRect& part : seen.Rects()) Cover(part);
  } else if (Cancels(drawn)) {
    return;
  }
  // Before the number of the new one is taken, as compacting renumbers all.
  if (alive_ >= kMaxDrawn || entries_.size() > 2 * alive_ + kMostGone) Compact();
  entries_.push_back({std::move(drawn), std::move(seen), true});
  ++alive_;
  Index(static_cast<std::uint32_t>(entries_.size() - 1));
}

void DrawnList::Index(std::uint32_t number) {
  EachTile(entries_[number].drawn.bounds,
           [number](std::vector<std::uint32_t>& tile) { tile.push_back(number); });
}

// The numbers change: all tiles are filled anew.
void DrawnList::Compact() {
  std::erase_if(entries_, [](const Entry& entry) { return !entry.alive; });
  // A program that only draws lines on lines is bounded, too: the oldest go.
  if (entries_.size() >= kMaxDrawn) entries_.erase(entries_.begin(), entries_.begin() + kMaxDrawn / 4);
  alive_ = entries_.size();
  for (auto& tile : tiles_) tile.clear();
  for (std::size_t i = 0; i < entries_.size(); ++i) Index(static_cast<std::uint32_t>(i));
}

std::vector<DrawnList::Entry> DrawnList::Cut(const CRect& from, SIZE by) const {
  std::vector<Entry> cut;
  for (const Entry& entry : entries_) {
    if (!entry.alive || !entry.seen.Touches(from)) continue;
    Entry copy = entry;
    // Only the parts that showed are moved: what was hidden stays hidden.
    copy.seen.Keep(from);
    copy.seen.Move(by);
    copy.drawn.bounds = (entry.drawn.bounds & from) + by;
    cut.push_back(std::move(copy));
  }
  return cut;
}

void DrawnList::Put(std::vector<Entry> entries, const CRect& target) {
  // The target is replaced as a whole, even where nothing came.
  Cover(target & all_);
  for (Entry& entry : entries) Add(std::move(entry.drawn), std::move(entry.seen), false);
}

std::vector<Drawn> DrawnList::List() const {
  std::vector<Drawn> list;
  list.reserve(alive_);
  for (const Entry& entry : entries_)
    if (entry.alive) list.push_back(entry.drawn);
  return list;
}

}  // namespace lorv
