#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <new>
#include <utility>

#include "platform/ports/device_images.h"

// There are neither resources nor bitmaps of a system: both are tables in memory.
namespace lorv {
namespace {

struct KeptBitmap {
  SIZE size = {0, 0};
  std::vector<DWORD> pixels;
};

class PosixDeviceImages : public DeviceImages {
 public:
  void AddResource(HINSTANCE module, unsigned number, std::string_view bitmap) {
    const std::lock_guard<std::mutex> lock(mutex_);
    resources_[{module, number}] = bitmap;
  }

  std::string BitmapResource(HINSTANCE module, unsigned number) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = resources_.find({module, number});
    return found == resources_.end() ? std::string() : std::string(found->second);
  }

  HBITMAP MakeBitmap(const PixelImage& image) override {
    if (image.pixels == nullptr || image.width <= 0 || image.height <= 0) return nullptr;
    const std::size_t count = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    try {
      KeptBitmap bitmap = {{image.width, image.height}, std::vector<DWORD>(count)};
      std::transform(image.pixels, image.pixels + count, bitmap.pixels.begin(), OverBlack);
      const std::lock_guard<std::mutex> lock(mutex_);
      // A number is never given twice, so that the handle of a bitmap that was deleted names nothing.
      const auto handle = reinterpret_cast<HBITMAP>(++last_);
      bitmaps_[handle] = std::move(bitmap);
      return handle;
    } catch (const std::bad_alloc&) {
      // The port answers null, as the system does where it has no memory for a bitmap.
      return nullptr;
    }
  }

  bool EndBitmap(HBITMAP bitmap) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    return bitmaps_.erase(bitmap) != 0;
  }

  bool ReadBitmap(HBITMAP bitmap, SIZE& size, std::vector<DWORD>& pixels) override {
    const std::lock_guard<std::mutex> lock(mutex_);
    const auto found = bitmaps_.find(bitmap);
    if (found == bitmaps_.end()) return false;
    size = found->second.size;
    pixels = found->second.pixels;
    return true;
  }

  // There are no contexts of a system here: those of the library are found before this is asked.
  bool Draw(HDC /*context*/, const PixelImage& /*image*/, const RECT& /*to*/) override { return false; }

 private:
  std::mutex mutex_;
  std::map<std::pair<HINSTANCE, unsigned>, std::string_view> resources_;
  std::map<HBITMAP, KeptBitmap> bitmaps_;
  std::uintptr_t last_ = 0;
};

// Never ended: bitmaps of other statics may end later.
PosixDeviceImages& OwnImages() {
  static auto* const images = new PosixDeviceImages;
  return *images;
}

}  // namespace

DeviceImages& NativeDeviceImages() {
  return OwnImages();
}

void AddBitmapResource(HINSTANCE module, unsigned number, std::string_view bitmap) {
  OwnImages().AddResource(module, number, bitmap);
}

}  // namespace lorv
