#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <ostream>
#include <system_error>

#include "tools/lorv-desk/desk_kind.h"
#include "tools/lorv-desk/grid_window.h"
#include "tools/lorv-desk/png_file.h"
#include "tools/lorv-desk/sample_dialogs.h"
#include "tools/lorv-desk/sample_grid.h"
#include "tools/lorv-desk/sample_progress.h"
#include "tools/lorv-desk/table/table_window.h"
#include "tools/lorv/guarded_run.h"
#include "tools/lorv/program.h"
#include "tools/lorv/text/spoken_language.h"

// The desktop example from its words to its exit code. It shows the library's windows with sample content, on
// whichever desktop the system has, and edits a table in the grid; with --pictures it waits for nobody, so a
// test or a manual gets its pictures without a hand.

namespace lorv::tool {
namespace {

namespace fs = std::filesystem;

constexpr const char* kAbout =
    "lorv-desk - the library's windows, to be looked at, and a table to be edited in the grid.\n"
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
    "  lorv-desk --grid beams.csv                a table in the grid; Ctrl+S saves it, the right button "
    "shows a "
    "menu\n"
    "\n"
    "Exit codes: 0 fine, 2 an argument or a file cannot be used, there is no screen, or a picture cannot be "
    "written.";

struct Wishes {
  bool dialogs = false;
  std::string grid;
  std::string pictures;
};

fs::path PathOf(const std::string& utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

// What is to be seen is there once nothing waits any more.
// Windows paint and lay out by messages, which come one after the other.
void Settle() {
  while (DesktopInForce().Pump(false)) {
  }
}

void TakePicture(HWND window, const std::string& title, const fs::path& path) {
  Settle();
  SIZE size = {0, 0};
  const std::vector<DWORD> pixels = PeerOf(window)->Picture(size);
  // A desktop of the system's own may have no way to read its windows back.
  if (pixels.empty()) throw BadInput("this desktop gives no picture of " + title);
  WritePng(path, size, pixels);
}

void TakePicture(const SampleDialog& sample, const fs::path& path) {
  const auto dialog = sample.make();
  if (dialog->Create(*sample.form) == 0)
    throw BadInput("the dialog of " + sample.title + " cannot be opened");
  dialog->ShowWindow(SW_SHOW);
  TakePicture(dialog->m_hWnd, sample.title, path);
  dialog->DestroyWindow();
}

std::unique_ptr<GridWindow> WindowOf(const SampleGrid& sample) {
  auto window = std::make_unique<GridWindow>(std::make_unique<CBCGPBasicGridCtrl>());
  if (!window->Open(CString::FromUtf8(sample.title), {kSampleGridWidth, kSampleGridHeight}))
    throw BadInput("the window of " + sample.title + " cannot be opened");
  window->ShowWindow(SW_SHOW);
  Settle();
  FillSampleGrid(window->Grid(), sample);
  return window;
}

void TakePicture(const SampleGrid& sample, const fs::path& path) {
  const auto window = WindowOf(sample);
  TakePicture(window->m_hWnd, sample.title, path);
}

void TakeProgress(const SampleProgress& sample, const std::string& folder, Console& console) {
  SIZE size = {0, 0};
  const std::vector<DWORD> pixels = PictureOfProgress(sample, size);
  // Told and passed over: all other pictures are good.
  if (pixels.empty()) {
    console.err << "lorv-desk: no picture of " << sample.title << ": its window is the system's own\n";
    return;
  }
  const std::string name = sample.name + ".png";
  WritePng(PathOf(folder) / name, size, pixels);
  console.out << folder << "/" << name << "  " << sample.title << "\n";
}

void MakeFolder(const std::string& folder) {
  std::error_code failed;
  fs::create_directories(PathOf(folder), failed);
  if (failed || !fs::is_directory(PathOf(folder), failed))
    throw BadInput(folder + " cannot be made a folder");
}

void TakePictures(const std::string& folder, Console& console) {
  MakeFolder(folder);
  const auto take = [&](const auto& sample) {
    const std::string name = sample.name + ".png";
    TakePicture(sample, PathOf(folder) / name);
    console.out << folder << "/" << name << "  " << sample.title << "\n";
  };
  for (const SampleDialog& sample : SampleDialogs()) take(sample);
  for (const SampleGrid& sample : SampleGrids()) take(sample);
  for (const SampleProgress& sample : SampleProgresses()) TakeProgress(sample, folder, console);
}

void ShowAll(Console& console) {
  for (const SampleDialog& sample : SampleDialogs()) {
    console.out << sample.title << std::endl;  // before the window, which waits
    if (sample.make()->DoModal() == -1) throw BadInput("the dialog of " + sample.title + " cannot be opened");
  }
  for (const SampleGrid& sample : SampleGrids()) {
    console.out << sample.title << std::endl;
    WindowOf(sample)->ShowUntilClosed();
  }
  for (const SampleProgress& sample : SampleProgresses()) {
    console.out << sample.title << std::endl;
    ShowProgress(sample);
  }
}

// Edits the table of a file; with a folder for pictures it is only looked at.
void EditTable(const Wishes& wishes, Console& console) {
  if (!wishes.pictures.empty()) MakeFolder(wishes.pictures);
  TableWindow window(wishes.grid);
  if (!window.Read()) return;
  if (wishes.pictures.empty()) {
    window.ShowUntilClosed();
    return;
  }
  window.ShowWindow(SW_SHOW);
  TakePicture(window.m_hWnd, wishes.grid, PathOf(wishes.pictures) / "table.png");
  console.out << wishes.pictures << "/table.png  " << wishes.grid << ", " << window.Grid().GetRowCount()
              << " rows\n";
}

// Before the first window, as it decides what windows are.
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
  CLI::Option* const grid =
      app.add_option("--grid", wishes.grid, "open a table of commas, semicolons or tabs in the grid")
          ->type_name("FILE")
          ->excludes(dialogs);
  app.add_option("--pictures", wishes.pictures, "write a picture of each into FOLDER instead of waiting")
      ->type_name("FOLDER");
  std::reverse(words.begin(), words.end());
  try {
    app.parse(words);
  } catch (const CLI::Success& answer) {  // --help, --version
    app.exit(answer, console.out, console.err);
    return kFine;
  } catch (const CLI::ParseError& wrong) {
    throw BadInput(std::string(wrong.what()) + "\n`lorv-desk --help` tells what it takes");
  }
  if (!wishes.dialogs && grid->count() == 0)
    throw BadInput("say what to show: --dialogs or --grid FILE\n`lorv-desk --help` tells the rest");
  // Before any window is made: its words are taken as it opens.
  SpeakLanguage(LanguageByName(console.locale));
  OpenDesktop();
  if (!wishes.dialogs) {
    EditTable(wishes, console);
  } else if (wishes.pictures.empty()) {
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
