#pragma once

#include "framework/windows/dialog.h"

// The library's dialogs as templates, with the ids of the controls that their classes ask for. Constant: any
// thread.
namespace lorv {

// The failure and its report.
constexpr UINT kReportTextId = 1002;
constexpr UINT kPrintId = 1001;
constexpr UINT kSendId = 1000;
COMM_LORV_API extern const DialogTemplate kFailureForm;

// What the user has to say about it.
constexpr UINT kDescriptionId = 1003;
COMM_LORV_API extern const DialogTemplate kDescriptionForm;

// A choice among names.
constexpr UINT kNamesId = 5002;
COMM_LORV_API extern const DialogTemplate kFileSelectForm;

}  // namespace lorv
