#pragma once

#include <memory>
#include <vector>

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "gridcore/life_token.h"

class CBCGPGridCtrl;

namespace lorv {

class GridCommands;

constexpr int kLeastZoom = 50;  // per cent
constexpr int kMostZoom = 300;

// Shows a grid larger or smaller: its font, the widths of its columns and of the row header, and the height
// of its rows.
//
// Units: per cent of the sizes that the grid has without the object.
// Edges: values beyond the limits count as those. Each size is computed from the one at 100 %, so that any
//   series of zooms comes back to the pixel; one that the user or the program sets in between counts at the
//   zoom of the moment. With the end of the object the grid stays as it is shown.
// The grid may end before the object and after it; handlers of the layout may end both. One thread: that of
// the user interface.
//
//   GridZoom zoom(grid);  zoom.SetZoom(200);  a column of 80 pixels has 160
class COMM_LORV_API GridZoom {
 public:
  explicit GridZoom(CBCGPGridCtrl& grid);
  GridZoom(const GridZoom&) = delete;
  GridZoom& operator=(const GridZoom&) = delete;

  int Zoom() const { return zoom_; }
  void SetZoom(int percent);
  // To the next step of 50, 75, 90, 100, 110, 125, 150, 200, 250, 300. False: that is the last one.
  bool ZoomIn();
  bool ZoomOut();

  // The commands zoom_in, zoom_out and zoom_reset are this object's, which must outlive them.
  void Bind(GridCommands& commands);

 private:
  // A size at 100 %, and as it was shown by this object.
  struct Size {
    int plain = 0;
    int shown = 0;
  };

  static int Scaled(int size, int percent);
  int Rescaled(Size& size, int now, int percent) const;
  void ZoomFont(int percent);
  void ZoomColumns(int percent);
  void ZoomRows(int percent);

  CBCGPGridCtrl* grid_;
  std::weak_ptr<int> grid_life_;
  LifeToken life_;
  int zoom_ = 100;
  Size font_;
  Size row_height_;
  Size row_header_;
  std::vector<Size> columns_;
};

}  // namespace lorv
