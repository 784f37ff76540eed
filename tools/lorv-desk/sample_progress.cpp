#include "tools/lorv-desk/sample_progress.h"

#include <chrono>
#include <thread>

#include "module/progress.h"
#include "platform/ports/platform.h"
#include "platform/ports/progress_picture.h"

// The progress dialog over an operation that only waits, to be looked at and to be cancelled.

namespace lorv::tool {
namespace {

// Four seconds: time to read the line and to press Cancel.
constexpr int kSteps = 100;
constexpr int kPictured = 40;
constexpr std::chrono::milliseconds kStep(40);

CString LineAt(const SampleProgress& sample, int step) {
  CString line;
  line.Format(sample.line, step);
  return line;
}

}  // namespace

std::vector<SampleProgress> SampleProgresses() {
  return {
      {"progress-zh", "the progress of a calculation, in Chinese", _T("计算工程量"), _T("首层：第 %d 个构件"),
       _T("停止计算吗?")},
      {"progress-en", "the progress of a calculation, in English", _T("Calculating quantities"),
       _T("Ground floor: component %d"), _T("Stop the calculation?")},
  };
}

void ShowProgress(const SampleProgress& sample) {
  CProgressCom progress(kSteps);
  if (!progress.StartProgress(sample.caption)) return;
  for (int step = 1; step <= kSteps; ++step) {
    progress.StepProgress(step, LineAt(sample, step));
    std::this_thread::sleep_for(kStep);
    if (progress.QueryCancel(sample.question)) break;
  }
  progress.EndProgress();
}

std::vector<DWORD> PictureOfProgress(const SampleProgress& sample, SIZE& size) {
  size = {0, 0};
  // The dialog of a desktop that draws it itself can be pictured; that of the system's shell cannot.
  const auto dialog = PortsInForce().shell->MakeProgress();
  auto* const pictured = dynamic_cast<ProgressPicture*>(dialog.get());
  if (pictured == nullptr) return {};
  dialog->SetTitle(sample.caption);
  dialog->Open(kProgressAutoTime);
  dialog->SetProgress(kPictured, kSteps);
  dialog->SetLine(1, LineAt(sample, kPictured), false);
  return pictured->Picture(size);
}

}  // namespace lorv::tool
