#pragma once

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QString>
#include <algorithm>

#include "framework/cstring.h"
#include "framework/geometry.h"
#include "framework/window_types.h"

// Texts, places and colours from one side to the other. Both count 16-bit units, so positions need no change.
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

// The position that a mouse message carries.
inline CPoint PointOf(LPARAM l) {
  return CPoint(static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l)));
}

// Copies a text into a caller's room of that many units, its end included; the units copied.
inline LRESULT CopyOut(const CString& text, LPTSTR target, std::size_t room) {
  if (target == nullptr || room == 0) return 0;
  const auto count = std::min(static_cast<std::size_t>(text.GetLength()), room - 1);
  std::copy_n(text.GetString(), count, target);
  target[count] = 0;
  return static_cast<LRESULT>(count);
}

}  // namespace lorv
