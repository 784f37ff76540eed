#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "tools/lorv-desk/desk_kind.h"
#include "tools/lorv-desk/png_file.h"
#include "tools/lorv-desk/sample_dialogs.h"
#include "tools/lorv-desk/sample_progress.h"
#include "tools/lorv/guarded_run.h"
#include "tools/lorv/program.h"

namespace lorv::tool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kAbout =
    "lorv-desk - the library's windows, to be looked at.\n"
    "\n"
    "On Linux the windows are those of Qt, so a screen is needed (or QT_QPA_PLATFORM=offscreen with "
    "--pictures);\n"
    "on Windows they are the system's own.\n";

constexpr const char* kExamples =
    "Examples:\n"
    "  lorv-desk --dialogs                       each dialog, one after the other; close one to see the "
    "next\n"
    "  lorv-desk --dialogs --pictures shots      a picture of each, without waiting, as shots/failure-zh.png "
    "...\n"
    "\n"
    "Exit codes: 0 fine, 2 an argument cannot be used, there is no screen, or a picture cannot be written.";

struct Wishes {
  bool dialogs = false;
  std::string pictures;
};

fs::path PathOf(const std::string& utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

// What is to be seen is there once nothing waits any more.
void Settle() {
  while (DesktopInForce().Pump(false)) {
  }
}

void TakePicture(const SampleDialog& sample, const fs::path& path) {
  const auto dialog = sample.make();
  if (dialog->Create(*sample.form) == 0)
    throw BadInput("the dialog of " + sample.title + " cannot be opened");
  dialog->ShowWindow(SW_SHOW);
  Settle();
  SIZE size = {0, 0};
  const std::vector<DWORD> pixels = PeerOf(dialog->m_hWnd)->Picture(size);
  dialog->DestroyWindow();
  if (pixels.empty()) throw BadInput("this desktop gives no picture of " + sample.title);
  WritePng(path, size, pixels);
}

void TakeProgress(const SampleProgress& sample, const std::string& folder, Console& console) {
  SIZE size = {0, 0};
  const std::vector<DWORD> pixels = PictureOfProgress(sample, size);
  if (pixels.empty()) {
    console.err << "lorv-desk: no picture of " << sample.title << ": its window is the system's own\n";
    return;
  }
  const std::string name = sample.name + ".png";
  WritePng(PathOf(folder) / name, size, pixels);
  console.out << folder << "/" << name << "  " << sample.title << "\n";
}

void TakePictures(const std::string& folder, Console& console) {
  std::error_code failed;
  fs::create_directories(PathOf(folder), failed);
  if (failed || !fs::is_directory(PathOf(folder), failed))
    throw BadInput(folder + " cannot be made a folder");
  for (const SampleDialog& sample : SampleDialogs()) {
    const std::string name = sample.name + ".png";
    TakePicture(sample, PathOf(folder) / name);
    console.out << folder << "/" << name << "  " << sample.title << "\n";
  }
  for (const SampleProgress& sample : SampleProgresses()) TakeProgress(sample, folder, console);
}

void ShowAll(Console& console) {
  for (const SampleDialog& sample : SampleDialogs()) {
    console.out << sample.title << std::endl;  // before the window, which waits
    if (sample.make()->DoModal() == -1) throw BadInput("the dialog of " + sample.title + " cannot be opened");
  }
  for (const SampleProgress& sample : SampleProgresses()) {
    console.out << sample.title << std::endl;
    ShowProgress(sample);
  }
}

void OpenDesktop() {
  try {
    ChooseDesktop(ScreenDesktop());
  } catch (DesktopFailure* failure) {
    const std::string reason = failure->Reason().ToUtf8();
    failure->Delete();
    throw BadInput("there is no screen for windows: " + reason);
  }
}

int Run(std::vector<std::string> words, Console& console) {
  Wishes wishes;
  CLI::App app{kAbout, "lorv-desk"};
  app.allow_windows_style_options(false);
  app.set_version_flag("--version", "lorv-desk " LORV_VERSION, "print the version and end");
  app.footer(kExamples);
  CLI::Option* const dialogs =
      app.add_flag("--dialogs", wishes.dialogs, "open each dialog with sample content");
  app.add_option("--pictures", wishes.pictures, "write a picture of each into FOLDER instead of waiting")
      ->type_name("FOLDER")
      ->needs(dialogs);
  std::reverse(words.begin(), words.end());
  try {
    app.parse(words);
  } catch (const CLI::Success& answer) {  // --help, --version
    app.exit(answer, console.out, console.err);
    return kFine;
  } catch (const CLI::ParseError& wrong) {
    throw BadInput(std::string(wrong.what()) + "\n`lorv-desk --help` tells what it takes");
  }
  if (!wishes.dialogs) throw BadInput("say what to show: --dialogs\n`lorv-desk --help` tells the rest");
  OpenDesktop();
  if (wishes.pictures.empty()) {
    ShowAll(console);
  } else {
    TakePictures(wishes.pictures, console);
  }
  return kFine;
}

}  // namespace

int RunProgram(const std::vector<std::string>& words, Console& console) {
  return GuardedRun("lorv-desk", console, [&] { return Run(words, console); });
}

}  // namespace lorv::tool
