#pragma once

#include <cmath>

// Widths of columns: characters of the standard font on a screen of 96 dots an inch, where a character is 7
// dots wide and a column has 5 more. The office's own characters depend on the fonts installed.
namespace lorv::office {

constexpr double kDotsOfCharacter = 7;
constexpr double kDotsOfEdges = 5;
constexpr double kHundredthsOfDot = 2540.0 / 96;  // of a millimetre

//   HundredthsOf(8)  gives 1614
inline long HundredthsOf(double characters) {
  return std::lround((kDotsOfCharacter * characters + kDotsOfEdges) * kHundredthsOfDot);
}

// The office keeps widths in coarser steps: a whole number of characters comes back as one.
inline double CharactersOf(long hundredths) {
  constexpr double kStep = 0.02;
  const double characters =
      (static_cast<double>(hundredths) / kHundredthsOfDot - kDotsOfEdges) / kDotsOfCharacter;
  if (characters < 0) return 0;
  const double whole = std::round(characters);
  return std::abs(characters - whole) < kStep ? whole : std::round(characters * 100) / 100;
}

}  // namespace lorv::office
