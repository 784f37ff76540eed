#include "tools/lorv/takeoff/output/storey_order.h"

#include <array>
#include <charconv>
#include <string>

#include "tools/lorv/text/folded_text.h"

// Derives from its name how high a storey lies. Exporters and people name storeys in many ways and models
// list them in any order; a bill reads from the foundation up, and a name that is not understood costs its
// place and nothing else.

namespace lorv::tool {
namespace {

using Text = std::string_view;

// Beyond any storey's number.
constexpr double kFoundation = -1000;
constexpr double kTop = 1000;

constexpr std::array<Text, 10> kDigits = {"零", "一", "二", "三", "四", "五", "六", "七", "八", "九"};

bool Has(Text name, std::initializer_list<Text> words) {
  for (const Text word : words) {
    if (name.find(word) != Text::npos) return true;
  }
  return false;
}

bool Is(Text name, std::initializer_list<Text> words) {
  for (const Text word : words) {
    if (name == word) return true;
  }
  return false;
}

// Up to 99 in Chinese words: 三, 十, 十二, 二十一. Words in front of the number are passed over, those
// behind it end it.
std::optional<double> ChineseNumber(Text text) {
  int tens = 0, number = 0;
  bool any = false;
  while (!text.empty()) {
    int digit = -1;
    for (std::size_t i = 0; i < kDigits.size(); ++i) {
      if (text.starts_with(kDigits[i])) digit = static_cast<int>(i);
    }
    if (digit < 0 && !text.starts_with("十")) {
      if (any) break;
      text.remove_prefix(1);
      continue;
    }
    if (digit < 0) {
      tens = number == 0 ? 1 : number;
      number = 0;
    } else {
      number = digit;
    }
    any = true;
    // Each of these characters takes three bytes.
    text.remove_prefix(kDigits[0].size());
  }
  if (!any) return std::nullopt;
  return tens * 10 + number;
}

std::optional<double> FirstNumber(Text text) {
  const std::size_t at = text.find_first_of("0123456789");
  if (at == Text::npos) return ChineseNumber(text);
  double number = 0;
  std::from_chars(text.data() + at, text.data() + text.size(), number);
  return number;
}

bool IsBelowGround(Text name) {
  if (Has(name, {"地下", "负", "basement", "underground"})) return true;
  const bool letter = name.size() > 1 && name[0] == 'b' && name[1] >= '0' && name[1] <= '9';
  return letter || (name.size() > 1 && name[0] == '-' && name[1] >= '0' && name[1] <= '9');
}

}  // namespace

std::optional<double> StoreyRank(std::string_view storey) {
  const std::string name = Folded(storey);
  // Before any number: "基础层" and "Roof 2" lie where their words say.
  if (Has(name, {"基础", "foundation", "footing"})) return kFoundation;
  if (Has(name, {"屋面", "屋顶", "roof"}) || Is(name, {"rf", "顶层", "机房层"})) return kTop;
  const std::optional<double> number = FirstNumber(name);
  // A basement without a number is the first one.
  if (IsBelowGround(name)) return number ? -*number : -1;
  // Below the first numbered storey: where both are there, the ground floor is the lower one.
  if (Is(name, {"首层", "底层", "ground", "ground floor", "gf", "eg", "erdgeschoss"})) return 0.5;
  return number;
}

}  // namespace lorv::tool
