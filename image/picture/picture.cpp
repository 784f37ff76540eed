#include "image/picture/picture.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <string>

#include "image/decode/image_decoders.h"
#include "image/decode/image_reader.h"
#include "image/decode/still_image.h"
#include "platform/ports/device_images.h"
#include "platform/ports/platform.h"

// Images of the library's own decoders, with the status that callers of the system's imaging library know:
// kept by calls that fail, cleared when it is read.
namespace lorv {
namespace {

class DecodedPicture final : public Picture {
 public:
  explicit DecodedPicture(std::unique_ptr<ImageReader> reader) : reader_(std::move(reader)) {
    good_ = reader_ != nullptr;
  }

  std::unique_ptr<Picture> Clone() override {
    auto clone = std::make_unique<DecodedPicture>(Has() ? reader_->Clone() : nullptr);
    clone->frame_ = frame_;
    return clone;
  }
  bool TakeStatus() override { return std::exchange(good_, true); }
  std::pair<int, int> Size() override { return Has() ? reader_->FrameSize(frame_) : std::pair<int, int>(); }
  bool IsGif() override { return Has() && reader_->Kind() == ImageKind::kGif; }
  int DimensionCount() override { return Has() ? 1 : 0; }
  int FrameCount() override { return Has() ? reader_->FrameCount() : 0; }
  void SelectFrame(int frame) override {
    if (Has() && frame >= 0 && frame < reader_->FrameCount()) frame_ = frame;
  }
  const Raster* Pixels() override {
    if (!Has()) return nullptr;
    try {
      return &reader_->Frame(frame_);
    } catch (const std::bad_alloc&) {
      // The file was fine when it was opened; only this frame has no room now.
      good_ = false;
      return nullptr;
    }
  }
  bool ReadDelays(DelayProperty& delays) override {
    if (!Has() || reader_->Delays().empty()) return false;
    delays.type = kLongEntries;
    delays.entries.assign(reader_->Delays().begin(), reader_->Delays().end());
    return true;
  }

 private:
  bool Has() {
    good_ = good_ && reader_ != nullptr;
    return reader_ != nullptr;
  }

  std::unique_ptr<ImageReader> reader_;
  bool good_;
  int frame_ = 0;
};

// Empty for what is no file, or more than is read.
std::string BytesOf(const CString& path) {
  const auto facts = PortsInForce().files->Facts(path);
  // A pipe or a device has no size, and reading it may never end.
  if (!facts || facts->IsFolder() || facts->is_stream || facts->size > kMostImageBytes) return {};
  const auto file = PortsInForce().files->Open(path, FileUse::kRead);
  if (file == nullptr) return {};
  std::string bytes(static_cast<std::size_t>(facts->size), '\0');
  const std::int64_t read = file->Read(bytes.data(), bytes.size());
  bytes.resize(static_cast<std::size_t>(std::max<std::int64_t>(read, 0)));
  return bytes;
}

class DecodedPictures final : public PictureLoader {
 public:
  std::unique_ptr<Picture> LoadFile(const CString& path) override {
    return Load([&] { return OpenImage(BytesOf(path)); });
  }
  std::unique_ptr<Picture> LoadResource(HINSTANCE module, unsigned number) override {
    return Load([&]() -> std::unique_ptr<ImageReader> {
      Raster raster;
      if (!DecodeDib(NativeDeviceImages().BitmapResource(module, number), 0, false, raster)) return nullptr;
      return std::make_unique<StillImage>(ImageKind::kBmp, std::move(raster));
    });
  }

 private:
  // An image too large for the memory at hand is one that cannot be loaded.
  template <class Opener>
  static std::unique_ptr<Picture> Load(Opener open) {
    try {
      return std::make_unique<DecodedPicture>(open());
    } catch (const std::bad_alloc&) {
      return std::make_unique<DecodedPicture>(nullptr);
    }
  }
};

std::atomic<PictureLoader*> in_force{nullptr};

}  // namespace

PictureLoader& PicturesInForce() {
  static DecodedPictures own;
  PictureLoader* const other = in_force.load(std::memory_order_acquire);
  return other != nullptr ? *other : own;
}

ScopedPictures::ScopedPictures(PictureLoader& loader) : before_(in_force.exchange(&loader)) {}

ScopedPictures::~ScopedPictures() {
  in_force.store(before_);
}

}  // namespace lorv
