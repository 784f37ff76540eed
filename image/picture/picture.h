#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "framework/text/cstring.h"
#include "image/decode/raster.h"

// What an image object asks of a decoder: images with a selected frame and a status of their last call. One
// answer serves every system; a test may put another one in force.
namespace lorv {

// Entries as a file has them, with the code of their type.
struct DelayProperty {
  unsigned type = 0;  // kLongEntries: whole numbers without sign of 32 bits
  std::vector<std::uint32_t> entries;
};
constexpr unsigned kLongEntries = 4;

// An image, or what is left where none could be loaded: then every call fails. A call that fails because
// there is no image is kept in the status; a question that an image cannot answer, such as delays of a
// picture without any, is not.
// One thread at a time.
class Picture {
 public:
  Picture() = default;
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  virtual ~Picture() = default;

  // With the same frame selected; independent, for another thread too. Of nothing: one whose load failed.
  virtual std::unique_ptr<Picture> Clone() = 0;
  // Whether all went well since it was last asked.
  virtual bool TakeStatus() = 0;

  // Width and height of the selected frame; nothing, both 0, on failure.
  virtual std::pair<int, int> Size() = 0;
  virtual bool IsGif() = 0;
  // Kinds of frames: 1, or 0 on failure.
  virtual int DimensionCount() = 0;
  virtual int FrameCount() = 0;
  // A frame that is not there leaves the one that is selected.
  virtual void SelectFrame(int frame) = 0;
  // The pixels of the selected frame, valid until the next call; null on failure.
  virtual const Raster* Pixels() = 0;
  // False where there is no such property.
  virtual bool ReadDelays(DelayProperty& delays) = 0;
};

class PictureLoader {
 public:
  PictureLoader() = default;
  PictureLoader(const PictureLoader&) = delete;
  PictureLoader& operator=(const PictureLoader&) = delete;
  virtual ~PictureLoader() = default;

  // Never null: what cannot be loaded gives one with a bad status.
  virtual std::unique_ptr<Picture> LoadFile(const CString& path) = 0;
  virtual std::unique_ptr<Picture> LoadResource(HINSTANCE module, unsigned number) = 0;
};

// That of the innermost scope, else the decoders of this library.
PictureLoader& PicturesInForce();

// Puts a loader in force until its end, on one thread, while no other works with images.
class ScopedPictures {
 public:
  explicit ScopedPictures(PictureLoader& loader);
  ScopedPictures(const ScopedPictures&) = delete;
  ScopedPictures& operator=(const ScopedPictures&) = delete;
  ~ScopedPictures();

 private:
  PictureLoader* before_;
};

// A file of more bytes is not read.
constexpr std::int64_t kMostImageBytes = std::int64_t{1} << 27;

}  // namespace lorv
