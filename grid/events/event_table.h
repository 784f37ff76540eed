#pragma once

#include <array>
#include <string_view>

namespace lorv {

// The events that a table raises in its parent: their numbers, and the types of their arguments in the
// framework's bytes. An argument passed by pointer is how a handler answers.

namespace argument {

inline constexpr char kShort = 0x02;
inline constexpr char kLong = 0x03;
inline constexpr char kObject = 0x09;
inline constexpr char kBool = 0x0B;
inline constexpr char kVariant = 0x0C;
inline constexpr char kShortAnswer = 0x42;
inline constexpr char kLongAnswer = 0x43;
inline constexpr char kFloatAnswer = 0x44;
inline constexpr char kTextAnswer = 0x48;
inline constexpr char kVariantAnswer = 0x4C;

}  // namespace argument

struct EventKind {
  static constexpr std::size_t kMostArguments = 9;

  int id = 0;
  std::string_view name;  // of the handler that the suite's dialogs give to it
  std::array<char, kMostArguments> arguments = {};

  // How many of the arguments there are.
  constexpr std::size_t Count() const {
    std::size_t count = 0;
    while (count < kMostArguments && arguments[count] != 0) ++count;
    return count;
  }
  // The arguments as the framework takes them: a text of bytes, ended by 0 where it is shorter than the
  // array.
  constexpr std::string_view Types() const { return {arguments.data(), Count()}; }
};

// In the order of their numbers, the mouse and keyboard first.
inline constexpr std::array kEventKinds = [] {
  using namespace argument;
  return std::to_array<EventKind>({
      {-600, "OnClick", {}},
      {-601, "OnDblClick", {}},
      {-602, "OnKeyDownTdbgrid", {kShortAnswer, kShort}},
      {-603, "OnKeyPress", {kShortAnswer}},
      {-604, "OnKeyUpTdbgrid", {kShortAnswer, kShort}},
      {-605, "OnMouseDownTdbgrid", {kShort, kShort, kLong, kLong}},
      {-606, "OnMouseMove", {kShort, kShort, kLong, kLong}},
      {-607, "OnMouseUpGrid", {kShort, kShort, kLong, kLong}},
      {1, "OnAfterColUpdate", {kShort}},
      {4, "OnAfterUpdate", {}},
      {5, "OnBeforeColUpdate", {kShort, kVariantAnswer, kShortAnswer}},
      {8, "OnBeforeUpdateGrid", {kShortAnswer}},
      {9, "OnColResizeTable", {kShort, kShortAnswer}},
      {10, "OnHeadClickGrid", {kShort}},
      {11, "OnRowColChange", {kVariantAnswer, kShort}},
      {13, "OnRowResize", {kShortAnswer}},
      {15, "OnSelChangeGrid", {kShortAnswer}},
      {16, "OnChange", {}},
      {25, "OnAfterColEdit", {kShort}},
      {26, "OnBeforeColEdit", {kShort, kShort, kShortAnswer}},
      {28, "OnFirstRowChange", {kShort}},
      {29, "OnLeftColChange", {kShort}},
      {30, "OnFormatText", {kShort, kVariantAnswer, kVariantAnswer}},
      {32, "OnDragCell", {kShort, kVariantAnswer, kShort}},
      {33, "OnButtonClickGrid", {kShort}},
      {34, "OnComboSelect", {kShort}},
      {36, "OnFetchCellStyle", {kShort, kShort, kVariantAnswer, kShort, kObject}},
      {38, "OnPaintGrid", {}},
      {40, "OnPostEvent", {kShort}},
      {49, "OnFetchCellTipsGrid", {kShort, kShort, kLong, kTextAnswer, kBool, kObject}},
      {51, "OnFetchRowStyle", {kShort, kVariantAnswer, kObject}},
      {55,
       "OnOwnerDrawCell",
       {kLong, kVariant, kShort, kShort, kShort, kShort, kShort, kShort, kShortAnswer}},
      {57, "OnOLEDragDrop", {kObject, kLongAnswer, kShortAnswer, kShortAnswer, kFloatAnswer, kFloatAnswer}},
      {58,
       "OnOLEDragOver",
       {kObject, kLongAnswer, kShortAnswer, kShortAnswer, kFloatAnswer, kFloatAnswer, kShortAnswer}},
      {63, "OnBeforeRowColChange", {kShortAnswer}},
      {75, "OnFilterChange", {}},
  });
}();

// The kind of that number, null where there is none.
//
//   FindEvent(10)->name  is "OnHeadClickGrid"
constexpr const EventKind* FindEvent(int id) {
  for (const EventKind& kind : kEventKinds)
    if (kind.id == id) return &kind;
  return nullptr;
}

}  // namespace lorv
