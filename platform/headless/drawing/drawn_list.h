#pragma once

#include <cstdint>
#include <vector>

#include "framework/drawing/region.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

namespace lorv {

// One thing that can be seen on a headless surface.
struct Drawn {
  enum class Kind : int { Fill, Gradient, Frame, Line, Polygon, Invert, Text, Image };
  Kind kind = Kind::Fill;
  CRect bounds;  // cut to the clip
  COLORREF colour = 0;
  CString text;
  bool bold = false;

  friend bool operator==(const Drawn&, const Drawn&) = default;
};

// What is to be seen on a surface, in the order drawn. What later fills cover, one alone or several together,
// leaves the list; the same thing drawn again over itself is listed once; of more than kMaxDrawn things the
// oldest leave. So a surface that is painted again and again keeps what can be seen, and the time of a call
// stays as it is.
//
// Units: pixels. One thread at a time.
class DrawnList {
 public:
  static constexpr std::size_t kMaxDrawn = 65536;

  // Forgets all.
  void Resize(SIZE size);
  // `seen`: the parts of its bounds that are drawn. A covering thing hides what is below those.
  void Add(Drawn drawn, Region seen, bool covers);
  // What shows in the rectangle, cut to it and moved; and taking that in at a target, which it covers.
  struct Entry {
    Drawn drawn;
    Region seen;
    bool alive = true;
  };
  std::vector<Entry> Cut(const CRect& from, SIZE by) const;
  void Put(std::vector<Entry> entries, const CRect& target);
  std::vector<Drawn> List() const;
  std::size_t Count() const { return alive_; }

 private:
  void Cover(const CRect& rect);
  bool Cancels(const Drawn& drawn);
  void End(Entry& entry);
  void Index(std::uint32_t number);
  void Compact();
  template <class Visit>
  void EachTile(const CRect& rect, Visit visit);

  CRect all_;
  int tiles_across_ = 0;
  std::vector<std::vector<std::uint32_t>> tiles_;  // the entries that touch each
  std::vector<Entry> entries_;
  std::size_t alive_ = 0;
};

}  // namespace lorv
