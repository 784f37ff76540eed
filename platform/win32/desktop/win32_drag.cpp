#include "platform/win32/desktop/win32_drag.h"

#include "platform/models/carried_fault.h"
#include "platform/win32/desktop/drag_data.h"
#include "platform/win32/desktop/message_pump.h"
#include "platform/win32/services/system_object.h"

// Drags by the system: a target for each window that accepts drops, and the source of a drag of ours. The
// system calls both from within its own loop, so that no exception may leave them; what a handler throws is
// carried to the call that runs the loop.

namespace lorv {
namespace {

// The receiver is looked up at each call: it may take itself out in the middle of a drag.
class NativeTarget : public CountedObject<IDropTarget> {
 public:
  explicit NativeTarget(HWND window) : window_(window) {}

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keys, POINTL at, DWORD* effect) override {
    // Kept until the drag leaves: later calls come without it.
    data_.Share(data);
    return Answered(keys, at, effect,
                    [](DropReceiver& receiver, const DragContent& content, const DragPlace& place) {
                      return receiver.Enter(content, place);
                    });
  }
  HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) override {
    return Answered(keys, at, effect,
                    [](DropReceiver& receiver, const DragContent& content, const DragPlace& place) {
                      return receiver.Over(content, place);
                    });
  }
  HRESULT STDMETHODCALLTYPE DragLeave() override {
    CarriedFault::Guarded([&] {
      if (DropReceiver* const receiver = MappedDropReceiver(window_)) receiver->Leave();
      return true;
    });
    data_.Share(nullptr);
    return S_OK;
  }
  // The receiver is asked once more what it would do there, and then does that.
  HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD keys, POINTL at, DWORD* effect) override {
    data_.Share(data);
    const HRESULT answer = Answered(
        keys, at, effect, [this](DropReceiver& receiver, const DragContent& content, const DragPlace& place) {
          const DROPEFFECT would = receiver.Over(content, place) & place.allowed;
          if (MappedDropReceiver(window_) != &receiver) return DROPEFFECT{DROPEFFECT_NONE};
          if (would != DROPEFFECT_NONE) return receiver.Drop(content, place, would);
          receiver.Leave();
          return DROPEFFECT{DROPEFFECT_NONE};
        });
    data_.Share(nullptr);
    return answer;
  }

 private:
  template <class Call>
  HRESULT Answered(DWORD keys, POINTL at, DWORD* effect, Call call) {
    if (effect == nullptr) return E_POINTER;
    // One word goes both ways: what the source allows comes in, what will be done goes out.
    const DROPEFFECT allowed = *effect;
    *effect = DROPEFFECT_NONE;
    POINT client = {at.x, at.y};
    ScreenToClient(window_, &client);
    CarriedFault::Guarded([&] {
      DropReceiver* const receiver = IsWindowEnabled(window_) ? MappedDropReceiver(window_) : nullptr;
      if (receiver == nullptr) return false;
      const DataContent content(data_.Get());
      *effect = call(*receiver, content, DragPlace{client, keys, allowed}) & allowed;
      return true;
    });
    return S_OK;
  }

  HWND window_;
  CountedReference<IDataObject> data_;
};

// The end of the program was asked for while the user drags.
thread_local bool given_up = false;

class NativeSource : public CountedObject<IDropSource> {
 public:
  // A drag may be by either button, and is over when both are up.
  HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override {
    if (escape || given_up) return DRAGDROP_S_CANCEL;
    return (keys & (MK_LBUTTON | MK_RBUTTON)) == 0 ? DRAGDROP_S_DROP : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD /*effect*/) override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

// Once for the thread of the windows, to its end; a host that did so before is not disturbed.
bool StartOle() {
  thread_local const bool started = SUCCEEDED(OleInitialize(nullptr));
  return started;
}

}  // namespace

IDropTarget* MakeDropTarget(HWND window) {
  return new NativeTarget(window);
}

bool RegisterDrops(HWND window, bool on) {
  if (!StartOle()) return false;
  if (!on) return SUCCEEDED(RevokeDragDrop(window));
  const CountedReference<IDropTarget> target(MakeDropTarget(window));
  return SUCCEEDED(RegisterDragDrop(window, target.Get()));
}

DROPEFFECT RunNativeDrag(const TransferData& content, DROPEFFECT allowed) {
  if (!StartOle()) return DROPEFFECT_NONE;
  // The system takes the mouse for itself; a window that still thought to have it would wait for a
  // release that never comes.
  ReleaseCapture();
  const CountedReference<IDataObject> data(MakeDataObject(content));
  const CountedReference<IDropSource> source(new NativeSource);
  given_up = false;
  const auto drag = [&] {
    DWORD done = DROPEFFECT_NONE;
    const HRESULT end = DoDragDrop(data.Get(), source.Get(), allowed, &done);
    // A target may answer with effects that were not offered.
    return end == DRAGDROP_S_DROP ? done & allowed : DROPEFFECT{DROPEFFECT_NONE};
  };
  return SystemLoop::Run(drag, [] { given_up = true; });
}

}  // namespace lorv
