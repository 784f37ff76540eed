#include "platform/win32/drawing/gdi_font.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <list>
#include <map>
#include <mutex>
#include <string>

// Fonts of the system shared by value: equal descriptions are one font. A face that is not installed is
// replaced by one with Chinese characters, as the system's own choice may show boxes.

namespace lorv {
namespace {

// As many as a busy sheet has looks; beyond it those that are not in use are deleted.
constexpr std::size_t kKeptFonts = 64;

constexpr std::array<const wchar_t*, 4> kChineseFaces = {L"Microsoft YaHei", L"SimSun",
                                                         L"WenQuanYi Micro Hei", L"Noto Sans CJK SC"};

int CALLBACK NoteFound(const LOGFONTW* /*face*/, const TEXTMETRICW* /*metrics*/, DWORD /*kind*/,
                       LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return 0;
}

bool IsInstalled(const wchar_t* name) {
  LOGFONTW wanted = {};
  wanted.lfCharSet = DEFAULT_CHARSET;
  std::copy_n(name, std::min<std::size_t>(std::wcslen(name), LF_FACESIZE - 1), wanted.lfFaceName);
  bool found = false;
  const HDC screen = CreateCompatibleDC(nullptr);
  EnumFontFamiliesExW(screen, &wanted, &NoteFound, reinterpret_cast<LPARAM>(&found), 0);
  DeleteDC(screen);
  return found;
}

const wchar_t* ChineseFace() {
  static const wchar_t* const installed = [] {
    const auto* const face = std::find_if(kChineseFaces.begin(), kChineseFaces.end(), IsInstalled);
    return face == kChineseFaces.end() ? L"" : *face;
  }();
  return installed;
}

LOGFONTW WithInstalledFace(LOGFONTW face) {
  face.lfFaceName[LF_FACESIZE - 1] = 0;
  // An empty name leaves the choice to the system, which does not look at the text.
  if (face.lfFaceName[0] != 0 && IsInstalled(face.lfFaceName)) return face;
  const wchar_t* const instead = ChineseFace();
  std::fill_n(face.lfFaceName, LF_FACESIZE, L'\0');
  std::copy_n(instead, std::wcslen(instead), face.lfFaceName);
  face.lfCharSet = DEFAULT_CHARSET;
  return face;
}

std::uint32_t NextNumber() {
  static std::atomic<std::uint32_t> last{0};
  return ++last;
}

// Equal faces have equal bytes: what stands behind the end of the name does not count.
std::string KeyOf(LOGFONTW face) {
  wchar_t* const end = face.lfFaceName + LF_FACESIZE;
  std::fill(std::find(face.lfFaceName, end, L'\0'), end, L'\0');
  std::string key(sizeof(face), '\0');
  std::memcpy(key.data(), &face, sizeof(face));
  return key;
}

class FontShelf {
 public:
  std::shared_ptr<const GdiFont> Take(const LOGFONTW& face) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::string key = KeyOf(face);
    const auto known = fonts_.find(key);
    if (known != fonts_.end()) return known->second;
    if (fonts_.size() >= kKeptFonts)
      std::erase_if(fonts_, [](const auto& f) { return f.second.use_count() == 1; });
    return fonts_[key] = std::make_shared<const GdiFont>(WithInstalledFace(face));
  }

 private:
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<const GdiFont>> fonts_;
};

}  // namespace

GdiFont::GdiFont(const LOGFONTW& face) : handle_(CreateFontIndirectW(&face)), number_(NextNumber()) {}

GdiFont::~GdiFont() {
  if (handle_ != nullptr) DeleteObject(handle_);
}

std::shared_ptr<const GdiFont> SharedFont(const LOGFONTW& face) {
  // Never ended: a window may let its font go while the process ends.
  static FontShelf& shelf = *new FontShelf;
  return shelf.Take(face);
}

LOGFONTW SystemDialogFont(int dots) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof(metrics);
  if (dots > 0) {
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0,
                               static_cast<UINT>(dots));
  } else {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  }
  return metrics.lfMessageFont;
}

}  // namespace lorv
