#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>
#include <ostream>
#include <system_error>
#include <thread>

#include "framework/ports/wait_clock.h"
#include "prompts/language.h"
#include "tools/lorv-desk/desk_kind.h"
#include "tools/lorv-desk/events/event_window.h"
#include "tools/lorv-desk/grid_window.h"
#include "tools/lorv-desk/images/image_window.h"
#include "tools/lorv-desk/png_file.h"
#include "tools/lorv-desk/sample_dialogs.h"
#include "tools/lorv-desk/sample_grid.h"
#include "tools/lorv-desk/sample_progress.h"
#include "tools/lorv-desk/table/table_window.h"
#include "tools/lorv/guarded_run.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/program.h"

// The desktop example from its words to its exit code. It shows the library's windows with sample content,
// on whichever desktop the system has, and edits a table in the grid; with --pictures it waits for no user,
// so a test or a manual gets its pictures unattended.

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
    "  lorv-desk --grid beams.csv                a table in the grid: undo, clipboard, find, print; the "
    "right "
    "button shows a menu\n"
    "  lorv-desk --images beam.gif               frames of an image by their numbers; a click plays it in a "
    "tip\n"
    "  lorv-desk --events                        a take-off sheet, and beside it the events that it raises\n"
    "\n"
    "Exit codes: 0 fine, 2 an argument or a file cannot be used, there is no screen, or a picture cannot be "
    "written.";

