#pragma once

#include <QFont>
#include <QString>
#include <initializer_list>
#include <vector>

namespace lorv::test {

// Faces that set numbers differently, each with and without hinting: with kerning, all digits alike,
// fractions of pixels; of one size bold, of one leaning. Sizes are pixels.
inline std::vector<QFont> SomeFaces(std::initializer_list<int> sizes, int bold, int leaning) {
  std::vector<QFont> fonts;
  for (const char16_t* name : {u"WenQuanYi Micro Hei", u"DejaVu Sans", u"DejaVu Serif", u"DejaVu Sans Mono"})
    for (const int size : sizes) {
      QFont font(QString::fromUtf16(name));
      font.setPixelSize(size);
      font.setBold(size == bold);
      font.setItalic(size == leaning);
      fonts.push_back(font);
      font.setHintingPreference(QFont::PreferNoHinting);
      fonts.push_back(font);
    }
  return fonts;
}

}  // namespace lorv::test
