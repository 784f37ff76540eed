#pragma once

#include <array>

#include "framework/native/native_types.h"
#include "grid/events/event_table.h"

namespace lorv {

// The type byte of an argument that a grid passes with an event.
template <class Value>
inline constexpr char kArgumentOf = 0;
template <>
inline constexpr char kArgumentOf<short> = argument::kShort;
template <>
inline constexpr char kArgumentOf<LONG> = argument::kLong;
template <>
inline constexpr char kArgumentOf<IDispatch*> = argument::kObject;
template <>
inline constexpr char kArgumentOf<bool> = argument::kBool;
template <>
inline constexpr char kArgumentOf<short*> = argument::kShortAnswer;
template <>
inline constexpr char kArgumentOf<BSTR*> = argument::kTextAnswer;
template <>
inline constexpr char kArgumentOf<VARIANT*> = argument::kVariantAnswer;

// The kind of that number by value, for constants: under the sanitizers no pointer is followed in one. The
// number 0 where there is none.
constexpr EventKind KnownEvent(int id) {
  for (const EventKind& kind : kEventKinds)
    if (kind.id == id) return kind;
  return {};
}

// Whether these are the arguments of the event.
template <class... Values>
constexpr bool EventTakes(const EventKind& kind) {
  std::size_t at = 0;
  return kind.Count() == sizeof...(Values) && (... && (kind.arguments[at++] == kArgumentOf<Values>));
}

// The types of an event's arguments as a text of bytes that 0 ends.
constexpr std::array<BYTE, EventKind::kMostArguments + 1> EndedTypes(const EventKind& kind) {
  std::array<BYTE, EventKind::kMostArguments + 1> types = {};
  for (std::size_t i = 0; i < kind.Count(); ++i) types[i] = static_cast<BYTE>(kind.arguments[i]);
  return types;
}

}  // namespace lorv
