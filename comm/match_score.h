#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/collections/string_array.h"
#include "framework/text/cstring.h"

// The fuzzy score of GetMaxMatch, made for ranking many stored texts against one that the user types.
//
// Units: bytes of the narrow code page, in which a Chinese character is two.
// Edges: as GetMaxMatch. A score that leaves 32 bits stays at the greatest int.
// No state is changed by scoring: any thread, while no other changes the ports.
namespace lorv {

// One text prepared for being the first argument of GetMaxMatch many times over.
class COMM_LORV_API MatchScorer {
 public:
  explicit MatchScorer(TextView first);

  // What GetMaxMatch(first, second, sum_mode) gives.
  int Score(TextView second, bool sum_mode) const;
  // The same on narrow text, of any code page.
  static int ScoreBytes(std::string_view first, std::string_view second, bool sum_mode);

 private:
  std::string first_;  // capitals lowered
};

struct RankedMatch {
  int index;  // in the list that was ranked
  int score;
};

// The stored texts by their score against `typed`, the best first, equal ones in the order of the list; those
// that score 0 are left out. At most `most` of them (negative: all).
//
//   RankMatches(_T("KL"), list of "LL1", "kl2", "板", 0, 10)  gives index 1 (score 5), then 0 (score 2)
COMM_LORV_API std::vector<RankedMatch> RankMatches(LPCTSTR typed, const CStringArray& stored, int sum_mode,
                                                   int most);

}  // namespace lorv
