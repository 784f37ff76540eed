#pragma once

#include "framework/native/export.h"

// The language in which the whole process spells the suite's vocabulary.
//
// Any value can be set. From 2 on no table has a text for it: every lookup then shows the user a message and
// gives null.
enum LanguageType : int { LANGUAGE_CHINESE = 0, LANGUAGE_ENGLISH = 1 };

// The language in force; Chinese from the start of the process.
COMM_LORV_API LanguageType GetLanguageType();

// Takes any value, unchecked. One plain variable of the process without a lock: set it before other threads
// look prompts up.
//
//   SetLanguageType(LANGUAGE_ENGLISH)  makes CObjClassInf::GetInf(_T("墙")) give "Wall"
COMM_LORV_API void SetLanguageType(LanguageType language);
