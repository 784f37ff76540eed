#pragma once

#include <QFont>

#include "framework/native/export.h"
#include "framework/native/window_types.h"

// Fonts by the platform's description.
//
// A face that is not installed is replaced by one that has Chinese characters: left to itself the system
// answers the usual Chinese faces with a Latin one first, and half a line would be in another letter. Any
// thread.
namespace lorv {

COMM_LORV_API QFont FontOf(const LOGFONT& description);
LOGFONT DescriptionOf(const QFont& font);
// The font of dialogs: the Chinese face at 9 points of the desktop's dots per inch, 12 pixels on the usual
// screen.
LOGFONT DialogFace();
void SetDialogDpi(int dpi);

}  // namespace lorv
