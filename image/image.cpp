#include "image/image.h"

#include "image/image_imp.h"
#include "platform/ports/device_images.h"

// The image object that applications hold: each operation tests the status first, as they know it, and leaves
// the work to what the object shares with those that were assigned from it.

namespace {

struct Resource {
  HINSTANCE module;
  unsigned number;
};

// Loaders are handed down as functions, as the old image goes before the new one is loaded.
std::unique_ptr<lorv::Picture> LoadFile(const void* path) {
  return lorv::PicturesInForce().LoadFile(*static_cast<const CString*>(path));
}

std::unique_ptr<lorv::Picture> LoadResource(const void* source) {
  const auto& resource = *static_cast<const Resource*>(source);
  return lorv::PicturesInForce().LoadResource(resource.module, resource.number);
}

}  // namespace

TImage::TImage(const CString& path) : imp_(new TImageImp(LoadFile(&path))) {}

TImage::TImage(HINSTANCE module, unsigned int resource)
    : imp_(new TImageImp(lorv::PicturesInForce().LoadResource(module, resource))) {}

// A copy stands for itself, an assignment shares: callers rely on the difference.
TImage::TImage(const TImage& other) : imp_(other.imp_->Clone().release()) {}

// Sharing before releasing keeps an image that is assigned to itself.
TImage& TImage::operator=(const TImage& other) {  // NOLINT(bugprone-unhandled-self-assignment)
  TImageImp* const shared = other.imp_->Share();
  imp_->Release();
  imp_ = shared;
  return *this;
}

TImage::~TImage() {
  imp_->Release();
}

bool TImage::IsValidImage() const {
  return imp_->IsValid();
}

int TImage::GetDim(CSize& size) const {
  return IsValidImage() ? imp_->ReadDim(size) : 0;
}

int TImage::SetImage(HINSTANCE module, unsigned int resource) {
  const Resource source = {module, resource};
  return IsValidImage() ? imp_->Replace(LoadResource, &source) : 0;
}

int TImage::SetImage(const CString& path) {
  return IsValidImage() ? imp_->Replace(LoadFile, &path) : 0;
}

int TImage::DrawImage(HDC context, const CRect& rect, int frame) const {
  return IsValidImage() ? imp_->Draw(context, rect, frame) : 0;
}

int TImage::GetBitmap(HBITMAP& bitmap, int /*frame*/) const {
  return IsValidImage() ? imp_->MakeBitmap(bitmap) : 0;
}

int TImage::GetFrameDelay(int frame) const {
  return IsValidImage() ? imp_->DelayOf(frame) : 0;
}

int TImage::GetFrameCount() const {
  return IsValidImage() ? imp_->CountFrames() : 0;
}

namespace lorv {

bool EndBitmap(HBITMAP bitmap) {
  return NativeDeviceImages().EndBitmap(bitmap);
}

}  // namespace lorv
