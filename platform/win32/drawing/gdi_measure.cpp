#include "platform/win32/drawing/gdi_measure.h"

#include "platform/win32/drawing/thread_owned.h"

// Widths of texts, remembered by font and text. Each thread has a context of its own to ask the system by:
// contexts belong to threads, and layouts are measured on any.

namespace lorv {

GdiMeasure::GdiMeasure() : context_(CreateCompatibleDC(nullptr)) {}

GdiMeasure::~GdiMeasure() {
  if (former_ != nullptr) SelectObject(context_, former_);
  if (context_ != nullptr) DeleteDC(context_);
}

GdiMeasure& GdiMeasure::Here() {
  // Never ended: windows may be measured while the process ends. Its threads end what is theirs.
  static const auto& owned = *new ThreadOwned<GdiMeasure>;
  return owned.Here();
}

void GdiMeasure::Select(const std::shared_ptr<const GdiFont>& font) {
  if (selected_ == font) return;
  const HGDIOBJ before = SelectObject(context_, font->Handle());
  if (former_ == nullptr) former_ = before;
  selected_ = font;
}

const TEXTMETRICW& GdiMeasure::Metrics(const std::shared_ptr<const GdiFont>& font) {
  const auto known = metrics_.find(font->Number());
  if (known != metrics_.end()) return known->second;
  // Bounded; what is needed comes back at the next question.
  if (metrics_.size() >= kMaxFaces) metrics_.clear();
  Select(font);
  TEXTMETRICW& metrics = metrics_[font->Number()];
  GetTextMetricsW(context_, &metrics);
  return metrics;
}

int GdiMeasure::Asked(const std::shared_ptr<const GdiFont>& font, TextView text) {
  Select(font);
  SIZE size = {0, 0};
  GetTextExtentPoint32W(context_, text.data(), static_cast<int>(text.size()), &size);
  return size.cx;
}

int GdiMeasure::Width(const std::shared_ptr<const GdiFont>& font, TextView text) {
  if (text.empty()) return 0;
  const int* const known = widths_.Of(font->Number(), text, [&] { return Asked(font, text); });
  return known != nullptr ? *known : Asked(font, text);
}

}  // namespace lorv
