#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// Drawing methods (even rows) and the prompt that opens each (the odd row behind it), 34 rows.
//
// The two forms of lookup, and what null means: prompts/prompts.h.
//
//   TCompDrawInf::GetInf(TCompDrawInf::DrawInformation::AxisDraw)  gives "轴网", in English "Axis Draw"
//
// Two texts stand twice ("点选", "请选择悬挑梁支座"): by text only the earlier row is found.
namespace TCompDrawInf {

enum class DrawInformation : int {
  DrawByPoint = 0,
  InputInsertPoint,
  WindowDraw,
  InputWindowFisrtCorner,
  AxisDraw,
  SelectAxis,
  AlongArc,
  InputArcCenter,
  DrawByNearAxis,
  InputNearAxisPoint,
  PickWallToDraw,
  PickWall,
  DrawByHand,
  InputNearFirstPoint,
  AlongDirectDraw,
  InputDirctFirstPoint,
  PickBeamToDraw,
  PickBeam,
  PickSurportToDraw,
  PickSurport,
  AxisEdgeBeam,
  PickSurport21,
  InnerFigure,
  InputInsidePoint,
  OuterFigure,
  RectangleComponent,
  OuterFigure26,
  MakeSure,
  PickHoleToDraw,
  PickHole,
  InputInsertPoint30,
  InputTheSecondPoint,
  SelectStairToDrawRail,
  InputTheStair,
};

COMM_LORV_API LPCTSTR GetInf(DrawInformation prompt);
COMM_LORV_API LPCTSTR GetInf(LPCTSTR chinese);

}  // namespace TCompDrawInf
