#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/native/export.h"
#include "framework/ports/canvas_port.h"

// Pictures in the system's own terms: bitmaps in a module's resources, bitmaps and contexts by their handles.
// Any thread.
namespace lorv {

class COMM_LORV_API DeviceImages {
 public:
  DeviceImages() = default;
  DeviceImages(const DeviceImages&) = delete;
  DeviceImages& operator=(const DeviceImages&) = delete;
  virtual ~DeviceImages() = default;

  // A bitmap without its file header; empty where the module has none of that number. A null module is the
  // main program. Off Windows modules have no resources: what AddBitmapResource was given is found.
  virtual std::string BitmapResource(HINSTANCE module, unsigned number) = 0;

  // A bitmap of those pixels laid over black, the caller's to delete by EndBitmap; null for lack of memory.
  virtual HBITMAP MakeBitmap(const PixelImage& image) = 0;
  // False for a handle that names no bitmap.
  virtual bool EndBitmap(HBITMAP bitmap) = 0;
  // Its pixels from the top down, each 0xFFRRGGBB. False, and both are as before, for what is no bitmap.
  virtual bool ReadBitmap(HBITMAP bitmap, SIZE& size, std::vector<DWORD>& pixels) = 0;

  // Draws on a context of the system's, stretched to the rectangle. False for a handle that is none.
  virtual bool Draw(HDC context, const PixelImage& image, const RECT& to) = 0;
};

COMM_LORV_API DeviceImages& NativeDeviceImages();

// Programs that show a bitmap ignore alpha: transparent pixels must not show a colour of their own.
inline DWORD OverBlack(DWORD pixel) {
  const DWORD alpha = pixel >> 24;
  const auto part = [&](unsigned shift) { return ((pixel >> shift & 255) * alpha + 127) / 255 << shift; };
  return 0xFF000000 | part(16) | part(8) | part(0);
}

// Off Windows: gives a module a bitmap of that number, compiled into the program. `bitmap` has no file header
// and must live as long as it may be asked for; given again, the last one counts. Windows finds what the
// module's resources have, and this does nothing there.
COMM_LORV_API void AddBitmapResource(HINSTANCE module, unsigned number, std::string_view bitmap);

}  // namespace lorv
