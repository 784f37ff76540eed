#include "framework/text_compare.h"

#include <algorithm>

namespace lorv {
namespace {

struct Same {
  TCHAR operator()(TCHAR c) const { return c; }
};

struct Folded {
  TCHAR operator()(TCHAR c) const { return ToLower(c); }
};

int Difference(TCHAR a, TCHAR b) {
  return static_cast<int>(a) - static_cast<int>(b);
}

template <class Fold>
int CompareViews(TextView a, TextView b, Fold fold) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    const int difference = Difference(fold(a[i]), fold(b[i]));
    if (difference != 0) return difference;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

// The first `count` units of a text that may end sooner.
TextView Beginning(LPCTSTR text, int count) {
  std::size_t length = 0;
  while (length < static_cast<std::size_t>(count) && text[length] != 0) ++length;
  return {text, length};
}

}  // namespace

std::size_t TextLength(LPCTSTR text) {
  return std::char_traits<TCHAR>::length(text);
}

int CompareExact(LPCTSTR a, LPCTSTR b) {
  while (*a == *b && *a != 0) ++a, ++b;
  return Difference(*a, *b);
}

int CompareExact(TextView a, TextView b) {
  return CompareViews(a, b, Same());
}

int CompareWithoutCase(TextView a, TextView b) {
  return CompareViews(a, b, Folded());
}

}  // namespace lorv

int strcompare(LPCTSTR a, LPCTSTR b, int count) {
  if (count < 0) return lorv::CompareWithoutCase(a, b);
  return lorv::CompareWithoutCase(lorv::Beginning(a, count), lorv::Beginning(b, count));
}
