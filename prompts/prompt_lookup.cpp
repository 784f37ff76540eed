#include "prompts/prompt_lookup.h"

#include "platform/ports/platform.h"
#include "prompts/language.h"

// How every lookup of prompts finds its text, and the language in force. A position is compared as an
// unsigned number, so that a negative one is outside every table; a failed lookup shows a message, as the
// suite's users know it, and gives null.

namespace lorv {
namespace {

constexpr UINT kButtonsOkCancel = 1;
constexpr unsigned kLanguages = 2;

// A plain variable, set by the host before it looks anything up.
LanguageType language_in_force = LANGUAGE_CHINESE;

// Whichever button the user chooses, the lookup has failed.
LPCTSTR Refuse(LPCTSTR message) {
  MessageRequest request;
  request.text = message;
  request.caption = _T("Languange Information");
  request.style = kButtonsOkCancel;
  PortsInForce().dialogs->ShowMessage(request);
  return nullptr;
}

bool HasTexts(LanguageType language) {
  return static_cast<unsigned>(language) < kLanguages;
}

}  // namespace

LPCTSTR PromptAt(PromptTable table, std::int64_t position) {
  if (!HasTexts(language_in_force)) return Refuse(_T("NO Languange"));
  const auto row = static_cast<std::uint64_t>(position);
  if (row >= table.size()) return Refuse(_T("NO Information"));
  return table[row].text[language_in_force];
}

LPCTSTR PromptFor(PromptTable table, LPCTSTR chinese) {
  if (chinese != nullptr && language_in_force == LANGUAGE_CHINESE) return chinese;
  if (!HasTexts(language_in_force)) return Refuse(_T("NO Languange"));
  if (chinese == nullptr) return nullptr;
  for (const PromptRow& row : table) {
    if (CompareExact(chinese, row.text[LANGUAGE_CHINESE]) == 0) return row.text[language_in_force];
  }
  return nullptr;
}

}  // namespace lorv

LanguageType GetLanguageType() {
  return lorv::language_in_force;
}

void SetLanguageType(LanguageType language) {
  lorv::language_in_force = language;
}
