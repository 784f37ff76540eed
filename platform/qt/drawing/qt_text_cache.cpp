#include "platform/qt/drawing/qt_text_cache.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QThread>
#include <algorithm>
#include <cstring>

#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_fonts.h"

// Fonts, widths and shaped texts that are kept from one painting to the next, one cache for each thread, so
// that nothing is locked. Faces are found by value; when there are too many all go and the age rises, by
// which canvases notice that what they point to is gone.

namespace lorv {
namespace {

// The bytes of a description; what stands behind the end of the name does not count.
std::string KeyOf(const LOGFONT& description) {
  LOGFONT clean = description;
  TCHAR* const end = clean.lfFaceName + LF_FACESIZE;
  std::fill(std::find(clean.lfFaceName, end, TCHAR{0}), end, TCHAR{0});
  std::string key(sizeof(clean), '\0');
  std::memcpy(key.data(), &clean, sizeof(clean));
  return key;
}

TEXTMETRIC MeasuresOf(const QFont& font) {
  const QFontMetrics measured(font);
  TEXTMETRIC metrics = {};
  metrics.tmHeight = measured.height();
  metrics.tmAscent = measured.ascent();
  metrics.tmDescent = measured.height() - measured.ascent();
  // From the size in pixels, which all our fonts are made by.
  metrics.tmInternalLeading = std::max(measured.height() - font.pixelSize(), 0);
  metrics.tmExternalLeading = std::max(measured.leading(), 0);
  metrics.tmAveCharWidth = measured.averageCharWidth();
  metrics.tmMaxCharWidth = measured.maxWidth();
  metrics.tmWeight = font.bold() ? FW_BOLD : FW_NORMAL;
  metrics.tmItalic = font.italic() ? 1 : 0;
  return metrics;
}

// Ends with its thread; but that of the windows' thread never does, as the widget set's own fonts may be gone
// by then.
struct ThreadCache {
  QtTextCache* cache = nullptr;
  ~ThreadCache() {
    const auto* const application = QCoreApplication::instance();
    if (application != nullptr && application->thread() != QThread::currentThread()) delete cache;
  }
};

}  // namespace

QtFace::QtFace(const LOGFONT& description, std::uint32_t face_number)
    : font(FontOf(description)), metrics(MeasuresOf(font)), number(face_number) {}

QtTextCache& QtTextCache::Here() {
  thread_local ThreadCache here;
  if (here.cache == nullptr) here.cache = new QtTextCache;
  return *here.cache;
}

const QtFace& QtTextCache::Face(const LOGFONT& description) {
  const std::string key = KeyOf(description);
  const auto known = by_description_.find(key);
  if (known != by_description_.end()) return *known->second;
  // Never one alone: canvases hold pointers to faces, and the age holds for all of them.
  if (faces_.size() >= kMaxFaces) {
    by_description_.clear();
    faces_.clear();
    ++age_;
  }
  faces_.emplace_back(description, ++last_number_);
  return *by_description_.emplace(key, &faces_.back()).first->second;
}

QtRun* QtTextCache::Run(const QtFace& face, TextView text, std::optional<int> advance) {
  return runs_.Of(face.number, text, [&] {
    QtRun run;
    run.advance = advance ? *advance : QFontMetrics(face.font).horizontalAdvance(ToQt(text));
    return run;
  });
}

int QtTextCache::Advance(const QtFace& face, TextView text) {
  if (text.empty()) return 0;
  // Numbers are not kept: a column of them would drive out the texts that stand on the screen.
  if (face.numbers == nullptr) face.numbers = std::make_unique<QtNumberWidths>(face.font);
  if (const auto width = face.numbers->Width(text)) return *width;
  const QtRun* const run = Run(face, text);
  return run != nullptr ? run->advance : QFontMetrics(face.font).horizontalAdvance(ToQt(text));
}

}  // namespace lorv
