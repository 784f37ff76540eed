#include "framework/text/format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "framework/text/char_class.h"
#include "framework/text/number_text.h"
#include "framework/text/utf8.h"

// Format over typed arguments. The letters mean what they mean in the framework's Format, but what an
// argument is comes from its type: a wrong letter prints something sensible instead of reading memory that is
// not there. Real numbers go through number_text.h and so ignore the locale.

namespace lorv {

std::int64_t FormatArg::AsSigned() const {
  if (kind_ != Kind::kReal) return static_cast<std::int64_t>(integer_);
  constexpr double kLimit = 9223372036854775808.0;
  // Out of range, and for NaN, the value that the processor's conversion gives.
  return real_ >= -kLimit && real_ < kLimit ? static_cast<std::int64_t>(real_) : INT64_MIN;
}

std::uint64_t FormatArg::AsUnsigned() const {
  const auto bits = static_cast<std::uint64_t>(AsSigned());
  // Shorter arguments are widened to 32 bits first, as on their way through an argument list.
  return size_ >= 8 ? bits : bits & 0xFFFFFFFFU;
}

double FormatArg::AsReal() const {
  if (kind_ == Kind::kReal) return real_;
  return kind_ == Kind::kUnsigned ? static_cast<double>(integer_)
                                  : static_cast<double>(static_cast<std::int64_t>(integer_));
}

namespace {

struct Conversion {
  bool left = false, plus = false, blank = false, alternative = false, zero = false;
  int width = 0;
  int precision = -1;  // -1: none given
  TCHAR letter = 0;
};

// The form of the flag "#": always with a point, and in the form g with all digits of the precision.
std::string RealWithPoint(double value, char letter, int precision) {
  if (letter == 'g' || letter == 'G') {
    const int digits = std::max(precision, 1);
    const std::string measured = RealToText(value, 'e', digits - 1);
    const int exponent = ReadInteger(Utf8ToText(measured.substr(measured.find('e') + 1)));
    const bool plain = exponent >= -4 && exponent < digits;
    precision = plain ? digits - 1 - exponent : digits - 1;
    letter = plain ? 'f' : letter == 'g' ? 'e' : 'E';
  }
  std::string text = RealToText(value, letter, precision);
  if (text.find('.') == std::string::npos) text.insert(std::min(text.find_first_of("eE"), text.size()), ".");
  return text;
}

// Walks a format and its arguments; everything it prints goes to one text.
class Formatter {
 public:
  Formatter(LPCTSTR format, std::initializer_list<FormatArg> args)
      : at_(format), next_(args.begin()), end_(args.end()) {}

  std::basic_string<TCHAR> Run();

 private:
  void ReadFlags(Conversion& c);
  int ReadCount();
  void SkipLengthWords();
  void Convert(const Conversion& c);
  void PutPlain(Conversion c, const FormatArg& arg);
  void PutUnsigned(const Conversion& c, const FormatArg& arg);
  void PutReal(const Conversion& c, const FormatArg& arg);
  void PutText(const Conversion& c, TextView text);
  // Sign and prefix, then the body; zeros go between them when asked for.
  void PutNumber(const Conversion& c, std::string_view prefix, std::string_view body, bool zero_fill);
  void PutNarrow(std::string_view text) { out_.append(text.begin(), text.end()); }

