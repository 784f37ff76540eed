#include "platform/models/progress_model.h"

#include <algorithm>
#include <cmath>

#include "platform/ports/progress_dialog.h"

// The texts and the bar of a progress dialog. The third line is the dialog's own: an estimate by the share
// done, until the message of cancelling takes its place for good.

namespace lorv {
namespace {

constexpr std::size_t kOwnLine = 2;
constexpr std::int64_t kFirstEstimate = 1000;
constexpr std::int64_t kSecondsShown = 90;  // more is shown in minutes

}  // namespace

void ProgressModel::Begin(DWORD flags, std::int64_t now) {
  shows_time_ = (flags & kProgressAutoTime) != 0;
  begun_ = now;
}

void ProgressModel::Timer(DWORD action, std::int64_t now) {
  if (action == kProgressTimerReset) begun_ = now;
}

void ProgressModel::SetProgress(DWORD position, DWORD total, std::int64_t now) {
  // In 64 bits: the product with the steps leaves 32.
  const std::uint64_t done = std::min(position, total);
  bar_ = total == 0 ? kBarSteps : static_cast<int>(done * kBarSteps / total);
  if (shows_time_ && !cancelled_) lines_[kOwnLine].text = TimeLeftText(now - begun_, position, total);
}

void ProgressModel::SetLine(DWORD line, LPCTSTR text, bool path) {
  if (line < 1 || line > kOwnLine) return;
  lines_[line - 1] = {text, path};
}

void ProgressModel::SetCancelMessage(LPCTSTR text) {
  cancel_message_ = text;
  if (cancelled_) lines_[kOwnLine].text = cancel_message_;
}

void ProgressModel::Cancel() {
  cancelled_ = true;
  lines_[kOwnLine].text = cancel_message_;
}

CString TimeLeftText(std::int64_t milliseconds, DWORD position, DWORD total) {
  // An estimate by the first moments would jump about.
  if (milliseconds < kFirstEstimate || position == 0 || position >= total) return {};
  const double left = static_cast<double>(milliseconds) * (total - position) / position / 1000;
  const auto seconds = static_cast<long long>(std::ceil(left));
  CString text;
  if (seconds > kSecondsShown) {
    text.Format(_T("大约还需 %lld 分钟"), (seconds + 59) / 60);
  } else {
    text.Format(_T("大约还需 %lld 秒"), seconds);
  }
  return text;
}

}  // namespace lorv
