#include "platform/win32/services/gdi_print_job.h"

namespace lorv {
namespace {

constexpr int kTenthsPerInch = 720;

}  // namespace

GdiPrintJob::~GdiPrintJob() {
  if (begun_) AbortDoc(context_);
  if (former_ != nullptr) SelectObject(context_, former_);
  if (font_ != nullptr) DeleteObject(font_);
  if (ending_ == Ending::kDelete) DeleteDC(context_);
}

bool GdiPrintJob::Begin(LPCTSTR document, const PageWays& ways) {
  // A metafile is one page of no document.
  if (GetObjectType(context_) != OBJ_ENHMETADC && !BeginDocument(document)) return false;
  UseWays(ways);
  return true;
}

bool GdiPrintJob::BeginDocument(LPCTSTR name) {
  DOCINFOW info = {};
  info.cbSize = sizeof(info);
  info.lpszDocName = name;
  begun_ = StartDocW(context_, &info) > 0;
  return begun_ && StartPage(context_) > 0;
}

// The origin goes to the bottom before the font is made: its size counts in the page's own units.
void GdiPrintJob::UseWays(const PageWays& ways) {
  SetMapMode(context_, ways.mapping);
  SetViewportOrgEx(context_, 0, GetDeviceCaps(context_, VERTRES), nullptr);
  // From tenths of a point to device pixels, and from there to the page's units.
  POINT corners[] = {{0, 0},
                     {0, MulDiv(ways.tenths_of_points, GetDeviceCaps(context_, LOGPIXELSY), kTenthsPerInch)}};
  DPtoLP(context_, corners, 2);
  LOGFONTW face = {};
  face.lfHeight = -std::abs(corners[1].y - corners[0].y);
  face.lfCharSet = DEFAULT_CHARSET;
  lstrcpynW(face.lfFaceName, ways.face, LF_FACESIZE);
  font_ = CreateFontIndirectW(&face);
  former_ = SelectObject(context_, font_);
  SetTextAlign(context_, ways.align);
}

SIZE GdiPrintJob::Extent(LPCTSTR text) {
  SIZE extent = {0, 0};
  GetTextExtentPoint32W(context_, text, lstrlenW(text), &extent);
  return extent;
}

void GdiPrintJob::Text(int x, int y, LPCTSTR text) {
  TextOutW(context_, x, y, text, lstrlenW(text));
}

void GdiPrintJob::End() {
  if (!begun_) return;
  EndPage(context_);
  EndDoc(context_);
  begun_ = false;
}

}  // namespace lorv
