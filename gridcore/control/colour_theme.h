#pragma once

#include "gridcore/items/grid_item.h"

// The colours that a grid is drawn with.
//
// A colour of lorv::kNoColour is the desktop's: window, text, face and highlight colours as the user chose
// them. A record without a gradient colour is one plain colour. Plain data; any thread.
//
//   BCGP_GRID_COLOR_DATA theme;  theme.EvenColors.InitColors();  theme.m_clrBackground = RGB(255, 255, 255);
struct BCGP_GRID_COLOR_DATA {
  struct ColorData {
    COLORREF m_clrBackground = lorv::kNoColour;
    COLORREF m_clrGradient = lorv::kNoColour;
    int m_nGradientAngle = 90;  // 90: downwards, 0: to the right
    COLORREF m_clrText = lorv::kNoColour;
    COLORREF m_clrBorder = lorv::kNoColour;

    void InitColors() { *this = ColorData(); }
  };

  COLORREF m_clrBackground = lorv::kNoColour;  // of the grid
  COLORREF m_clrText = lorv::kNoColour;
  COLORREF m_clrHorzLine = lorv::kNoColour;
  COLORREF m_clrVertLine = lorv::kNoColour;
  ColorData m_EvenColors;
  ColorData m_OddColors;
  ColorData m_SelColors;  // of selected cells
  ColorData m_GroupColors;
  ColorData m_HeaderColors;
  ColorData m_HeaderSelColors;
  ColorData m_LeftOffsetColors;  // of the row header
  ColorData m_MarkedColors;      // of the current cell
};
