#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "framework/windows/dialog.h"

namespace lorv::tool {

// One of the library's dialogs with content as users meet it.
struct SampleDialog {
  std::string name;   // of its picture, without an ending
  std::string title;  // for the terminal
  const DialogTemplate* form;
  std::function<std::unique_ptr<CDialog>()> make;
};

// All of them, each in Chinese and in English.
std::vector<SampleDialog> SampleDialogs();

}  // namespace lorv::tool
