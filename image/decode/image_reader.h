#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/native/export.h"
#include "image/decode/raster.h"

// Images of files, by their content: GIF, PNG, JPEG, BMP, ICO and TIFF, decoded here and so alike on every
// system.
namespace lorv {

enum class ImageKind : int { kGif, kPng, kJpeg, kBmp, kIcon, kTiff };

// An opened image. Belongs to one thread at a time.
class COMM_LORV_API ImageReader {
 public:
  ImageReader() = default;
  ImageReader(const ImageReader&) = delete;
  ImageReader& operator=(const ImageReader&) = delete;
  virtual ~ImageReader() = default;

  virtual ImageKind Kind() const = 0;
  virtual int Width() const = 0;
  virtual int Height() const = 0;
  virtual int FrameCount() const { return 1; }
  // Width and height of a frame: pages of a TIFF differ, in all other kinds each frame is as large as the
  // whole.
  virtual std::pair<int, int> FrameSize(int /*index*/) const { return {Width(), Height()}; }

  // An entry a frame, in hundredths of a second as the file has them, 0 for a frame without one. Empty where
  // the file has no entries, and for a single frame.
  virtual const std::vector<unsigned>& Delays() const = 0;

  // The whole picture as it stands once that frame is drawn, in any order of frames. Valid until the next
  // call. A page of a TIFF whose data are damaged has what came before the damage.
  virtual const Raster& Frame(int index) = 0;

  // A second reader of the same file, for another thread: it shares the bytes, which are constant, and has
  // frames of its own.
  virtual std::unique_ptr<ImageReader> Clone() const = 0;
};

// Null for what is no image of these kinds, is damaged, or claims more than `kMostPixels`. Of an icon the
// largest picture counts. A JPEG whose end is missing has what came, a GIF the frames before the damage, a
// TIFF the pages before the first directory that is damaged or has been there before.
COMM_LORV_API std::unique_ptr<ImageReader> OpenImage(std::string bytes);

}  // namespace lorv
