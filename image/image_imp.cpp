#include "image/image_imp.h"

#include <algorithm>
#include <limits>

#include "framework/drawing/context_handles.h"
#include "framework/drawing/device_context.h"
#include "framework/objects/exceptions.h"
#include "platform/ports/device_images.h"
#include "platform/ports/platform.h"

// The test at the start of each operation was made by TImage, which cleared the status; made here once more
// it would always pass, and is not.
namespace {

constexpr int kUsualDelay = 100;
constexpr int kMillisecondsASecond = 1000;
constexpr int kEntriesASecond = 100;

lorv::PixelImage PixelsOf(const lorv::Raster& raster) {
  static_assert(sizeof(DWORD) == sizeof(std::uint32_t));
  return {raster.width, raster.height, reinterpret_cast<const DWORD*>(raster.pixels.data())};
}

// A context of ours knows its origin and clip; all others are the system's.
bool DrawOn(HDC context, const lorv::Raster& raster, const CRect& rect) {
  const lorv::PixelImage image = PixelsOf(raster);
  if (CDC* const own = lorv::ContextOf(context); own != nullptr) {
    own->DrawImage(image, rect);
    return true;
  }
  return context != nullptr && lorv::NativeDeviceImages().Draw(context, image, rect);
}

// What the framework throws is shown to the user and is over.
void Report(CException* caught) {
  constexpr int kMostText = 256;
  TCHAR text[kMostText] = {};
  caught->GetErrorMessage(text, kMostText);
  caught->Delete();
  lorv::PortsInForce().dialogs->ShowMessage({CString(text), CString(), lorv::kButtonsOk});
}

}  // namespace

std::unique_ptr<TImageImp> TImageImp::Clone() const {
  // A loader that threw has left nothing.
  return std::make_unique<TImageImp>(picture_ == nullptr ? nullptr : picture_->Clone());
}

int TImageImp::Replace(std::unique_ptr<lorv::Picture> (*load)(const void* source), const void* source) {
  // The old one goes first: two large images may be more than there is room for.
  picture_.reset();
  picture_ = load(source);
  return picture_->TakeStatus() ? 1 : 0;
}

int TImageImp::ReadDim(CSize& size) const {
  const auto [width, height] = picture_->Size();
  if (width <= 0 || height <= 0) return 0;
  size = CSize(width, height);
  return 1;
}

int TImageImp::CountFrames() const {
  return picture_->DimensionCount() == 0 ? 0 : picture_->FrameCount();
}

void TImageImp::Select(int frame) const {
  try {
    picture_->SelectFrame(frame);
  } catch (CException* caught) {
    Report(caught);
  }
}

int TImageImp::Draw(HDC context, const CRect& rect, int frame) const {
  const int count = CountFrames();
  Select(frame == -1 || frame >= count ? 0 : frame);
  const lorv::Raster* const raster = picture_->Pixels();
  return raster != nullptr && DrawOn(context, *raster, rect) ? 1 : 0;
}

int TImageImp::MakeBitmap(HBITMAP& bitmap) const {
  bitmap = nullptr;
  const lorv::Raster* const raster = picture_->Pixels();
  if (raster == nullptr) return 1;
  bitmap = lorv::NativeDeviceImages().MakeBitmap(PixelsOf(*raster));
  return 1;
}

int TImageImp::DelayOf(int frame) const {
  lorv::DelayProperty delays;
  if (!picture_->IsGif() || !picture_->ReadDelays(delays)) return 0;
  // Another loader may have them in another form, of which nothing is known here.
  if (delays.type != lorv::kLongEntries) return kUsualDelay;
  if (frame < 0 || static_cast<std::size_t>(frame) >= delays.entries.size()) return 0;
  const std::int64_t entry = delays.entries[static_cast<std::size_t>(frame)];
  constexpr std::int64_t kMost = std::numeric_limits<int>::max();
  return static_cast<int>(std::min(kMost, entry * kMillisecondsASecond / kEntriesASecond));
}
