#pragma once

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/ports/transfer_data.h"

// What a user drags with the mouse from one window to another, of this program or of others. COleDropTarget
// and COleDataSource (framework/windows/drag_drop.h) stand above it.
//
// Units: points are pixels of the receiver's client area. Keys are MK_..., effects DROPEFFECT_... as bits:
//   what the source allows, what the receiver would do, what was done.
// Edges: an answer that the source does not allow counts as DROPEFFECT_NONE. A window that goes, or takes
//   its receiver back, in the middle of a drag gets no further calls.
// One thread: that of the user interface.
using DROPEFFECT = DWORD;

namespace lorv {

// What is dragged, for as long as the call lasts. Other programs make each format when it is first asked for.
class COMM_LORV_API DragContent {
 public:
  DragContent() = default;
  DragContent(const DragContent&) = delete;
  DragContent& operator=(const DragContent&) = delete;
  virtual ~DragContent() = default;
  virtual bool HasText() const = 0;
  virtual CString Text() const = 0;  // line ends are CR LF
  virtual bool Has(const CString& format) const = 0;
  virtual std::vector<BYTE> Bytes(const CString& format) const = 0;
};

// Content of this program.
class KeptContent : public DragContent {
 public:
  explicit KeptContent(TransferData data) : data_(std::move(data)) {}
  bool HasText() const override { return data_.HasText(); }
  CString Text() const override { return data_.Text(); }
  bool Has(const CString& format) const override { return data_.Formats().count(format) != 0; }
  std::vector<BYTE> Bytes(const CString& format) const override { return data_.Bytes(format); }

 private:
  TransferData data_;
};

// Where the mouse is with it.
struct DragPlace {
  POINT at = {0, 0};
  DWORD keys = 0;
  DROPEFFECT allowed = 0;
};

class COMM_LORV_API DropReceiver {
 public:
  DropReceiver() = default;
  DropReceiver(const DropReceiver&) = delete;
  DropReceiver& operator=(const DropReceiver&) = delete;
  virtual ~DropReceiver() = default;

  // What a drop there would do. Enter comes first, then Over at each move, then Leave or Drop.
  virtual DROPEFFECT Enter(const DragContent& content, const DragPlace& place) = 0;
  virtual DROPEFFECT Over(const DragContent& content, const DragPlace& place) = 0;
  virtual void Leave() = 0;
  // Only where Over allowed it. What was done.
  virtual DROPEFFECT Drop(const DragContent& content, const DragPlace& place, DROPEFFECT effect) = 0;
};

// The receivers of the process by window, as framework/ports/window_map.h has the objects. Not owned: a
// receiver takes itself out before it ends; that of a window is out when the window is.
COMM_LORV_API void MapDropReceiver(HWND window, DropReceiver* receiver);
COMM_LORV_API void UnmapDropReceiver(HWND window);
COMM_LORV_API DropReceiver* MappedDropReceiver(HWND window);

// What the keys ask for, of what is allowed: a copy with Ctrl, a move with Shift, a link with both; without
// keys a move, else a copy, else a link.
COMM_LORV_API DROPEFFECT UsualDropEffect(DWORD keys, DROPEFFECT allowed);

}  // namespace lorv
