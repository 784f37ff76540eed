#include "framework/values/ole_date.h"

#include <array>
#include <cmath>

#include "framework/text/char_class.h"

// Day numbers of automation (day 0 is 1899-12-30, the fraction is the time) to calendar dates and texts, by
// plain arithmetic from the year 100 to 9999. The time is rounded to whole seconds. Negative days count down,
// but their fraction still counts up from midnight: -1.25 is six o'clock of day -1.

namespace lorv {
namespace {

constexpr int kSecondsOfDay = 86400;
// Day 0 counted from 0000-03-01, where the arithmetic below begins its years.
constexpr int kDayZero = 693899;
constexpr int kDaysOf400Years = 146097;

struct Date {
  int year;
  int month;
  int day;
};

// A year that begins in March has its leap day at the end, so that months follow one rule.
// The constants 1460, 36524 and 146096 are the last days of 4, 100 and 400 years; 153 is the sum of five
// months in turn.
Date DateOfDay(int day) {
  const int count = day + kDayZero;
  const int era = count / kDaysOf400Years;
  const int of_era = count % kDaysOf400Years;
  const int year_of_era = (of_era - of_era / 1460 + of_era / 36524 - of_era / 146096) / 365;
  const int of_year = of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const int march_month = (5 * of_year + 2) / 153;
  const int month = march_month < 10 ? march_month + 3 : march_month - 9;
  const int year = year_of_era + era * 400 + (month <= 2 ? 1 : 0);
  return {year, month, of_year - (153 * march_month + 2) / 5 + 1};
}

int DayOfDate(Date date) {
  const int year = date.year - (date.month <= 2 ? 1 : 0);
  const int of_era = year % 400;
  const int march_month = date.month > 2 ? date.month - 3 : date.month + 9;
  const int of_year = (153 * march_month + 2) / 5 + date.day - 1;
  return year / 400 * kDaysOf400Years + of_era * 365 + of_era / 4 - of_era / 100 + of_year - kDayZero;
}

bool IsDate(Date date) {
  // The platform's own range; years of two digits would be a guess.
  if (date.year < 100 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1) return false;
  const bool leap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
  constexpr std::array kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const int days = kDays[static_cast<std::size_t>(date.month - 1)] + (date.month == 2 && leap ? 1 : 0);
  return date.day <= days;
}

// Reads the parts of a date or time: numbers of one to four digits parted by one sign.
class PartReader {
 public:
  explicit PartReader(TextView text) : text_(text) {}

  bool AtEnd() const { return at_ == text_.size(); }
  void SkipBlanks() {
    while (!AtEnd() && IsBlank(text_[at_])) ++at_;
  }
  bool Skip(TCHAR sign) {
    if (AtEnd() || text_[at_] != sign) return false;
    ++at_;
    return true;
  }
  bool Number(int& value) {
    const std::size_t start = at_;
    value = 0;
    for (; !AtEnd() && IsDigit(text_[at_]) && at_ - start < 5; ++at_) value = value * 10 + (text_[at_] - '0');
    // A fifth digit is read to be refused: "20240" is no year.
    return at_ != start && at_ - start < 5;
  }
  std::size_t Place() const { return at_; }
  void MoveTo(std::size_t place) { at_ = place; }

 private:
  TextView text_;
  std::size_t at_ = 0;
};

bool ReadDate(PartReader& in, Date& date) {
  if (!in.Number(date.year)) return false;
  // The same sign twice: "2024-5/1" is no date.
  const TCHAR sign = in.Skip('-') ? '-' : '/';
  if (sign == '/' && !in.Skip('/')) return false;
  return in.Number(date.month) && in.Skip(sign) && in.Number(date.day) && IsDate(date);
}

bool ReadTime(PartReader& in, int& seconds) {
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (!in.Number(hour) || !in.Skip(':') || !in.Number(minute)) return false;
  if (in.Skip(':') && !in.Number(second)) return false;
  seconds = (hour * 60 + minute) * 60 + second;
  return hour < 24 && minute < 60 && second < 60;
}

// Behind midnight always means later, on whichever side of day 0.
double Joined(int day, int seconds) {
  const double time = static_cast<double>(seconds) / kSecondsOfDay;
  return day < 0 ? day - time : day + time;
}

}  // namespace

bool SplitOleDate(double date, SYSTEMTIME& time) {
  // Written so that NaN is refused, too.
  if (!(date > kFirstOleDate - 1 && date < kBehindOleDates)) return false;
  int day = static_cast<int>(date);
  int seconds = static_cast<int>(std::lround(std::fabs(date - day) * kSecondsOfDay));
  // Half a second before midnight rounds into the next day.
  if (seconds == kSecondsOfDay) {
    seconds = 0;
    ++day;
  }
  if (day >= static_cast<int>(kBehindOleDates)) return false;
  const Date parts = DateOfDay(day);
  time = {};
  time.wYear = static_cast<WORD>(parts.year);
  time.wMonth = static_cast<WORD>(parts.month);
  time.wDay = static_cast<WORD>(parts.day);
  // Day 0 was a Saturday; the sum keeps the remainder from being negative.
  time.wDayOfWeek = static_cast<WORD>((day + 6 + 7 * 100000) % 7);
  time.wHour = static_cast<WORD>(seconds / 3600);
  time.wMinute = static_cast<WORD>(seconds / 60 % 60);
  time.wSecond = static_cast<WORD>(seconds % 60);
  return true;
}

bool JoinOleDate(const SYSTEMTIME& time, double& date) {
  const Date parts = {time.wYear, time.wMonth, time.wDay};
  if (!IsDate(parts) || time.wHour > 23 || time.wMinute > 59 || time.wSecond > 59) return false;
  date = Joined(DayOfDate(parts), (time.wHour * 60 + time.wMinute) * 60 + time.wSecond);
  return true;
}

CString OleDateToText(double date) {
  SYSTEMTIME time{};
  CString text;
  if (SplitOleDate(date, time)) text.Format(_T("%04d-%02d-%02d"), time.wYear, time.wMonth, time.wDay);
  return text;
}

bool TextToOleDate(TextView text, double& date) {
  PartReader in(text);
  in.SkipBlanks();
  Date parts = {1899, 12, 30};
  int seconds = 0;
  const std::size_t start = in.Place();
  bool right = ReadDate(in, parts);
  if (!right) {
    // No date in front; a time alone is one of day 0.
    in.MoveTo(start);
    parts = {1899, 12, 30};
    right = ReadTime(in, seconds);
  } else {
    const std::size_t behind = in.Place();
    in.SkipBlanks();
    // Blanks must part the two: "2024-05-0112:00" is neither.
    if (!in.AtEnd()) right = in.Place() != behind && ReadTime(in, seconds);
  }
  in.SkipBlanks();
  if (!right || !in.AtEnd()) return false;
  date = Joined(DayOfDate(parts), seconds);
  return true;
}

}  // namespace lorv
