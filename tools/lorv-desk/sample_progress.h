#pragma once

#include <string>
#include <vector>

#include "framework/native/window_types.h"

namespace lorv::tool {

// A long operation that does nothing but show its progress.
struct SampleProgress {
  std::string name;   // of its picture, without an ending
  std::string title;  // for the terminal
  LPCTSTR caption;
  LPCTSTR line;  // with the number of the step
  LPCTSTR question;
};

std::vector<SampleProgress> SampleProgresses();

// Goes through some seconds of steps; ends earlier when the user cancels and says so once more.
void ShowProgress(const SampleProgress& sample);

// The dialog in the middle of the operation; empty where the system's shell shows it.
std::vector<DWORD> PictureOfProgress(const SampleProgress& sample, SIZE& size);

}  // namespace lorv::tool
