#pragma once

#include "framework/drawing/geometry.h"
#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/text/cstring.h"

class TImageImp;

// A raster image of a file or a bitmap resource, with the frames of animated GIF files and the pages of TIFF
// files. GIF, PNG, JPEG, BMP, ICO and TIFF are decoded alike on every system.
//
// Every operation begins with the test of IsValidImage, which reads and clears the status of the last one.
//   So an image that could not be loaded refuses one operation, passes the test of the next, fails in it, and
//   by that refuses the one after it.
// Units: pixels, milliseconds; frames count from 0.
// Result: 1 or 0; outputs are untouched at 0. There are no messages.
// operator= makes both objects refer to one image: what one of them selects or loads the other one shows, and
//   it ends with the last of them. The copy constructor makes an independent one. No lock inside: one object,
//   and all that share its image, belong to one thread at a time.
//
//   TImage image(_T("梁.gif"));  CSize size;  image.GetDim(size);  image.DrawImage(handle, rect, 0);
class COMM_LORV_API TImage {
 public:
  explicit TImage(const CString& path);
  // A bitmap of the module's resources; a null module is the main program.
  TImage(HINSTANCE module, unsigned int resource);
  TImage(const TImage& other);
  TImage& operator=(const TImage& other);
  virtual ~TImage();

  // False once for an image that could not be loaded, then true although it holds nothing.
  bool IsValidImage() const;
  // Of the selected frame: pages of a TIFF differ in size.
  int GetDim(CSize& size) const;

  // Replaces the image, for all that share it. When the new one cannot be loaded the old one is gone as well.
  int SetImage(HINSTANCE module, unsigned int resource);
  int SetImage(const CString& path);

  // Draws a frame stretched to the rectangle, without regard to proportions, and leaves it selected. A frame
  // of -1 or behind the last one is frame 0; other negative ones draw what is selected. An empty rectangle
  // draws nothing and gives 1. `context` is that of a lorv::ContextHandle or, on Windows, one of the
  // system's.
  int DrawImage(HDC context, const CRect& rect, int frame) const;
  // A bitmap of the frame that was selected last, whatever `frame` says, over opaque black. The caller
  // deletes it as the system's bitmaps are deleted, or by lorv::EndBitmap. Null, and 1 nevertheless, where
  // an image that holds nothing passed the test.
  int GetBitmap(HBITMAP& bitmap, int frame) const;

  // Of a GIF of several frames with delays; 0 for all other images and for frames that are not there.
  int GetFrameDelay(int frame) const;
  int GetFrameCount() const;

 private:
  TImageImp* imp_;
};

namespace lorv {

// Deletes a bitmap that GetBitmap made; false for a handle that names none.
COMM_LORV_API bool EndBitmap(HBITMAP bitmap);

}  // namespace lorv
