#include "platform/text/code_table.h"

#include "platform/text/private_use_936.h"

// Code page 936 in both directions, as two tables filled once from the system's own conversion. What becomes
// of broken bytes and of characters without a code is decided here and not by the system, so a file has the
// same bytes on every machine.

namespace lorv {
namespace {

constexpr unsigned kFirstLead = 0x81;
constexpr unsigned kLastLead = 0xFE;
constexpr unsigned kFirstTrail = 0x40;
constexpr unsigned kLastTrail = 0xFE;
constexpr unsigned kEuroCode = 0x80;
constexpr unsigned kEuroSign = 0x20AC;

constexpr unsigned ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

void AppendCode(std::string& bytes, unsigned code) {
  if (code >= 0x100) bytes += static_cast<char>(code >> 8);
  bytes += static_cast<char>(code & 0xFF);
}

}  // namespace

CodeTable::CodeTable() : codes_(kUnits, 0), units_(kUnits, 0) {
  for (unsigned code = 1; code < 0x80; ++code) Enter(code, code);
  // One byte, and no lead byte: systems disagree on it.
  Enter(kEuroCode, kEuroSign);
  const SystemCodes system;
  for (unsigned lead = kFirstLead; lead <= kLastLead; ++lead) {
    for (unsigned trail = kFirstTrail; trail <= kLastTrail; ++trail) {
      const char bytes[] = {static_cast<char>(lead), static_cast<char>(trail)};
      if (const unsigned unit = system.UnitOf({bytes, 2})) Enter(lead << 8 | trail, unit);
    }
  }
  EnterPrivateUse();
}

void CodeTable::Enter(unsigned code, unsigned unit) {
  units_[code] = static_cast<std::uint16_t>(unit);
  codes_[unit] = static_cast<std::uint16_t>(code);
}

// Some systems leave these codes out of their table.
void CodeTable::EnterPrivateUse() {
  for (const PrivateUseRun& run : kPrivateUse936) {
    for (unsigned i = 0; i < run.count; ++i) Enter(run.code + i, run.unit + i);
  }
}

std::string CodeTable::ToNarrow(TextView text) const {
  std::string bytes;
  bytes.reserve(text.size() + text.size() / 2);
  for (const TCHAR unit : text) {
    const unsigned code = codes_[static_cast<std::uint16_t>(unit)];
    // A character of two units becomes two question marks, one a unit.
    AppendCode(bytes, code == 0 && unit != 0 ? '?' : code);
  }
  return bytes;
}

std::basic_string<TCHAR> CodeTable::ToText(std::string_view bytes) const {
  std::basic_string<TCHAR> text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const unsigned lead = ByteAt(bytes, at);
    const bool two = FirstCharacter(bytes.substr(at)) == 2;
    const unsigned unit = units_[two ? lead << 8 | ByteAt(bytes, at + 1) : lead];
    if (two) ++at;
    text += static_cast<TCHAR>(unit == 0 && lead != 0 ? '?' : unit);
  }
  return text;
}

std::size_t CodeTable::FirstCharacter(std::string_view bytes) const {
  if (bytes.size() < 2) return bytes.size();
  const unsigned lead = ByteAt(bytes, 0);
  const bool leads = lead >= kFirstLead && lead <= kLastLead;
  // A lead byte with a trail that makes no character counts alone, so that the byte behind it is not lost.
  return leads && units_[lead << 8 | ByteAt(bytes, 1)] != 0 ? 2 : 1;
}

CodePage& SuiteCodePage() {
  static CodeTable table;
  return table;
}

}  // namespace lorv
