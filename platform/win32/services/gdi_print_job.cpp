#include "platform/win32/services/gdi_print_job.h"

#include "platform/win32/drawing/gdi_canvas.h"

// A print job of the system, for pages of text and for pages that are drawn on. A page that is drawn on may
// outlive its job: it asks through a pointer that the job clears.

namespace lorv {
namespace {

// An inch has 72 points.
constexpr int kTenthsPerInch = 720;

}  // namespace

GdiPrintJob::~GdiPrintJob() {
  if (page_ != nullptr) *page_ = nullptr;
  // A job that was not ended prints nothing.
  if (begun_) AbortDoc(context_);
  if (former_ != nullptr) SelectObject(context_, former_);
  if (font_ != nullptr) DeleteObject(font_);
  if (ending_ == Ending::kDelete) DeleteDC(context_);
}

bool GdiPrintJob::Begin(LPCTSTR document, const PageWays& ways) {
  // A metafile is one page of no document.
  if (!IsMetafile() && !(BeginDocument(document) && StartPage(context_) > 0)) return false;
  UseWays(ways);
  return true;
}

bool GdiPrintJob::BeginDocument(LPCTSTR name) {
  DOCINFOW info = {};
  info.cbSize = sizeof(info);
  info.lpszDocName = name;
  begun_ = StartDocW(context_, &info) > 0;
  return begun_;
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
  // Negative: the height of the letters, without the room above them.
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

// What is drawn on it goes to the paper as long as the job says so.
class GdiPrintJob::Page : public GdiTarget {
 public:
  explicit Page(std::shared_ptr<HDC> context) : context_(std::move(context)) {}
  HDC Context() override { return *context_; }
  SIZE Size() const override {
    return {GetDeviceCaps(*context_, HORZRES), GetDeviceCaps(*context_, VERTRES)};
  }

 private:
  std::shared_ptr<HDC> context_;
};

bool GdiPrintJob::BeginPages(LPCTSTR document) {
  return IsMetafile() || BeginDocument(document);
}

std::shared_ptr<Canvas> GdiPrintJob::NextPage() {
  EndThisPage();
  if (IsMetafile() ? pages_ > 0 : !begun_ || StartPage(context_) <= 0) return nullptr;
  ++pages_;
  page_ = std::make_shared<HDC>(context_);
  return std::make_shared<GdiCanvas>(std::make_unique<Page>(page_));
}

void GdiPrintJob::EndThisPage() {
  if (page_ == nullptr) return;
  *page_ = nullptr;
  page_.reset();
  if (!IsMetafile()) EndPage(context_);
}

void GdiPrintJob::End() {
  const bool drawn = page_ != nullptr;
  EndThisPage();
  if (!begun_) return;
  // The page that Begin started.
  if (!drawn) EndPage(context_);
  EndDoc(context_);
  begun_ = false;
}

}  // namespace lorv
