#include "gridcore/rows/packed_values.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "gridcore/geometry/moved_element.h"

// One piece of memory: a head, the payloads of the values, their types, and texts in the order in which they
// came. A text that is replaced by a longer one leaves its place empty; such places are dropped when the
// memory is full.

namespace lorv {
namespace {

constexpr std::size_t kMostBytes = 0xFFFFFFFF;
constexpr std::size_t kLongText = 64;  // bytes

}  // namespace

bool PackedValues::Takes(const VARIANT& value) {
  if (value.vt != VT_BSTR) return IsPlainType(value.vt);
  // The texts of other systems' interfaces may hold bytes, and half a unit at their end.
  const std::uint32_t bytes = BytesOfBstr(value.bstrVal);
  return bytes % sizeof(TCHAR) == 0 && bytes / sizeof(TCHAR) <= kMostUnits;
}

std::span<std::uint64_t> PackedValues::Payloads() const {
  return {reinterpret_cast<std::uint64_t*>(memory_.get() + sizeof(Head)), HeadOf().count};
}

std::span<std::uint16_t> PackedValues::Types() const {
  std::byte* const behind = memory_.get() + sizeof(Head) + HeadOf().room * sizeof(std::uint64_t);
  return {reinterpret_cast<std::uint16_t*>(behind), HeadOf().count};
}

VARTYPE PackedValues::TypeOf(int index) const {
  return Types()[static_cast<std::size_t>(index)];
}

PackedValues::TextPlace PackedValues::PlaceOf(int index) const {
  TextPlace place = {};
  std::memcpy(&place, &Payloads()[static_cast<std::size_t>(index)], sizeof place);
  return place;
}

TextView PackedValues::TextOf(int index) const {
  const TextPlace place = TypeOf(index) == VT_BSTR ? PlaceOf(index) : TextPlace();
  if (place.at == 0) return {};
  return {reinterpret_cast<const TCHAR*>(memory_.get() + place.at), place.units};
}

_variant_t PackedValues::Copy(int index) const {
  _variant_t value;
  value.vt = TypeOf(index);
  std::memcpy(&value.llVal, &Payloads()[static_cast<std::size_t>(index)], sizeof value.llVal);
  if (value.vt != VT_BSTR) return value;
  value.bstrVal = nullptr;
  if (PlaceOf(index).at == 0) return value;
  const TextView text = TextOf(index);
  value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (value.bstrVal == nullptr) throw std::bad_alloc();
  return value;
}

std::size_t PackedValues::BytesOfTexts() const {
  std::size_t bytes = 0;
  for (int index = 0; index < Count(); ++index) bytes += TextOf(index).size() * sizeof(TCHAR);
  return bytes;
}

// Into new memory, texts side by side.
void PackedValues::Rebuild(std::uint32_t room, std::size_t bytes_of_texts) {
  const std::size_t bytes = BytesBefore(room) + bytes_of_texts;
  PackedValues fresh;
  if (bytes <= kMostBytes) fresh.memory_.reset(static_cast<std::byte*>(std::malloc(bytes)));
  if (fresh.memory_ == nullptr) throw std::bad_alloc();
  const auto count = static_cast<std::uint32_t>(Count());
  auto used = static_cast<std::uint32_t>(BytesBefore(room));
  fresh.HeadOf() = {static_cast<std::uint32_t>(bytes), used, count, room};
  for (int index = 0; index < Count(); ++index) {
    const auto at = static_cast<std::size_t>(index);
    fresh.Types()[at] = Types()[at];
    fresh.Payloads()[at] = Payloads()[at];
    const TextView text = TextOf(index);
    if (text.data() == nullptr) continue;
    const TextPlace place = {used, static_cast<std::uint32_t>(text.size())};
    std::memcpy(&fresh.Payloads()[at], &place, sizeof place);
    std::memcpy(fresh.memory_.get() + used, text.data(), text.size() * sizeof(TCHAR));
    used += static_cast<std::uint32_t>(text.size() * sizeof(TCHAR));
  }
  fresh.HeadOf().used = used;
  memory_ = std::move(fresh.memory_);
}

void PackedValues::Reserve(int values, unsigned units) {
  const auto room = static_cast<std::uint32_t>(std::clamp(values, Count(), kMostValues));
  if (memory_ != nullptr && room <= HeadOf().room) return;
  Rebuild(room, (memory_ == nullptr ? 0 : BytesOfTexts()) + units * sizeof(TCHAR));
}

void PackedValues::Resize(int count) {
  const int before = Count();
  if (count > before) Reserve(count, 0);
  if (memory_ == nullptr) return;
  HeadOf().count = static_cast<std::uint32_t>(count);
  for (int index = before; index < count; ++index) {
    Types()[static_cast<std::size_t>(index)] = VT_EMPTY;
    Payloads()[static_cast<std::size_t>(index)] = 0;
  }
}

void PackedValues::Add(const VARIANT& value) {
  const int index = Count();
  if (memory_ == nullptr || HeadOf().count == HeadOf().room) Reserve(index + index / 2 + 4, 0);
  Resize(index + 1);
  try {
    Set(index, value);
  } catch (...) {
    Resize(index);
    throw;
  }
}

void PackedValues::Set(int index, const VARIANT& value) {
  const auto at = static_cast<std::size_t>(index);
  if (value.vt != VT_BSTR)
    std::memcpy(&Payloads()[at], &value.llVal, sizeof value.llVal);
  else if (value.bstrVal != nullptr)
    SetText(index, TextOfBstr(value.bstrVal));
  else
    Payloads()[at] = 0;
  Types()[at] = value.vt;
}

void PackedValues::SetText(int index, TextView text) {
  const std::size_t bytes = text.size() * sizeof(TCHAR);
  const TextView before = TextOf(index);
  // Over the text that stands there, if it is as long.
  std::size_t at = before.data() == nullptr ? 0 : PlaceOf(index).at;
  if (at == 0 || before.size() < text.size()) {
    MakeRoom(bytes);
    at = HeadOf().used;
    HeadOf().used += static_cast<std::uint32_t>(bytes);
  }
  std::memcpy(memory_.get() + at, text.data(), bytes);
  const TextPlace place = {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(text.size())};
  std::memcpy(&Payloads()[static_cast<std::size_t>(index)], &place, sizeof place);
}

// Of the heap's last piece the rest grows in place, which is the usual case while a table is filled.
void PackedValues::MakeRoom(std::size_t bytes) {
  const Head head = HeadOf();
  if (bytes <= head.bytes - head.used) return;
  const std::size_t held = head.used - BytesBefore(head.room);
  const std::size_t live = BytesOfTexts();
  // Where one text comes others come behind it, of a like length.
  const std::size_t more = std::max(live / 2, bytes < kLongText ? 4 * bytes : bytes);
  if (held - live > live / 2) return Rebuild(head.room, live + more);
  const std::size_t all = head.used + more;
  void* const grown = all > kMostBytes ? nullptr : std::realloc(memory_.get(), all);
  if (grown == nullptr) throw std::bad_alloc();
  static_cast<void>(memory_.release());
  memory_.reset(static_cast<std::byte*>(grown));
  HeadOf().bytes = static_cast<std::uint32_t>(all);
}

void PackedValues::Move(int from, int to) {
  std::span<std::uint64_t> payloads = Payloads();
  std::span<std::uint16_t> types = Types();
  MoveElement(payloads, from, to);
  MoveElement(types, from, to);
}

}  // namespace lorv
