#pragma once

#include <QAccessible>

#include "framework/ports/accessible_port.h"

class QWidget;

namespace lorv {

// The tree of a window that draws itself, for Qt's accessibility. Controls are widgets, for which Qt answers.
//
// Parts of a window are made as they are asked for, each once, and kept by Qt under a number; those that are
// gone, and all where there are more than kMaxKeptParts, are given up when the events under way are over.
constexpr std::size_t kMaxKeptParts = 4096;

// From now on Qt asks us for the windows so marked. Once for the process.
void AnswerAccessibility();
void MarkAccessible(QWidget& widget, HWND window);

// Where events go instead of to Qt, which drops them where no reader runs; null: to Qt. For tests.
COMM_LORV_API void SendAccessibleEventsTo(void (*sink)(QAccessibleEvent* event));

// Notifies Qt's readers, where there are any.
void ReportQtAccessible(QWidget& widget, AccessEvent event, std::int64_t number);

}  // namespace lorv
