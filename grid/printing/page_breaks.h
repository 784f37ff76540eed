#pragma once

#include <functional>
#include <vector>

#include "framework/native/export.h"

namespace lorv {

// A stretch that no break goes through where a page has room for it.
struct WholeStretch {
  int first = 0;
  int end = 0;
};

// Where the pages of a line of `total` begin that is parted into rooms of `room`, and where the last one
// ends. `edge_at` gives the edge at or before a place that a break may stand at; a line that is larger than a
// room is broken anywhere. At most `most` pages: what is left over then is not there.
//
// Units: pixels. Edges: nothing to part, or no room: no page.
//
//   PageBreaks(50, 25, 9, [](int at) { return at / 10 * 10; }, {})  gives 0, 20, 40, 50
COMM_LORV_API std::vector<int> PageBreaks(int total, int room, std::size_t most,
                                          const std::function<int(int)>& edge_at,
                                          std::vector<WholeStretch> whole);

}  // namespace lorv
