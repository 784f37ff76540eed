#pragma once

#include "framework/ports/drop_port.h"
#include "framework/windows/window.h"

// Drag and drop by the framework's names: a window that takes what is dropped on it, and data that can be
// dragged away, within the program and between programs.
//
// Units, edges and thread as in framework/ports/drop_port.h.
//
//   class Target : public COleDropTarget { BOOL OnDrop(...) override; };
//   target.Register(&grid);
//   COleDataSource source;  source.SetText(_T("C30"));  source.DoDragDrop(DROPEFFECT_COPY)  gives what was
//   done

// What is dragged or dropped, during the call that it is given to.
class COMM_LORV_API COleDataObject {
 public:
  explicit COleDataObject(const lorv::DragContent& content) : content_(&content) {}
  BOOL HasText() const { return content_->HasText(); }
  CString GetText() const { return content_->Text(); }
  // Formats beside text are media types: "text/html", "application/x-lorv-cells".
  BOOL IsDataAvailable(const CString& format) const { return content_->Has(format); }
  std::vector<BYTE> GetData(const CString& format) const { return content_->Bytes(format); }

 private:
  const lorv::DragContent* content_;
};

class COMM_LORV_API COleDropTarget : private lorv::DropReceiver {
 public:
  COleDropTarget() = default;
  ~COleDropTarget() override;
  // FALSE: it has a window already, or the window has a target, or the system refused.
  BOOL Register(CWnd* window);
  void Revoke();
  // That of Register, as long as the window is there.
  HWND GetWindowHandle() const;

 protected:
  // What a drop at the point of the client area would do; here nothing.
  virtual DROPEFFECT OnDragEnter(CWnd* window, COleDataObject* data, DWORD keys, CPoint point);
  virtual DROPEFFECT OnDragOver(CWnd* window, COleDataObject* data, DWORD keys, CPoint point);
  virtual void OnDragLeave(CWnd* window);
  // Whether it was taken.
  virtual BOOL OnDrop(CWnd* window, COleDataObject* data, DROPEFFECT effect, CPoint point);
  // The drag that is over the window: what its source allows.
  DROPEFFECT GetAllowedEffects() const { return allowed_; }

 private:
  DROPEFFECT Enter(const lorv::DragContent& content, const lorv::DragPlace& place) override;
  DROPEFFECT Over(const lorv::DragContent& content, const lorv::DragPlace& place) override;
  void Leave() override;
  DROPEFFECT Drop(const lorv::DragContent& content, const lorv::DragPlace& place, DROPEFFECT effect) override;

  HWND window_ = nullptr;
  DROPEFFECT allowed_ = 0;
};

class COMM_LORV_API COleDataSource {
 public:
  void SetText(const CString& text) { data_.SetText(text); }
  void SetData(const CString& format, std::vector<BYTE> bytes) { data_.Set(format, std::move(bytes)); }
  void Empty() { data_ = {}; }
  // While the mouse button is held: returns when it is let go or Esc is pressed, with what the receiver did.
  // Other code of the program runs meanwhile. DROPEFFECT_MOVE: what was dragged is the caller's to remove.
  DROPEFFECT DoDragDrop(DROPEFFECT allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK);
  // Onto the clipboard instead.
  BOOL SetClipboard() const;

 private:
  lorv::TransferData data_;
};