  LPCTSTR at_;
  const FormatArg* next_;
  const FormatArg* end_;
  std::basic_string<TCHAR> out_;
};

std::basic_string<TCHAR> Formatter::Run() {
  while (*at_ != 0) {
    if (*at_ != '%') {
      out_.push_back(*at_++);
      continue;
    }
    const LPCTSTR start = at_++;
    Conversion c;
    ReadFlags(c);
    c.width = ReadCount();
    // A width below 0 comes from "*" and means the same as the flag "-".
    if (c.width < 0) {
      c.left = true;
      c.width = -c.width;
    }
    if (*at_ == '.') {
      ++at_;
      c.precision = ReadCount();
    }
    SkipLengthWords();
    c.letter = *at_;
    static constexpr TextView kLetters = _T("diuxXocCsSpfFeEgG");
    if (c.letter != 0 && kLetters.find(c.letter) != TextView::npos) {
      ++at_;
      Convert(c);
    } else if (c.letter == '%') {
      ++at_;
      out_.push_back('%');
    } else {
      // What is no conversion stays as it was typed; the letter itself follows as plain text.
      out_.append(start, at_);
    }
  }
  return std::move(out_);
}

void Formatter::ReadFlags(Conversion& c) {
  for (;; ++at_) {
    switch (*at_) {
      case '-':
        c.left = true;
        break;
      case '+':
        c.plus = true;
        break;
      case ' ':
        c.blank = true;
        break;
      case '#':
        c.alternative = true;
        break;
      case '0':
        c.zero = true;
        break;
      default:
        return;
    }
  }
}

int Formatter::ReadCount() {
  if (*at_ == '*') {
    ++at_;
    if (next_ == end_) return 0;
    const std::int64_t count = (next_++)->AsSigned();
    // A width from data must not take all memory.
    return static_cast<int>(std::clamp<std::int64_t>(count, -kMaxFormatWidth, kMaxFormatWidth));
  }
  int count = 0;
  for (; IsDigit(*at_); ++at_) count = std::min(count * 10 + (*at_ - '0'), kMaxFormatWidth);
  return count;
}

void Formatter::SkipLengthWords() {
  // They name the size of an argument, which its type gives already.
  static constexpr TextView kWords = _T("hljztLw");
  while (*at_ != 0 && kWords.find(*at_) != TextView::npos) ++at_;
  if (*at_ == 'I') {
    ++at_;
    if ((at_[0] == '6' && at_[1] == '4') || (at_[0] == '3' && at_[1] == '2')) at_ += 2;
  }
}

void Formatter::Convert(const Conversion& c) {
  // More letters than arguments print nothing.
  if (next_ == end_) return;
  const FormatArg& arg = *next_++;
  // A text stays a text under any letter.
  if (arg.GetKind() == FormatArg::Kind::kText) return PutText(c, arg.AsText());
  switch (c.letter) {
    case 'c':
    case 'C': {
      const auto unit = static_cast<TCHAR>(arg.AsSigned());
      return PutText(c, {&unit, 1});
    }
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
      return PutReal(c, arg);
    case 's':
    case 'S':
      return PutPlain(c, arg);
    default:
      return PutUnsigned(c, arg);
  }
}

// A number where the format wants a text: as one would write it.
void Formatter::PutPlain(Conversion c, const FormatArg& arg) {
  const bool real = arg.GetKind() == FormatArg::Kind::kReal;
  const bool is_unsigned = arg.GetKind() == FormatArg::Kind::kUnsigned;
  c.precision = -1;
  c.letter = real ? 'g' : is_unsigned ? 'u' : 'd';
  return real ? PutReal(c, arg) : PutUnsigned(c, arg);
}

void Formatter::PutUnsigned(const Conversion& c, const FormatArg& arg) {
  const bool is_signed = c.letter == 'd' || c.letter == 'i';
  std::string prefix;
  std::uint64_t value = arg.AsUnsigned();
  if (is_signed) {
    const std::int64_t number = arg.AsSigned();
    // Unsigned, as the smallest number has no opposite.
    value = number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
    prefix = number < 0 ? "-" : c.plus ? "+" : c.blank ? " " : "";
  }
  const bool hex = c.letter == 'x' || c.letter == 'X' || c.letter == 'p';
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value,
                                 hex               ? 16
                                 : c.letter == 'o' ? 8
                                                   : 10)
                       .ptr;
  std::string body(digits, end);
  if (c.letter == 'X' || c.letter == 'p') {
    for (char& d : body) d = static_cast<char>(ToUpper(static_cast<TCHAR>(d)));
  }
  // As in C: no digits are wanted and none are needed.
  if (c.precision == 0 && value == 0) body.clear();
  // Pointers always have all 16 digits, as on the platform.
  const auto wanted = static_cast<std::size_t>(c.letter == 'p' ? 16 : std::max(c.precision, 0));
  if (body.size() < wanted) body.insert(0, wanted - body.size(), '0');
  if (c.alternative && c.letter == 'o' && (body.empty() || body.front() != '0')) body.insert(0, 1, '0');
  if (c.alternative && hex && value != 0) prefix += c.letter == 'x' ? "0x" : "0X";
  // A precision turns the flag 0 off for whole numbers.
  PutNumber(c, prefix, body, c.zero && c.precision < 0);
}

void Formatter::PutReal(const Conversion& c, const FormatArg& arg) {
  const double value = arg.AsReal();
  const bool negative = std::signbit(value);
  const int precision = c.precision < 0 ? 6 : c.precision;
  const auto letter = static_cast<char>(c.letter);
  const std::string body = c.alternative && std::isfinite(value)
                               ? RealWithPoint(std::fabs(value), letter, precision)
                               : RealToText(std::fabs(value), letter, precision);
  // "inf" and "nan" are filled with blanks, never with zeros.
  PutNumber(c, negative ? "-" : c.plus ? "+" : c.blank ? " " : "", body, c.zero && std::isfinite(value));
}

void Formatter::PutText(const Conversion& c, TextView text) {
  if (c.precision >= 0 && c.letter != 'c' && c.letter != 'C') {
    text = text.substr(0, static_cast<std::size_t>(c.precision));
  }
  const std::size_t width = static_cast<std::size_t>(c.width);
  const std::size_t fill = width > text.size() ? width - text.size() : 0;
  if (!c.left) out_.append(fill, ' ');
  out_.append(text);
  if (c.left) out_.append(fill, ' ');
}

void Formatter::PutNumber(const Conversion& c, std::string_view prefix, std::string_view body,
                          bool zero_fill) {
  const std::size_t width = static_cast<std::size_t>(c.width);
  const std::size_t length = prefix.size() + body.size();
  const std::size_t fill = width > length ? width - length : 0;
  if (!c.left && !zero_fill) out_.append(fill, ' ');
  PutNarrow(prefix);
  if (!c.left && zero_fill) out_.append(fill, '0');
  PutNarrow(body);
  if (c.left) out_.append(fill, ' ');
}

}  // namespace

std::basic_string<TCHAR> FormatText(LPCTSTR format, std::initializer_list<FormatArg> args) {
  return format == nullptr ? std::basic_string<TCHAR>() : Formatter(format, args).Run();
}

}  // namespace lorv
