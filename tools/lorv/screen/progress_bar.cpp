#include "tools/lorv/screen/progress_bar.h"

#include <algorithm>
#include <ostream>
#include <string>

// The progress bar. It is drawn on the error stream, since standard output may be a table, and at most ten
// times a second, since it is asked to for every row.

namespace lorv::tool {
namespace {

constexpr auto kBetween = std::chrono::milliseconds(100);
constexpr int kWidest = 60;
constexpr int kNumbers = 10;  // brackets, blanks and "100 %"

}  // namespace

ProgressBar::ProgressBar(Console& console, std::uint64_t size)
    : console_(console), size_(console.err_is_terminal ? size : 0), next_(Clock::now() + console.bar_after) {}

void ProgressBar::Show(std::uint64_t done) {
  done_ = done;
  if (size_ == 0 || Clock::now() < next_) return;
  next_ = Clock::now() + kBetween;
  drawn_ = true;
  // One column stays free: many terminals begin a new line when the last one is filled.
  const int width = std::clamp(console_.columns - kNumbers - 1, 10, kWidest);
  // More may be done than was known at the start, as files grow.
  const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(size_));
  const auto filled = static_cast<std::size_t>(share * width);
  std::string bar(filled, '#');
  bar.resize(static_cast<std::size_t>(width), '.');
  console_.err << "\r[" << bar << "] " << static_cast<int>(share * 100) << " %" << std::flush;
}

ProgressBar::~ProgressBar() {
  if (!drawn_) return;
  const auto width =
      static_cast<std::size_t>(std::max(0, std::min(console_.columns - 1, kWidest + kNumbers)));
  // Blanks over it: what is printed next begins at the left edge.
  console_.err << "\r" << std::string(width, ' ') << "\r" << std::flush;
}

}  // namespace lorv::tool
