#include "platform/win32/desktop/drag_data.h"
#include "platform/win32/desktop/global_data.h"
#include "platform/win32/desktop/win32_desktop.h"
#include "platform/win32/desktop/win32_drag.h"
#include "platform/win32/services/system_object.h"
#include "tests/platform/exchange/drop_suite.h"
#include "tests/platform/win32/real_input.h"

namespace lorv_test {
namespace {

// The calls of the system's drag, to the object that the window gave it.
class CalledDrag : public DragUser {
 public:
  CalledDrag(const lorv::TransferData& data, DROPEFFECT allowed)
      : data_(lorv::MakeDataObject(data)), allowed_(allowed) {}

  DROPEFFECT Move(HWND window, POINT client, DWORD keys) override {
    const POINTL at = On(window, client);
    DWORD effect = allowed_;
    if (target_ == nullptr) {
      target_ = std::make_unique<lorv::CountedReference<IDropTarget>>(lorv::MakeDropTarget(window));
      EXPECT_EQ(target_->Get()->DragEnter(data_.Get(), keys, at, &effect), S_OK);
    } else {
      EXPECT_EQ(target_->Get()->DragOver(keys, at, &effect), S_OK);
    }
    return effect;
  }
  void Leave(HWND /*window*/) override { EXPECT_EQ(target_->Get()->DragLeave(), S_OK); }
  DROPEFFECT Drop(HWND window, POINT client, DWORD keys) override {
    DWORD effect = allowed_;
    EXPECT_EQ(target_->Get()->Drop(data_.Get(), keys, On(window, client), &effect), S_OK);
    return effect;
  }

 private:
  static POINTL On(HWND window, POINT client) {
    ClientToScreen(window, &client);
    return {client.x, client.y};
  }
  lorv::CountedReference<IDataObject> data_;
  DROPEFFECT allowed_;
  std::unique_ptr<lorv::CountedReference<IDropTarget>> target_;
};

struct SystemWindowDrops {
  static std::unique_ptr<lorv::Desktop> Make() { return lorv::MakeWin32Desktop(); }
  static std::unique_ptr<DragUser> Bring(lorv::Desktop& /*desktop*/, const lorv::TransferData& data,
                                         DROPEFFECT allowed) {
    return std::make_unique<CalledDrag>(data, allowed);
  }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Win32, DropIn, SystemWindowDrops);

// A real drag by the mouse, from one window to another.
class NativeDrag : public RealWindows {};

TEST_F(NativeDrag, IsDroppedWhereTheButtonComesUp) {
  CWnd frame;
  CWnd sheet;
  NotedTarget target;
  frame.Create(nullptr, _T("frame"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 600, 500), nullptr, 0);
  sheet.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(20, 20, 120, 100), &frame, 7);
  frame.SetForegroundWindow();
  Settle();
  ASSERT_TRUE(target.Register(&sheet));
  POINT at = {200, 200};
  frame.ClientToScreen(&at);
  MoveMouse(at);
  Button(true);
  POINT goal = {10, 11};
  sheet.ClientToScreen(&goal);
  // The system's loop asks for the mouse at its own pace.
  std::thread user([goal] {
    Sleep(300);
    SetCursorPos(goal.x, goal.y);
    Sleep(300);
    INPUT up = {};
    up.type = INPUT_MOUSE;
    up.mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(1, &up, sizeof(up));
  });
  COleDataSource source;
  source.SetText(_T("C30"));
  const DROPEFFECT done = source.DoDragDrop(DROPEFFECT_COPY);
  user.join();
  EXPECT_EQ(done, static_cast<DROPEFFECT>(DROPEFFECT_COPY));
  EXPECT_EQ(target.notes, (Notes{"enter 10,11", "drop 10,11 by 1: C30"}));
}

TEST_F(NativeDrag, TheEndOfTheProgramGivesItUpAndComesToTheLoopAround) {
  CWnd frame;
  frame.Create(nullptr, _T("frame"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 600, 500), nullptr, 0);
  frame.SetForegroundWindow();
  Settle();
  MoveMouse({200, 200});
  Button(true);
  std::thread user([this] {
    Sleep(300);
    Desk().Post(nullptr, WM_QUIT, 9, 0);
  });
  COleDataSource source;
  source.SetText(_T("C30"));
  EXPECT_EQ(source.DoDragDrop(DROPEFFECT_COPY), static_cast<DROPEFFECT>(DROPEFFECT_NONE));
  user.join();
  bool ended = false;
  for (int i = 0; i < 100 && !ended; ++i) ended = !Desk().Pump(false) && Desk().QuitCode().has_value();
  EXPECT_EQ(Desk().QuitCode(), 9);
  Button(false);
}

TEST(DataObject, GivesTheFormatsThatItHasAndNoOther) {
  lorv::TransferData content;
  content.SetText(_T("x"));
  content.Set(_T("application/x-lorv-cells"), {9});
  const lorv::CountedReference<IDataObject> data(lorv::MakeDataObject(content));
  FORMATETC text = {CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
  EXPECT_EQ(data->QueryGetData(&text), S_OK);
  EXPECT_EQ(data->QueryGetData(nullptr), E_POINTER);
  STGMEDIUM medium = {};
  ASSERT_EQ(data->GetData(&text, &medium), S_OK);
  EXPECT_EQ(lorv::TextOfBlock(medium.hGlobal), CString(_T("x")));
  ReleaseStgMedium(&medium);
  text.cfFormat = CF_BITMAP;
  EXPECT_EQ(data->GetData(&text, &medium), DV_E_FORMATETC);
  text.tymed = TYMED_ISTREAM;
  EXPECT_EQ(data->QueryGetData(&text), DV_E_TYMED);
  IEnumFORMATETC* list = nullptr;
  ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, &list), S_OK);
  const lorv::CountedReference<IEnumFORMATETC> formats(list);
  FORMATETC room[3] = {};
  ULONG got = 0;
  EXPECT_EQ(formats->Next(3, room, &got), S_FALSE);
  EXPECT_EQ(got, 2U);
  EXPECT_EQ(room[0].cfFormat, CF_UNICODETEXT);
  EXPECT_EQ(formats->Reset(), S_OK);
  EXPECT_EQ(formats->Skip(2), S_OK);
  EXPECT_EQ(formats->Skip(1), S_FALSE);
  EXPECT_EQ(data->EnumFormatEtc(DATADIR_SET, &list), E_NOTIMPL);
}

}  // namespace
}  // namespace lorv_test
