#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// Words, failures, shapes and points that all modules share.
//
// The two forms of lookup, and what null means: prompts/prompts.h.
//
//   PublicInf::GetShapeInf(PublicInf::Shape::Circle)  gives "圆形", in English "Circle"
namespace PublicInf {

// Words of the command line, 13 rows.
enum class PublicPropt : int {
  AddEntityPressShiftKeyToRemoveEnt = 0,
  Exit,
  Undo,
  Or,
  Center,
  LeftBot,
  Top,
  Bottom,
  Line,
  Arc,
  Close,
  IntputLastPoint,
  IntputPointOnArc,
};

COMM_LORV_API LPCTSTR GetPubInf(PublicPropt prompt);
COMM_LORV_API LPCTSTR GetPubInf(LPCTSTR chinese);

// Failures, 5 rows.
enum class ErrorPropt : int {
  CreateWindowFailed = 0,
  UnkownException,
  FindNoAxis,
  FindNoWall,
  FindNoBetonWall,
};

COMM_LORV_API LPCTSTR GetErrInf(ErrorPropt prompt);
COMM_LORV_API LPCTSTR GetErrInf(LPCTSTR chinese);

// Section shapes, 6 rows.
enum class Shape : int {
  Rectangle = 0,
  Circle,
  LShape,
  TShape,
  CrossShape,
  ZShape,
};

COMM_LORV_API LPCTSTR GetShapeInf(Shape prompt);
COMM_LORV_API LPCTSTR GetShapeInf(LPCTSTR chinese);

// Names of points, 9 rows.
enum class PointPrompt : int {
  OriginPoint = 0,
  Center,
  OriginPoint2,
  InsertPoint,
  FirstPoint,
  SecondPoint,
  MiddlePoint,
  ThirdPoint,
  EdgePoint,
};

COMM_LORV_API LPCTSTR GetPtInf(PointPrompt prompt);
COMM_LORV_API LPCTSTR GetPtInf(LPCTSTR chinese);

}  // namespace PublicInf
