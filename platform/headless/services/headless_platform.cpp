#include "platform/headless/services/headless_platform.h"

#include <chrono>

#include "platform/headless/services/headless_progress.h"
#include "platform/text/ini_text.h"

// The other ports in memory: clock, process, settings, dialogs, shell, progress. Each notes what it was asked
// and gives the answer that a test has set. The clock has no zones: local time is universal time.

namespace lorv {
namespace {

using Units = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
constexpr std::chrono::sys_days kFirstDay{std::chrono::year{1601} / 1 / 1};

class RecordedProgress : public ProgressDialog {
 public:
  explicit RecordedProgress(HeadlessShell& shell) : shell_(shell) {}
  // Noted, so that a test sees a dialog that ended without Close.
  ~RecordedProgress() override { shell_.progress.push_back(_T("gone")); }

  void SetTitle(LPCTSTR title) override { Note(_T("title %s"), title); }
  bool SetAnimation(LPCTSTR module, UINT resource) override {
    Note(_T("animation %s %u"), module, resource);
    return shell_.has_animation;
  }
  void Open(DWORD flags) override { Note(_T("open %u"), flags); }
  void SetCancelMessage(LPCTSTR message) override { Note(_T("cancel message %s"), message); }
  void Timer(DWORD action) override { Note(_T("timer %u"), action); }
  void SetProgress(DWORD position, DWORD total) override { Note(_T("progress %u %u"), position, total); }
  void SetLine(DWORD line, LPCTSTR text, bool compact_path) override {
    Note(_T("line %u %s compact %d"), line, text, compact_path ? 1 : 0);
  }
  bool HasUserCancelled() override { return shell_.user_cancelled; }
  void Close() override { Note(_T("close")); }

 private:
  template <class... Args>
  void Note(LPCTSTR format, const Args&... args) {
    CString note;
    note.Format(format, args...);
    shell_.progress.push_back(note);
  }

  HeadlessShell& shell_;
};

}  // namespace

SYSTEMTIME HeadlessClock::ToLocal(std::int64_t time) {
  // Times are counted from 1601; before that there are none.
  const std::chrono::sys_time<Units> at = kFirstDay + Units(time < 0 ? 0 : time);
  const auto day = std::chrono::floor<std::chrono::days>(at);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(std::chrono::floor<std::chrono::milliseconds>(at - day));
  SYSTEMTIME local{};
  local.wYear = static_cast<WORD>(static_cast<int>(date.year()));
  local.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
  local.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding());
  local.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
  local.wHour = static_cast<WORD>(clock.hours().count());
  local.wMinute = static_cast<WORD>(clock.minutes().count());
  local.wSecond = static_cast<WORD>(clock.seconds().count());
  local.wMilliseconds = static_cast<WORD>(clock.subseconds().count());
  return local;
}

std::int64_t HeadlessClock::FromLocal(const SYSTEMTIME& local) {
  const std::chrono::year_month_day date{std::chrono::year(local.wYear), std::chrono::month(local.wMonth),
                                         std::chrono::day(local.wDay)};
  if (!date.ok() || std::chrono::sys_days(date) < kFirstDay) return 0;
  const auto at = std::chrono::sys_days(date) + std::chrono::hours(local.wHour) +
                  std::chrono::minutes(local.wMinute) + std::chrono::seconds(local.wSecond) +
                  std::chrono::milliseconds(local.wMilliseconds);
  return std::chrono::duration_cast<Units>(at - kFirstDay).count();
}

HeadlessProcess::HeadlessProcess() {
  modules[nullptr] = _T("C:\\Suite\\suite.exe");
}

CString HeadlessProcess::ModulePath(HINSTANCE module, int limit) {
  const auto found = modules.find(module);
  // The system cuts a path to the caller's room, which the end of the text shares.
  return found == modules.end() ? CString() : found->second.Left(limit - 1);
}

std::optional<CString> HeadlessProcess::VersionText(LPCTSTR path, LPCTSTR block) {
  const CString key = CString(path) + _T(" ") + block;
  asked.push_back(_T("version ") + key);
  const auto found = versions.find(key);
  if (found == versions.end()) return std::nullopt;
  return found->second;
}

bool HeadlessProcess::CallLoadedModule(LPCTSTR module, int ordinal, void* record) {
  CString note;
  note.Format(_T("call %s %d"), module, ordinal);
  asked.push_back(note);
  if (loaded_module != module) return false;
  const BYTE* const bytes = static_cast<const BYTE*>(record);
  // Copied: the caller's record is gone by the time a test looks.
  records.emplace_back(bytes, bytes + record_size);
  if (on_call != nullptr) on_call(record);
  return true;
}

int HeadlessSettings::FileValue(LPCTSTR file, LPCTSTR section, LPCTSTR key, int fallback) {
  CString note;
  note.Format(_T("%s [%s] %s default %d"), file, section, key, fallback);
  asked.push_back(note);
  const auto bytes = files_.ReadAll(file);
  if (!bytes) return fallback;
  return IniInteger(IniTextOf(*bytes, code_page_).View(), section, key, fallback);
}

int HeadlessSettings::ProfileValue(LPCTSTR section, LPCTSTR key, int fallback) {
  const auto found = profile.find(CString(section) + _T("\\") + key);
  return found == profile.end() ? fallback : found->second;
}

int HeadlessDialogs::ShowMessage(const MessageRequest& request) {
  messages.push_back(request);
  return answer;
}

int HeadlessShell::Operate(const FileOperation& operation) {
  operations.push_back(operation);
  return result;
}

bool HeadlessShell::Start(const ShellStart& start) {
  started.push_back(start);
  return starts;
}

std::unique_ptr<ProgressDialog> HeadlessShell::MakeProgress() {
  if (!has_progress) return nullptr;
  if (in_windows) return MakeHeadlessProgress();
  return std::make_unique<RecordedProgress>(*this);
}

Platform HeadlessPlatform::Ports() {
  return {&SuiteCodePage(), &files, &clock, &process, &settings, &dialogs, &suite, &shell, &mail, &printing};
}

}  // namespace lorv