struct Wishes {
  bool dialogs = false;
  bool events = false;
  std::optional<std::string> grid;
  std::optional<std::string> image;
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

struct Picture {
  SIZE size = {0, 0};
  std::vector<DWORD> pixels;
};

Picture PictureOf(HWND window, const std::string& title) {
  Settle();
  Picture picture;
  picture.pixels = PeerOf(window)->Picture(picture.size);
  // A desktop of the system's own may have no way to read its windows back.
  if (picture.pixels.empty()) throw BadInput("this desktop gives no picture of " + title);
  return picture;
}

void TakePicture(HWND window, const std::string& title, const fs::path& path) {
  const Picture picture = PictureOf(window, title);
  WritePng(path, picture.size, picture.pixels);
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
  // Reported and passed over: all other pictures are good.
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

// A dialog stands by itself on the screen: in one picture with its window it lies over the right bottom
// corner.
void LayOver(Picture& below, const Picture& above) {
  constexpr LONG kMargin = 24;
  const LONG left = std::max<LONG>(0, below.size.cx - above.size.cx - kMargin);
  const LONG top = std::max<LONG>(0, below.size.cy - above.size.cy - kMargin);
  const LONG width = std::min(above.size.cx, below.size.cx - left);
  for (LONG y = 0; y < std::min(above.size.cy, below.size.cy - top); ++y)
    std::copy_n(above.pixels.begin() + y * above.size.cx, width,
                below.pixels.begin() + (top + y) * below.size.cx + left);
}

// The table as it is used: sorted, filtered, larger, with the text of a cell searched.
void TakeTableInUse(TableWindow& window, const fs::path& path) {
  EditedGrid& table = window.Table();
  TableCommands& commands = window.Commands();
  table.SetCurSel({0, 0});
  const CString wanted = table.GetItem(0, 0)->FormatItem();
  commands.Run(_T("sort_down"));
  commands.Run(_T("zoom_in"));
  commands.Run(_T("filter_bar"));
  table.SetFilterBarText(0, wanted.Left(1));
  FindOptions options;
  options.text = wanted;
  commands.Find().SetOptions(options);
  commands.Run(_T("find"));
  commands.Find().FindNext();
  Picture picture = PictureOf(window.m_hWnd, "the table in use");
  LayOver(picture, PictureOf(window.Finder().m_hWnd, "the dialog for finding"));
  WritePng(path, picture.size, picture.pixels);
}

// Edits the table of a file; with a folder for pictures it is only looked at.
void EditTable(const Wishes& wishes, Console& console) {
  if (!wishes.pictures.empty()) MakeFolder(wishes.pictures);
  TableWindow window(*wishes.grid);
  if (!window.Read()) return;
  if (wishes.pictures.empty()) {
    window.ShowUntilClosed();
    return;
  }
  window.ShowWindow(SW_SHOW);
  const int rows = window.Grid().GetRowCount();
  TakePicture(window.m_hWnd, *wishes.grid, PathOf(wishes.pictures) / "table.png");
  console.out << wishes.pictures << "/table.png  " << *wishes.grid << ", " << rows << " rows\n";
  if (rows == 0) return;
  TakeTableInUse(window, PathOf(wishes.pictures) / "table-in-use.png");
  console.out << wishes.pictures << "/table-in-use.png  sorted, filtered and searched\n";
}

// A clock without waits: an animation is at its last frame at once.
class NoWaits : public WaitClock {
 public:
  bool WaitFor(CEvent& /*event*/, DWORD /*milliseconds*/) override { return false; }
};

// The window, then the tip at its last frame.
void TakeImage(const std::string& path, const std::string& folder, Console& console) {
  MakeFolder(folder);
  NoWaits waits;
  const ScopedWaitClock scope(waits);
  // Ends before the clock does: its tip paints by a thread.
  ImageWindow window(path);
  if (!window.Open()) throw BadInput(Say("this desktop opens no window"));
  window.ShowWindow(SW_SHOW);
  TakePicture(window.m_hWnd, path, PathOf(folder) / "image.png");
  console.out << folder << "/image.png  " << path << ", " << window.FrameCount() << " frames\n";
  window.ShowTip();
  constexpr std::chrono::milliseconds kLook(5);
  constexpr int kLooks = 2000;
  for (int i = 0; i < kLooks && window.Tip().Paintings() == 0; ++i) {
    Settle();
    std::this_thread::sleep_for(kLook);
  }
  TakePicture(window.Tip().m_hWnd, path, PathOf(folder) / "tip.png");
  console.out << folder << "/tip.png  " << path << " in a tip\n";
}

void ShowImage(const Wishes& wishes, Console& console) {
  if (!wishes.pictures.empty()) return TakeImage(*wishes.image, wishes.pictures, console);
  ImageWindow window(*wishes.image);
  if (!window.Open()) throw BadInput(Say("this desktop opens no window"));
  window.ShowUntilClosed();
}

void OpenEvents(EventWindow& window, const SampleGrid& sample) {
  // Higher than the table: a click alone is some ten lines.
  constexpr int kHeight = 400;
  if (!window.Open(CString::FromUtf8(sample.title), {kSampleGridWidth, kHeight}))
    throw BadInput("the window of " + sample.title + " cannot be opened");
  window.ShowWindow(SW_SHOW);
  Settle();
  FillSampleGrid(window.Grid(), sample);
}

// Two clicks, each into a cell whose editor opens and closes: what comes of them is there to be read.
void TakeEvents(const SampleGrid& sample, const std::string& folder, Console& console) {
  EventWindow window;
  OpenEvents(window, sample);
  Settle();
  window.Play(0, 0);
  window.Play(2, 2);
  const std::string name = "events" + sample.name.substr(sample.name.find('-')) + ".png";
  TakePicture(window.m_hWnd, sample.title, PathOf(folder) / name);
  console.out << folder << "/" << name << "  " << sample.title << ", with its events\n";
}

void ShowEvents(const Wishes& wishes, Console& console) {
  const auto samples = SampleGrids();
  if (!wishes.pictures.empty()) {
    MakeFolder(wishes.pictures);
    for (const SampleGrid& sample : samples) TakeEvents(sample, wishes.pictures, console);
    return;
  }
  const bool chinese = SpokenLanguage() == Language::kChinese;
  const auto spoken = std::find_if(samples.begin(), samples.end(),
                                   [&](const SampleGrid& sample) { return sample.chinese == chinese; });
  EventWindow window;
  OpenEvents(window, *spoken);
  window.ShowUntilClosed();
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

void Declare(CLI::App& app, Wishes& wishes) {
  app.allow_windows_style_options(false);
  app.set_version_flag("--version", "lorv-desk " LORV_VERSION, "print the version and end");
  app.footer(kExamples);
  // One of them at a time.
  const std::vector<CLI::Option*> shown = {
      app.add_flag("--dialogs", wishes.dialogs, "open each dialog with sample content"),
      app.add_option("--grid", wishes.grid, "open a table of commas, semicolons or tabs in the grid")
          ->type_name("FILE"),
      app.add_option("--images", wishes.image, "show the frames of an image, and play it in a tip")
          ->type_name("FILE"),
      app.add_flag("--events", wishes.events, "show a table and the trace of its events")};
  for (CLI::Option* const one : shown) {
    for (CLI::Option* const other : shown) {
      if (one != other) one->excludes(other);
    }
  }
  app.add_option("--pictures", wishes.pictures, "write a picture of each into FOLDER instead of waiting")
      ->type_name("FOLDER");
}

void Show(const Wishes& wishes, Console& console) {
  if (wishes.image) {
    ShowImage(wishes, console);
  } else if (wishes.events) {
    ShowEvents(wishes, console);
  } else if (wishes.grid) {
    EditTable(wishes, console);
  } else if (wishes.pictures.empty()) {
    ShowAll(console);
  } else {
    TakePictures(wishes.pictures, console);
  }
}

int Run(std::vector<std::string> words, Console& console) {
  Wishes wishes;
  CLI::App app{kAbout, "lorv-desk"};
  Declare(app, wishes);
  std::reverse(words.begin(), words.end());
  try {
    app.parse(words);
  } catch (const CLI::Success& answer) {  // --help, --version
    app.exit(answer, console.out, console.err);
    return kFine;
  } catch (const CLI::ParseError& wrong) {
    throw BadInput(std::string(wrong.what()) + "\n`lorv-desk --help` shows what it takes");
  }
  if (!wishes.dialogs && !wishes.grid && !wishes.image && !wishes.events)
    throw BadInput(
        "say what to show: --dialogs, --grid FILE, --images FILE or --events\n`lorv-desk --help` shows the "
        "rest");
  // Before any window is made: its words are taken as it opens.
  SpeakLanguage(LanguageByName(console.locale));
  SetLanguageType(SpokenLanguage() == Language::kChinese ? LANGUAGE_CHINESE : LANGUAGE_ENGLISH);
  OpenDesktop();
  Show(wishes, console);
  return kFine;
}

}  // namespace

int RunProgram(const std::vector<std::string>& words, Console& console) {
  return GuardedRun("lorv-desk", console, [&] { return Run(words, console); });
}

}  // namespace lorv::tool
