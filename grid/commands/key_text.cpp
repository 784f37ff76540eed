#include "grid/commands/key_text.h"

#include "grid/commands/key_name_table.h"

// Keys written and read as texts. A name may end with the sign that joins names ("Num+"), so the held keys
// are taken from the front and what is left is the key.

namespace lorv {

namespace {

bool TakesPrefix(CString& text, LPCTSTR prefix) {
  const CString wanted(prefix);
  if (text.GetLength() <= wanted.GetLength()) return false;
  if (text.Left(wanted.GetLength()).CompareNoCase(wanted) != 0) return false;
  text = text.Mid(wanted.GetLength());
  text.Trim();
  return true;
}

bool IsLetterOrDigit(TCHAR c) {
  return (c >= _T('A') && c <= _T('Z')) || (c >= _T('0') && c <= _T('9'));
}

// A name of the table, or a letter or digit by itself. Zero: no key.
unsigned KeyOfName(CString name) {
  for (const KeyName& known : kKeyNames)
    if (name.CompareNoCase(known.name) == 0) return known.key;
  name.MakeUpper();
  return name.GetLength() == 1 && IsLetterOrDigit(name[0]) ? static_cast<unsigned>(name[0]) : 0;
}

CString NameOfKey(unsigned key) {
  for (const KeyName& known : kKeyNames)
    if (known.key == key) return known.name;
  const auto c = static_cast<TCHAR>(key);
  return key < 0x80 && IsLetterOrDigit(c) ? CString(c, 1) : CString();
}

}  // namespace

std::optional<KeyChord> ChordFromText(const CString& text) {
  CString rest = text;
  rest.Trim();
  KeyChord chord;
  // In any order, each once: "Shift+Ctrl+A" is what "Ctrl+Shift+A" is.
  for (bool more = true; more;) {
    more = false;
    if (!chord.control && TakesPrefix(rest, _T("Ctrl+"))) more = chord.control = true;
    if (!chord.shift && TakesPrefix(rest, _T("Shift+"))) more = chord.shift = true;
    if (!chord.alt && TakesPrefix(rest, _T("Alt+"))) more = chord.alt = true;
  }
  chord.key = KeyOfName(rest);
  if (chord.key == 0) return std::nullopt;
  return chord;
}

std::optional<std::vector<KeyChord>> ChordsFromText(const CString& text) {
  std::vector<KeyChord> chords;
  CString rest = text;
  rest.Trim();
  while (!rest.IsEmpty()) {
    const int comma = rest.Find(_T(","));
    const auto chord = ChordFromText(comma < 0 ? rest : rest.Left(comma));
    if (!chord) return std::nullopt;
    chords.push_back(*chord);
    if (comma < 0) break;
    rest = rest.Mid(comma + 1);
    // A comma promises another key.
    if (CString(rest).Trim().IsEmpty()) return std::nullopt;
  }
  return chords;
}

CString ChordToText(const KeyChord& chord) {
  const CString name = NameOfKey(chord.key);
  if (name.IsEmpty()) return {};
  CString text;
  if (chord.control) text += _T("Ctrl+");
  if (chord.shift) text += _T("Shift+");
  if (chord.alt) text += _T("Alt+");
  return text + name;
}

}  // namespace lorv
