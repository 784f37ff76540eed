#pragma once

#include <array>
#include <cstdint>

#include "framework/native/export.h"
#include "framework/text/cstring.h"

namespace lorv {

// What a progress dialog says, whoever shows it: two lines of the operation's, a bar, and a third line with
// the time left, or with the message of cancelling once the user has cancelled.
//
// Units: milliseconds of any clock that only goes forward; the bar in kBarSteps.
// Edges: no steps at all, or more done than there are, fill the bar. Lines of other numbers than 1 and 2 are
//   not taken. What was cancelled stays so.
//
//   ProgressModel model;  model.Begin(kProgressAutoTime, 0);  model.SetProgress(1, 3, 30000);
//   model.Bar()  gives 333, model.Line(2).text  "大约还需 60 秒"
class COMM_LORV_API ProgressModel {
 public:
  static constexpr int kBarSteps = 1000;
  static constexpr int kLines = 3;

  struct ShownLine {
    CString text;
    bool path = false;  // cut in its middle where there is no room
  };

  void Begin(DWORD flags, std::int64_t now);
  void Timer(DWORD action, std::int64_t now);
  void SetProgress(DWORD position, DWORD total, std::int64_t now);
  void SetLine(DWORD line, LPCTSTR text, bool path);
  void SetCancelMessage(LPCTSTR text);
  void Cancel();

  bool Cancelled() const { return cancelled_; }
  int Bar() const { return bar_; }
  // Counted from 0.
  const ShownLine& Line(int line) const { return lines_[static_cast<std::size_t>(line)]; }

 private:
  std::array<ShownLine, kLines> lines_;
  CString cancel_message_;
  std::int64_t begun_ = 0;
  int bar_ = 0;
  bool shows_time_ = false;
  bool cancelled_ = false;
};

// What is said of the time left when `milliseconds` have been used for `position` of `total`; empty in the
// first second, before the first step and behind the last one.
//
//   (30000, 1, 3) gives "大约还需 60 秒"
COMM_LORV_API CString TimeLeftText(std::int64_t milliseconds, DWORD position, DWORD total);

}  // namespace lorv
