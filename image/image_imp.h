#pragma once

#include <atomic>
#include <memory>

#include "framework/drawing/geometry.h"
#include "framework/native/window_types.h"
#include "image/picture/picture.h"

// What stands behind one or several TImage objects: the picture, and how many share it.
class TImageImp {
 public:
  explicit TImageImp(std::unique_ptr<lorv::Picture> picture) : picture_(std::move(picture)) {}
  TImageImp(const TImageImp&) = delete;
  TImageImp& operator=(const TImageImp&) = delete;
  virtual ~TImageImp() = default;

  TImageImp* Share() {
    ++owners_;
    return this;
  }
  // Ends it with its last owner.
  void Release() {
    if (--owners_ == 0) delete this;
  }

  bool IsValid() const { return picture_ != nullptr && picture_->TakeStatus(); }
  std::unique_ptr<TImageImp> Clone() const;
  int Replace(std::unique_ptr<lorv::Picture> (*load)(const void* source), const void* source);
  int ReadDim(CSize& size) const;
  int Draw(HDC context, const CRect& rect, int frame) const;
  int MakeBitmap(HBITMAP& bitmap) const;
  int DelayOf(int frame) const;
  int CountFrames() const;

 private:
  void Select(int frame) const;

  std::unique_ptr<lorv::Picture> picture_;
  std::atomic<int> owners_{1};
};
