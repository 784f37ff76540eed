#pragma once

#include "framework/native/window_types.h"

namespace lorv::tool {

constexpr int kSampleColumns = 10;
constexpr int kSampleRows = 9;

// The words of the sample grid in one language.
struct SampleWords {
  LPCTSTR section;  // over the columns of width and height
  LPCTSTR columns[kSampleColumns];
  struct Row {
    LPCTSTR name;
    LPCTSTR grade;
    double width;
    double height;
    LPCTSTR formula;
    LPCTSTR remark;
    int checked;  // 0, 1, or 2 for some of it
    COLORREF colour;
  } rows[kSampleRows];
  LPCTSTR all_floors;  // in merged cells
  LPCTSTR buttons[2];
  LPCTSTR grades[3];
};

extern const SampleWords kChineseSample;
extern const SampleWords kEnglishSample;

}  // namespace lorv::tool
