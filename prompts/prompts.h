#pragma once

// The whole two-language vocabulary of the suite, and the language it is spelt in.
//
// Each lookup has two forms. By enumerator: its value is the row's POSITION in the table. By text: the
// Chinese text is the key, compared exactly; the first row that has it wins. Enumerators are named after the
// row's English; where that occurs twice, the later one carries its row number.
//
// Edges: in Chinese a text comes back as the very pointer that was given, found in the table or not; in
//   English an unknown text gives null, without a message. A null text gives null.
// Result: the text in the language in force, or null. A position outside the table shows "NO Information",
//   and a language other than the two shows "NO Languange" (caption "Languange Information", OK and Cancel),
//   each time.
// The texts are constant and live as long as the process: any thread, as long as none sets the language.
//
//   CObjClassInf::GetInf(_T("梁"))  in English gives "Beam"
#include "prompts/CObjClassInf.h"
#include "prompts/CStInf.h"
#include "prompts/PublicInf.h"
#include "prompts/SwicthInfo.h"
#include "prompts/TCompDrawInf.h"
#include "prompts/language.h"
