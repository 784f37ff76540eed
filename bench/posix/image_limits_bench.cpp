// Image files that are small or soon made and cost much to show: time to the first frame and the most memory,
// each in a process of its own, over the toolkit's desktop.
//
//   lorv_bench_image_limits [--quick]      bounds of 2 s and 300 MB; --quick: small files without bounds
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <thread>

#include "bench/costly_files.h"
#include "framework/drawing/context_handles.h"
#include "framework/drawing/device_context.h"
#include "image/image.h"
#include "image/image_tool_tip.h"
#include "platform/qt/desktop/qt_desktop.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMostMilliseconds = 2000;
constexpr double kMostMegabytes = 300;
constexpr auto kPatience = std::chrono::seconds(30);
constexpr COLORREF kGround = RGB(1, 2, 3);

// Of all threads; what else the machine does is no part of it.
double ProcessorMilliseconds() {
  return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

// On a part of a window, as a preview has it.
bool ShowDrawn(lorv::Desktop& desktop, const CString& path) {
  const TImage image(path);
  const CRect rect(0, 0, 800, 600);
  CDC dc(std::shared_ptr<lorv::Canvas>(desktop.MakeCanvas(rect.Size())));
  return image.DrawImage(lorv::ContextHandle(dc).Get(), rect, 0) == 1;
}

bool ShowBitmap(lorv::Desktop& /*desktop*/, const CString& path) {
  const TImage image(path);
  HBITMAP bitmap = nullptr;
  image.GetBitmap(bitmap, 0);
  return lorv::EndBitmap(bitmap);
}

// Until the image's first pixel stands where the tip's ground was.
bool ShowTip(lorv::Desktop& desktop, const CString& path) {
  CWnd top;
  top.Create(nullptr, _T("top"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 300, 200), nullptr, 0);
  TImageToolTipCtrl tip(path);
  lorv::ToolTipParameters parameters;
  parameters.fill = kGround;
  tip.SetParameters(parameters);
  tip.Create(&top);
  tip.ShowAt(CPoint(10, 10));
  constexpr RECT kFirst = {8, 6, 9, 7};  // behind both margins
  const DWORD ground = 0xFF010203;
  for (const auto start = Clock::now(); Clock::now() - start < kPatience;) {
    while (desktop.Pump(false)) {
    }
    const DWORD seen = lorv::PeerOf(tip.m_hWnd)->ClientCanvas()->Pixels(kFirst).front();
    if (seen != ground && seen != 0xFFFFFFFF) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

bool ShowNothing(lorv::Desktop& desktop, const CString& /*path*/) {
  return desktop.MakeCanvas({800, 600}) != nullptr;
}

struct Way {
  const char* name;
  bool (*show)(lorv::Desktop& desktop, const CString& path);
};

constexpr Way kWays[] = {
    {"nothing", ShowNothing}, {"drawn", ShowDrawn}, {"bitmap", ShowBitmap}, {"tip", ShowTip}};

// In the measured process: prints the milliseconds.
int Measure(int way, const char* path) {
  int count = 1;
  char name[] = "lorv_bench_image_limits";
  char* arguments[] = {name, nullptr};
  const QApplication application(count, arguments);
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const double start = ProcessorMilliseconds();
  const bool shown = kWays[way].show(*desktop, CString::FromUtf8(path));
  const double spent = ProcessorMilliseconds() - start;
  std::printf("%10.0f", shown ? spent : -1.0);
  std::fflush(stdout);
  // What is left to be done at the end is not measured.
  _exit(shown && spent <= kMostMilliseconds ? 0 : 1);
}

// The most megabytes of a process that measures, and whether it was in time.
std::pair<double, bool> Measured(std::size_t way, const std::string& path) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    const std::string number = std::to_string(way);
    execl("/proc/self/exe", "lorv_bench_image_limits", "--measure", number.c_str(), path.c_str(), nullptr);
    _exit(2);
  }
  int status = 0;
  rusage used = {};
  wait4(child, &status, 0, &used);
  return {static_cast<double>(used.ru_maxrss) * 1024 / 1e6, status == 0};
}

// Made by another process as well: a process begins with the most memory that its parent had.
void Write(const lorv::CostlyFile& file, bool quick, const std::string& path) {
  const pid_t child = fork();
  if (child == 0) {
    const std::string bytes = file.make(quick);
    std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  if (argc == 4 && std::string(argv[1]) == "--measure") return Measure(std::atoi(argv[2]), argv[3]);
  const bool quick = argc > 1 && std::string(argv[1]) == "--quick";
  const std::string path =
      (std::filesystem::temp_directory_path() / "lorv_bench_costly_").string() + std::to_string(getpid());
  const double own = Measured(0, path).first;
  std::printf(" ms; %.0f MB are there without an image\n", own);
  std::printf("%-44s%10s  %-9s%10s%10s\n", "file", "MB", "way", "ms", "MB");
  bool holds = true;
  for (const lorv::CostlyFile& file : lorv::kCostlyFiles) {
    Write(file, quick, path);
    for (std::size_t way = 1; way < std::size(kWays); ++way) {
      std::printf("%-44s%10.2f  %-9s", file.name, static_cast<double>(std::filesystem::file_size(path)) / 1e6,
                  kWays[way].name);
      const auto [megabytes, in_time] = Measured(way, path);
      const bool fits = quick || (in_time && megabytes - own <= kMostMegabytes);
      holds = holds && fits;
      std::printf("%10.0f%s\n", megabytes - own, fits ? "" : "  beyond the bounds");
    }
    std::filesystem::remove(path);
  }
  return holds ? 0 : 1;
}
