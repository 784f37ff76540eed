#include "platform/qt/drawing/qt_fonts.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QHash>
#include <algorithm>
#include <atomic>
#include <mutex>

#include "framework/ports/canvas_port.h"
#include "platform/models/message_values.h"
#include "platform/qt/desktop/qt_text.h"

// Fonts by the description that window classes use. A face that is not installed is replaced by one with
// Chinese characters, and such a one stands behind every face, so that no text shows empty boxes.

namespace lorv {
namespace {

constexpr int kDialogPixels = 12;
std::atomic<int> dialog_dpi{kUsualDpi};

QString ChineseFamily() {
  // Dialogs are laid out for letters of unequal widths; one of fixed pitch serves where there is no other.
  const QStringList families = QFontDatabase::families(QFontDatabase::SimplifiedChinese);
  for (const QString& family : families)
    if (!QFontDatabase::isFixedPitch(family)) return family;
  return families.isEmpty() ? QFont().family() : families.front();
}

const QString& Chinese() {
  static const QString family = ChineseFamily();
  return family;
}

// Asking the system takes a tenth of a millisecond, twice for each editor of a cell; what it said is kept,
// for painting threads too. Programs use few faces: a host with more of them than fit asks anew.
bool HasFamily(const QString& face) {
  constexpr qsizetype kMostFaces = 256;
  static std::mutex mutex;
  static QHash<QString, bool> known;
  const std::scoped_lock lock(mutex);
  const auto found = known.constFind(face);
  if (found != known.constEnd()) return found.value();
  if (known.size() >= kMostFaces) known.clear();
  return known.insert(face, QFontDatabase::hasFamily(face)).value();
}

QString Installed(const QString& face) {
  return !face.isEmpty() && HasFamily(face) ? face : Chinese();
}

QFont PixelFont(int pixels) {
  QFont font(Chinese());
  font.setPixelSize(pixels);
  return font;
}

TextView FaceOf(const LOGFONT& description) {
  const TCHAR* const face = description.lfFaceName;
  return {face, static_cast<std::size_t>(std::find(face, face + LF_FACESIZE, TCHAR{0}) - face)};
}

// The size at which a line has that height.
int PixelsForLine(QFont font, int height) {
  // The height of a line grows with the size in proportion, near enough.
  font.setPixelSize(height);
  const int line = std::max(QFontMetrics(font).height(), 1);
  return std::max(height * height / line, 1);
}

}  // namespace

QFont FontOf(const LOGFONT& description) {
  QFont font;
  font.setFamilies({Installed(ToQt(FaceOf(description))), Chinese()});
  font.setBold(description.lfWeight > (FW_NORMAL + FW_BOLD) / 2);
  font.setItalic(description.lfItalic != 0);
  font.setUnderline(description.lfUnderline != 0);
  font.setStrikeOut(description.lfStrikeOut != 0);
  // Of larger ones the square below would leave 32 bits.
  const int height = std::clamp(description.lfHeight, -10000, 10000);
  if (height < 0) font.setPixelSize(-height);
  if (height == 0) font.setPixelSize(-DialogFace().lfHeight);
  if (height > 0) font.setPixelSize(PixelsForLine(font, height));
  return font;
}

LOGFONT DescriptionOf(const QFont& font) {
  LOGFONT description = {};
  description.lfHeight = -font.pixelSize();
  description.lfWeight = font.bold() ? FW_BOLD : FW_NORMAL;
  description.lfItalic = font.italic() ? 1 : 0;
  description.lfUnderline = font.underline() ? 1 : 0;
  description.lfStrikeOut = font.strikeOut() ? 1 : 0;
  description.lfCharSet = DEFAULT_CHARSET;
  CopyOut(FromQt(font.family()), description.lfFaceName, LF_FACESIZE);
  return description;
}

LOGFONT DialogFace() {
  static const LOGFONT usual = DescriptionOf(PixelFont(kDialogPixels));
  LOGFONT face = usual;
  face.lfHeight = -std::max(kDialogPixels * dialog_dpi / kUsualDpi, 1);
  return face;
}

void SetDialogDpi(int dpi) {
  dialog_dpi = dpi;
}

}  // namespace lorv
