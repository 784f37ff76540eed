#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>
#include <algorithm>

#include "framework/drawing/geometry.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

// Texts, rectangles, points and colours as Qt has them (ToQt) and back (FromQt). Both sides count 16-bit
// units, so positions in texts need no change; a QRect is made of its size, as its right and bottom edges
// count otherwise. ViewOf is valid as long as the text is unchanged. Any thread.
namespace lorv {

inline QString ToQt(TextView text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline TextView ViewOf(const QString& text) {
  return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size())};
}

inline CString FromQt(const QString& text) {
  return CString(ViewOf(text));
}

inline QRect ToQt(const RECT& rect) {
  return QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

inline CRect FromQt(const QRect& rect) {
  return CRect(rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height());
}

inline CPoint FromQt(const QPoint& point) {
  return CPoint(point.x(), point.y());
}

inline QPoint ToQt(POINT point) {
  return QPoint(point.x, point.y);
}

inline QColor ToQt(COLORREF colour) {
  return QColor(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

}  // namespace lorv
