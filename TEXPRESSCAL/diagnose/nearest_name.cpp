#include "TEXPRESSCAL/diagnose/nearest_name.h"

#include <algorithm>
#include <array>

#include "framework/text/char_class.h"

// The known name nearest to a mistyped one, by the number of slips: letters changed, added, left out,
// neighbours swapped. A guess is given only where it is nearer than chance: few slips for the length, and
// fewer than the name has letters.

namespace lorv {
namespace {

// Longer names are not compared, and count as far from every other one.
constexpr std::size_t kLongestName = 32;
constexpr int kFar = 100;

// Slips between two names: a table of three rows, each the slips of a beginning of `a` against all of `b`.
int Slips(TextView a, TextView b) {
  if (a.size() > kLongestName || b.size() > kLongestName) return kFar;
  std::array<std::array<int, kLongestName + 1>, 3> rows{};
  for (std::size_t j = 0; j <= b.size(); ++j) rows[0][j] = static_cast<int>(j);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    const auto& before = rows[(i - 1) % 3];
    auto& row = rows[i % 3];
    row[0] = static_cast<int>(i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = ToUpper(a[i - 1]) == ToUpper(b[j - 1]);
      row[j] = std::min({before[j] + 1, row[j - 1] + 1, before[j - 1] + (same ? 0 : 1)});
      const bool swapped =
          i > 1 && j > 1 && ToUpper(a[i - 1]) == ToUpper(b[j - 2]) && ToUpper(a[i - 2]) == ToUpper(b[j - 1]);
      if (swapped) row[j] = std::min(row[j], rows[(i - 2) % 3][j - 2] + 1);
    }
  }
  return rows[a.size() % 3][b.size()];
}

}  // namespace

CString NearestName(TextView typed, const std::vector<CString>& known) {
  // A name of one letter is near to every other one: no guess is better than a wild one.
  int best = typed.size() < 2 ? 0 : typed.size() <= 3 ? 1 : 2;
  CString nearest;
  for (const CString& name : known) {
    const int slips = Slips(typed, name.View());
    // Of equals the first, so the order of the known names decides.
    const bool nearer = nearest.IsEmpty() ? slips <= best : slips < best;
    if (nearer && slips < name.GetLength()) {
      best = slips;
      nearest = name;
    }
  }
  return nearest;
}

}  // namespace lorv
