#include "framework/windows/dialog.h"

#include <utility>
#include <vector>

#include "framework/drawing/device_context.h"
#include "framework/drawing/dots.h"

// Dialogs made from a template that is data: building, the modal loop, closing. After each call that can
// reach a handler the window is looked for again, as any handler may destroy it or end the dialog.

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, OnOK)
ON_COMMAND(IDCANCEL, OnCancel)
ON_WM_CLOSE()
ON_MESSAGE(DM_GETDEFID, HandleGetDefault)
ON_MESSAGE(DM_SETDEFID, HandleSetDefault)
ON_MESSAGE(WM_DPICHANGED, HandleDpiChanged)
END_MESSAGE_MAP()

CDialog::~CDialog() = default;

INT_PTR CDialog::DoModal() {
  // Without a form there is nothing to ask; a dialog that is up cannot be asked a second time.
  if (form_ == nullptr || m_hWnd != nullptr) return -1;
  // Before the window is made: a handler of its making may end the dialog already.
  modal_ = true;
  ended_ = false;
  result_ = -1;
  // Without a parent the active window is the owner: it is disabled while the dialog runs.
  if (!Build(*form_, parent_ != nullptr ? parent_ : GetActiveWindow())) return -1;
  Start();
  const HWND window = m_hWnd;
  if (window != nullptr && !ended_) ShowWindow(SW_SHOW);
  // Showing it moves the focus, and a handler of that may end it: nothing would wake the loop any more.
  if (window != nullptr && m_hWnd == window && !ended_) Run(window);
  // The window may have gone without EndDialog; then there is no answer.
  DestroyWindow();
  modal_ = false;
  return result_;
}

// What a handler throws leaves no dialog behind.
void CDialog::Run(HWND window) {
  try {
    lorv::DesktopInForce().RunModal(window);
  } catch (...) {
    modal_ = false;
    DestroyWindow();
    throw;
  }
}

BOOL CDialog::Create(const lorv::DialogTemplate& form, CWnd* parent) {
  form_ = &form;
  modal_ = false;
  if (!Build(form, parent)) return FALSE;
  const HWND window = m_hWnd;
  Start();
  if (lorv::MappedWindow(window) != this) return FALSE;
  if ((form.style & WS_VISIBLE) != 0) ShowWindow(SW_SHOW);
  return TRUE;
}

void CDialog::EndDialog(int result) {
  result_ = result;
  ended_ = true;
  if (m_hWnd == nullptr) return;
  // Hidden at once, though the loop ends later: the user has answered.
  lorv::PeerOf(m_hWnd)->Show(SW_HIDE);
  if (modal_ && m_hWnd != nullptr) lorv::DesktopInForce().EndModal(m_hWnd);
}

namespace {

LOGFONT Scaled(LOGFONT face, int dots, int before) {
  face.lfHeight = lorv::ForDots(face.lfHeight, dots, before);
  return face;
}

CRect Scaled(const CRect& place, int dots, int before) {
  const auto scaled = [=](LONG length) { return lorv::ForDots(length, dots, before); };
  return {scaled(place.left), scaled(place.top), scaled(place.right), scaled(place.bottom)};
}

// Through the window's object where there is one, as that keeps the font that it was last asked for.
void GiveFont(HWND window, const LOGFONT& face) {
  CFont font(face);
  if (CWnd* const object = CWnd::FromHandlePermanent(window)) return object->SetFont(&font, FALSE);
  lorv::PeerOf(window)->SetFont(face);
}

}  // namespace

// On another screen all that stands in the dialog grows with it, items of the template or not. A handler of
// one of the children may end the dialog meanwhile.
LRESULT CDialog::HandleDpiChanged(WPARAM w, LPARAM l) {
  const int dots = LOWORD(w);
  if (dots == 0 || dots == dots_) return 0;
  const CPoint corner(reinterpret_cast<const RECT*>(l)->left, reinterpret_cast<const RECT*>(l)->top);
  const int before = std::exchange(dots_, dots);
  face_ = Scaled(face_, dots, before);
  base_ = {lorv::ForDots(base_.cx, dots, before), lorv::ForDots(base_.cy, dots, before)};
  const HWND window = m_hWnd;
  const LOGFONT face = face_;
  const auto peer = lorv::PeerOf(window);
  const CRect client(peer->ClientRect());
  const CSize inner = Scaled(client, dots, before).Size();
  struct Inside {
    HWND window;
    CRect place;
    LOGFONT face;
  };
  std::vector<Inside> inside;
  const CSize origin{CPoint(peer->ClientOrigin())};
  // All places and fonts are taken before the first changes: a child that is moved may move others, and a
  // grid takes its font along by itself.
  for (const HWND child : peer->Children()) {
    const auto window_of = lorv::PeerOf(child);
    inside.push_back({child, CRect(window_of->WindowRect()) - static_cast<SIZE>(origin), window_of->Font()});
  }
  peer->Place(CRect(corner, peer->FrameSize(inner)));
  GiveFont(window, face);
  for (const Inside& one : inside) {
    // The font first, as some controls fit their height to it.
    GiveFont(one.window, Scaled(one.face, dots, before));
    lorv::PeerOf(one.window)->Place(Scaled(one.place, dots, before));
  }
  return 0;
}

