#include "platform/posix/services/terminal_progress.h"

#include <algorithm>
#include <cstdint>

#include "framework/text/utf8.h"

// Progress on one line of the terminal, written over itself. It writes only when the per cent or the text
// changes, as a calculation reports every step.

namespace lorv {
namespace {

constexpr std::uint64_t kWhole = 100;
// Clears what a longer line has left behind.
constexpr const char* kClearToEnd = "\x1b[K";

std::string Utf8Of(LPCTSTR text) {
  return text == nullptr ? std::string() : TextToUtf8(text);
}

}  // namespace

void TerminalProgress::SetTitle(LPCTSTR title) {
  title_ = Utf8Of(title);
}

void TerminalProgress::Open(DWORD /*flags*/) {
  open_ = true;
  Print();
}

void TerminalProgress::SetProgress(DWORD position, DWORD total) {
  const std::uint64_t done = total == 0 ? kWhole : std::min(position * kWhole / total, kWhole);
  if (static_cast<int>(done) == percent_) return;
  percent_ = static_cast<int>(done);
  Print();
}

void TerminalProgress::SetLine(DWORD line, LPCTSTR text, bool /*compact_path*/) {
  if (line != 1) return;
  line_ = Utf8Of(text);
  Print();
}

void TerminalProgress::Close() {
  if (!open_) return;
  std::fputs("\n", out_);
  std::fflush(out_);
  open_ = false;
}

void TerminalProgress::Print() {
  if (!open_) return;
  std::fprintf(out_, "\r%s %3d%% %s%s", title_.c_str(), percent_, line_.c_str(), kClearToEnd);
  std::fflush(out_);
}

}  // namespace lorv
