#include "comm/match_score.h"

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <cstring>
#include <limits>

#include "comm/AdLorvComm.h"
#include "platform/ports/platform.h"

// How well a stored text matches a typed one: runs of bytes in code page 936 that both have, each worth twice
// its length. The comparison is one of bytes with characters kept whole, as the suite's rankings were always
// made, and a comma turns summing off for the rest of it. The quick refusals leave the score as it is: they
// only skip searches that find nothing.

namespace lorv {
namespace {

constexpr unsigned char kFirstWide = 0x80;

unsigned char ByteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

bool IsWide(std::string_view text, std::size_t at) {
  return ByteAt(text, at) >= kFirstWide;
}

// Every byte from A to Z is lowered, the second of a two-byte character too.
std::string Lowered(std::string narrow) {
  for (char& c : narrow) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  return narrow;
}

// Long runs are compared in blocks.
constexpr std::size_t kBlock = 8;

bool SameBlock(const char* a, const char* b) {
  return std::memcmp(a, b, kBlock) == 0;
}

// What may stand in a text: its single bytes and its pairs behind a wide byte, by a hash. Rules out most
// characters that it does not hold without a search.
class Contents {
 public:
  explicit Contents(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (IsWide(text, i)) {
        if (i + 1 < text.size()) pairs_.set(Hash(text, i));
      } else {
        bytes_.set(ByteAt(text, i));
      }
    }
  }

  // False: the character at `at` has no match of its kind.
  bool MayHold(std::string_view text, std::size_t at) const {
    if (!IsWide(text, at)) return bytes_.test(ByteAt(text, at));
    return at + 1 < text.size() && pairs_.test(Hash(text, at));
  }

 private:
  static constexpr std::size_t kPairs = 512;

  static std::size_t Hash(std::string_view text, std::size_t at) {
    return (ByteAt(text, at) * 37U + ByteAt(text, at + 1) * 5U) % kPairs;
  }

  std::bitset<256> bytes_;
  std::bitset<kPairs> pairs_;
};

// One score of two lowered texts.
class Match {
 public:
  Match(std::string_view a, std::string_view b, bool sum_mode)
      : a_(a),
        b_(b),
        contents_(b),
        sum_mode_(sum_mode),
        commas_matter_(sum_mode && (HoldsComma(a) || HoldsComma(b))) {}

  int Total();

 private:
  static bool HoldsComma(std::string_view text) { return text.find(',') != std::string_view::npos; }

  std::size_t FirstMatch(std::size_t at, bool wide);
  std::size_t CommonLength(std::size_t at, std::size_t other);
  void NoteCommas(std::size_t at, std::size_t other, std::size_t length);
  void Add(std::size_t length);

  std::string_view a_;
  std::string_view b_;
  Contents contents_;
  bool sum_mode_;
  bool commas_matter_;  // a comma that is compared turns the sum mode off
  std::size_t start_ = 0;
  std::int64_t total_ = 0;
};

int Match::Total() {
  for (std::size_t i = 0; i < a_.size(); ++i) {
    const std::size_t at = i;
    const bool wide = IsWide(a_, at);
    if (wide) ++i;
    // A search that finds nothing still meets commas, as long as they matter.
    if (!commas_matter_ && !contents_.MayHold(a_, at)) continue;
    if (const std::size_t length = FirstMatch(at, wide)) Add(length);
  }
  return static_cast<int>(std::min<std::int64_t>(total_, std::numeric_limits<int>::max()));
}

// The length of the first match of what stands at `at`, 0 if there is none; the next search starts behind
// where it begins.
std::size_t Match::FirstMatch(std::size_t at, bool wide) {
  for (std::size_t j = start_; j < b_.size(); ++j) {
    if (IsWide(b_, j) != wide) continue;
    const std::size_t other = j;
    if (wide) ++j;
    if (a_[at] != b_[other] && !commas_matter_) continue;
    const std::size_t length = CommonLength(at, other);
    // Half a character is no match.
    if (length == 0 || (wide && length == 1)) continue;
    // Not behind the whole match: a later character may match within it again, and that counts.
    start_ = j + 1;
    return length;
  }
  return 0;
}

std::size_t Match::CommonLength(std::size_t at, std::size_t other) {
  const std::size_t most = std::min(a_.size() - at, b_.size() - other);
  std::size_t length = 0;
  while (length + kBlock <= most && SameBlock(a_.data() + at + length, b_.data() + other + length)) {
    length += kBlock;
  }
  while (length < most && a_[at + length] == b_[other + length]) ++length;
  // The unit at which the comparison ended was compared, too.
  if (commas_matter_) NoteCommas(at, other, std::min(length + 1, most));
  return length;
}

void Match::NoteCommas(std::size_t at, std::size_t other, std::size_t length) {
  if (!HoldsComma(a_.substr(at, length)) && !HoldsComma(b_.substr(other, length))) return;
  sum_mode_ = false;
  commas_matter_ = false;
}

void Match::Add(std::size_t length) {
  // A text that matches whole goes before one that only holds it.
  const int bonus = (length == a_.size() ? 1 : 0) + (length == b_.size() ? 1 : 0);
  const auto score = static_cast<std::int64_t>(2 * length) + bonus;
  total_ = sum_mode_ ? total_ + score : std::max(total_, score);
}

std::string Narrow(TextView text) {
  return Lowered(PortsInForce().code_page->ToNarrow(text));
}

}  // namespace

MatchScorer::MatchScorer(TextView first) : first_(Narrow(first)) {}

int MatchScorer::Score(TextView second, bool sum_mode) const {
  return Match(first_, Narrow(second), sum_mode).Total();
}

int MatchScorer::ScoreBytes(std::string_view first, std::string_view second, bool sum_mode) {
  const std::string a = Lowered(std::string(first));
  const std::string b = Lowered(std::string(second));
  return Match(a, b, sum_mode).Total();
}

std::vector<RankedMatch> RankMatches(LPCTSTR typed, const CStringArray& stored, int sum_mode, int most) {
  const MatchScorer scorer(typed == nullptr ? TextView() : TextView(typed));
  std::vector<RankedMatch> ranked;
  for (int i = 0; i < stored.GetSize(); ++i) {
    const int score = scorer.Score(stored[i].View(), sum_mode != 0);
    if (score > 0) ranked.push_back({i, score});
  }
  const auto better = [](const RankedMatch& a, const RankedMatch& b) {
    return a.score != b.score ? a.score > b.score : a.index < b.index;
  };
  const std::size_t kept = most < 0 ? ranked.size() : std::min(ranked.size(), static_cast<std::size_t>(most));
  // A list of suggestions shows a few of thousands.
  std::partial_sort(ranked.begin(), ranked.begin() + static_cast<std::ptrdiff_t>(kept), ranked.end(), better);
  ranked.resize(kept);
  return ranked;
}

}  // namespace lorv

int GetMaxMatch(LPCTSTR first, LPCTSTR second, int sum_mode) {
  const auto safe = [](LPCTSTR text) { return text == nullptr ? lorv::TextView() : lorv::TextView(text); };
  return lorv::MatchScorer(safe(first)).Score(safe(second), sum_mode != 0);
}
