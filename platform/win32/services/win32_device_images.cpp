#include <algorithm>

#include "platform/ports/device_images.h"
#include "platform/win32/drawing/gdi_canvas.h"

// Images where the system's own handles come in: bitmaps of resources, bitmaps that callers hand on to the
// system, and drawing on contexts that another program part made. A handle is looked at before it is used, as
// callers pass what they have, stale ones too.

namespace lorv {
namespace {

// A context that somebody else has made and ends.
class BorrowedTarget : public GdiTarget {
 public:
  explicit BorrowedTarget(HDC context) : context_(context) {}
  HDC Context() override { return context_; }
  SIZE Size() const override { return {GetDeviceCaps(context_, HORZRES), GetDeviceCaps(context_, VERTRES)}; }

 private:
  HDC context_;
};

bool IsContext(HDC handle) {
  const DWORD kind = GetObjectType(handle);
  return kind == OBJ_DC || kind == OBJ_MEMDC || kind == OBJ_ENHMETADC;
}

BITMAPINFO InfoOf(int width, int height) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  // Negative: the first row is the top one, as in our pictures.
  info.bmiHeader.biHeight = -height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  return info;
}

class Win32DeviceImages : public DeviceImages {
 public:
  std::string BitmapResource(HINSTANCE module, unsigned number) override {
    // The numbers of resources have 16 bits; a larger one would be taken for the address of a name.
    if (number == 0 || number > 0xFFFF) return {};
    // The number 2 is the system's kind "bitmap".
    const HRSRC found =
        FindResourceW(module, MAKEINTRESOURCEW(static_cast<WORD>(number)), MAKEINTRESOURCEW(2));
    if (found == nullptr) return {};
    const HGLOBAL loaded = LoadResource(module, found);
    const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr) return {};
    return {static_cast<const char*>(bytes), SizeofResource(module, found)};
  }

  HBITMAP MakeBitmap(const PixelImage& image) override {
    if (image.pixels == nullptr || image.width <= 0 || image.height <= 0) return nullptr;
    const BITMAPINFO info = InfoOf(image.width, image.height);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap == nullptr) return nullptr;
    const std::size_t count = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    std::transform(image.pixels, image.pixels + count, static_cast<DWORD*>(bits), OverBlack);
    return bitmap;
  }

  bool EndBitmap(HBITMAP bitmap) override {
    return GetObjectType(bitmap) == OBJ_BITMAP && DeleteObject(bitmap) != 0;
  }

  bool ReadBitmap(HBITMAP bitmap, SIZE& size, std::vector<DWORD>& pixels) override {
    BITMAP facts = {};
    if (GetObjectType(bitmap) != OBJ_BITMAP || GetObjectW(bitmap, sizeof(facts), &facts) == 0) return false;
    std::vector<DWORD> read(static_cast<std::size_t>(facts.bmWidth) *
                            static_cast<std::size_t>(facts.bmHeight));
    BITMAPINFO info = InfoOf(facts.bmWidth, facts.bmHeight);
    const HDC screen = GetDC(nullptr);
    const int rows =
        GetDIBits(screen, bitmap, 0, static_cast<UINT>(facts.bmHeight), read.data(), &info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    // A bitmap that is selected somewhere cannot be read: no picture is better than half of one.
    if (rows != facts.bmHeight) return false;
    // The system leaves the fourth byte as it likes; a bitmap of its own has no alpha.
    for (DWORD& pixel : read) pixel |= 0xFF000000;
    size = {facts.bmWidth, facts.bmHeight};
    pixels = std::move(read);
    return true;
  }

  bool Draw(HDC context, const PixelImage& image, const RECT& to) override {
    if (!IsContext(context)) return false;
    GdiCanvas(std::make_unique<BorrowedTarget>(context)).Image(image, to);
    return true;
  }
};

}  // namespace

DeviceImages& NativeDeviceImages() {
  static Win32DeviceImages images;
  return images;
}

// Modules have their resources from the linker here; elsewhere they are given by this call.
void AddBitmapResource(HINSTANCE /*module*/, unsigned /*number*/, std::string_view /*bitmap*/) {}

}  // namespace lorv