// The units of a dialog come from its font: the average of the letters, and its height.
void CDialog::Measure(const lorv::DialogTemplate& form, int dots) {
  static const CString letters(_T("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
  CFont font;
  font.CreatePointFont(form.points * 10, form.font);
  face_ = font.Face();
  const auto canvas = lorv::DesktopInForce().MakeCanvas({1, 1});
  dots_ = dots == 0 ? canvas->Dpi() : dots;
  face_ = Scaled(face_, dots_, lorv::kUsualDpi);
  canvas->SetFont(face_);
  // The system's own formula: twice the average of 52 letters, halved with rounding; so dialogs have their
  // known sizes.
  base_ = {(canvas->Extent(letters.View()).cx / 26 + 1) / 2, canvas->Metrics().tmHeight};
}

void CDialog::MapDialogRect(LPRECT rect) const {
  // A quarter of a letter's width and an eighth of its height: the units of dialog templates.
  const auto across = [this](LONG units) { return (units * base_.cx + 2) / 4; };
  const auto down = [this](LONG units) { return (units * base_.cy + 4) / 8; };
  *rect = {across(rect->left), down(rect->top), across(rect->right), down(rect->bottom)};
}

// The template's size is that of the client area; the window stands in the middle of its owner or screen.
CRect CDialog::MiddleOf(const lorv::DialogTemplate& form, const CWnd* parent) const {
  RECT client = {0, 0, form.width, form.height};
  MapDialogRect(&client);
  const CSize size(lorv::PeerOf(m_hWnd)->FrameSize(CRect(client).Size()));
  const CRect around(parent == nullptr ? lorv::DesktopInForce().WorkArea({0, 0})
                                       : lorv::PeerOf(parent->m_hWnd)->WindowRect());
  return {around.CenterPoint() - CSize(size.cx / 2, size.cy / 2), static_cast<SIZE>(size)};
}

BOOL CDialog::Build(const lorv::DialogTemplate& form, CWnd* parent) {
  Measure(form, 0);
  RECT client = {0, 0, form.width, form.height};
  MapDialogRect(&client);
  lorv::WindowRequest request;
  request.kind = lorv::WindowKind::Dialog;
  request.text = form.caption;
  // Shown when it is whole: the items come after it.
  request.style = lorv::Without(form.style, WS_VISIBLE);
  request.place = client;
  request.parent = parent == nullptr ? nullptr : parent->m_hWnd;
  if (!Make(request) || m_hWnd == nullptr) return FALSE;
  const auto peer = lorv::PeerOf(m_hWnd);
  peer->Place(MiddleOf(form, parent));
  // Which screen it stands on is known now only: another one may have other dots than the first.
  if (peer->Exists() && peer->Dpi() != dots_) {
    Measure(form, peer->Dpi());
    peer->Place(MiddleOf(form, parent));
  }
  peer->SetFont(face_);
  BuildItems(form);
  return m_hWnd != nullptr;
}

void CDialog::BuildItems(const lorv::DialogTemplate& form) {
  for (const lorv::DialogItem& item : form.items) {
    CRect place(CPoint(item.x, item.y), CSize(item.width, item.height));
    MapDialogRect(place);
    lorv::WindowRequest request;
    request.kind = item.kind;
    request.text = item.text;
    request.style = item.style | WS_CHILD | WS_VISIBLE;
    request.place = place;
    request.parent = m_hWnd;
    request.id = item.id;
    request.attach = [](HWND) {};
    const HWND made = lorv::DesktopInForce().Create(request);
    // Each control by itself: a font is not handed down to children.
    lorv::PeerOf(made)->SetFont(face_);
    const UINT kind = item.style & BS_TYPEMASK;
    if (item.kind == lorv::WindowKind::Button && kind == BS_DEFPUSHBUTTON) default_id_ = item.id;
  }
}

void CDialog::Start() {
  const HWND window = m_hWnd;
  const BOOL wants_focus = OnInitDialog();
  // A class that has set the focus itself says so by 0.
  if (lorv::MappedWindow(window) != this || wants_focus == 0) return;
  if (form_ != nullptr && (!modal_ || !ended_)) Step(true);
}

void CDialog::OnClose() {
  SendMessage(WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED));
}

LRESULT CDialog::HandleGetDefault(WPARAM /*w*/, LPARAM /*l*/) {
  constexpr int kHasDefault = 0x534B;
  return MAKELONG(static_cast<LONG_PTR>(default_id_), kHasDefault);
}

LRESULT CDialog::HandleSetDefault(WPARAM w, LPARAM /*l*/) {
  SetDefID(static_cast<UINT>(w));
  return TRUE;
}
