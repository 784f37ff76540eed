#pragma once

#include "framework/text/cstring.h"
#include "framework/windows/window.h"

namespace lorv {

// The numbers of the messages for a mail that does not go out.
constexpr UINT kMailNotLoaded = 61840;
constexpr UINT kMailLibraryInvalid = 61841;
constexpr UINT kMailNotSent = 61842;

// The text of a number, empty for others.
CString MailProblemText(UINT number);

// Hands a description to the mail library, whose windows stand before `owner`, and shows the user what went
// wrong. The user giving up or not logging on is nothing wrong.
void MailDescription(CWnd& owner, const CString& description);

}  // namespace lorv
