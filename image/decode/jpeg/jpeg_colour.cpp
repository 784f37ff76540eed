#include <algorithm>

#include "image/decode/jpeg/jpeg_vectors.h"

// From the samples of the components to colours. Where a component has half the samples of another, those
// between are weighed by three and one of their neighbours; other ratios, in either direction, repeat in
// both.
namespace lorv::jpeg {
namespace {

enum class ColourKind : int { kGrey, kColours, kBrightness, kInks, kBrightnessInks };

ColourKind KindOf(const Picture& picture) {
  const std::vector<Component>& parts = picture.components;
  if (parts.size() == 1) return ColourKind::kGrey;
  if (parts.size() == 4)
    return picture.adobe_transform == 2 ? ColourKind::kBrightnessInks : ColourKind::kInks;
  // Such files have no other colours, so the mark settles it.
  if (picture.has_jfif) return ColourKind::kBrightness;
  if (picture.adobe_transform >= 0)
    return picture.adobe_transform == 0 ? ColourKind::kColours : ColourKind::kBrightness;
  // Without any mark only the numbers of the components are left, which some writers make letters.
  const bool named = parts[0].id == 'R' && parts[1].id == 'G' && parts[2].id == 'B';
  return named ? ColourKind::kColours : ColourKind::kBrightness;
}

// The rows of one component at the width of the picture.
class FinerRows {
 public:
  FinerRows(const Picture& picture, const Component& component)
      : component_(component),
        across_(picture.most_across),
        down_(picture.most_down),
        // Two columns have no neighbours to be weighed with.
        twice_across_(2 * component.across == picture.most_across && component.width > 2 &&
                      (component.down == picture.most_down || 2 * component.down == picture.most_down)),
        twice_down_(2 * component.down == picture.most_down &&
                    (component.across == picture.most_across || twice_across_)),
        columns_(static_cast<std::size_t>(component.width)),
        sums_(columns_ + 2),
        row_(columns_ * 2 + static_cast<std::size_t>(picture.width) + 8) {}

  const unsigned char* Row(int y);

 private:
  const unsigned char* Source(int y) const {
    return component_.samples.data() +
           static_cast<std::size_t>(std::clamp(y, 0, component_.height - 1)) * component_.Stride();
  }
  void Blend(int y);
  template <int shift, int before, int behind>
  void Widen();

  const Component& component_;
  int across_;
  int down_;
  bool twice_across_;
  bool twice_down_;
  std::size_t columns_;
  std::vector<std::uint16_t> sums_;  // of two rows, with the first and the last once more at the ends
  std::vector<unsigned char> row_;
};

// Three parts of the nearer row and one of the other. Where both directions are made finer the sum is kept.
void FinerRows::Blend(int y) {
  const unsigned char* const near_row = Source(y / 2);
  const unsigned char* const far_row = Source(y % 2 == 0 ? y / 2 - 1 : y / 2 + 1);
  // Up and down by turns, so that a picture does not become lighter by this.
  const int rounding = y % 2 == 0 ? 1 : 2;
  std::uint16_t* const sums = sums_.data() + 1;
  unsigned char* const row = row_.data();
  const std::size_t columns = columns_;  // as bytes that are written might be a member's
  for (std::size_t x = 0; x < columns; ++x)
    sums[x] = static_cast<std::uint16_t>(3 * near_row[x] + far_row[x]);
  if (twice_across_) return;
  for (std::size_t x = 0; x < columns; ++x) row[x] = static_cast<unsigned char>((sums[x] + rounding) >> 2);
}

// Two of each column, rounded up and down by turns as well.
template <int shift, int before, int behind>
void FinerRows::Widen() {
  sums_.front() = sums_[1];
  sums_.back() = sums_[columns_];
  const std::uint16_t* const sums = sums_.data() + 1;
  const std::uint16_t* const left = sums_.data();
  const std::uint16_t* const right = sums_.data() + 2;
  unsigned char* const row = row_.data();
  const std::size_t columns = columns_;
  for (std::size_t x = 0; x < columns; ++x) {
    row[2 * x] = static_cast<unsigned char>((3 * sums[x] + left[x] + before) >> shift);
    row[2 * x + 1] = static_cast<unsigned char>((3 * sums[x] + right[x] + behind) >> shift);
  }
}

const unsigned char* FinerRows::Row(int y) {
  if (twice_down_) {
    Blend(y);
    if (twice_across_) Widen<4, 8, 7>();
    return row_.data();
  }
  const unsigned char* const from = Source(y * component_.down / down_);
  if (twice_across_) {
    std::copy_n(from, columns_, sums_.begin() + 1);
    Widen<2, 1, 2>();
    return row_.data();
  }
  if (component_.across == across_) return from;
  const std::size_t columns = row_.size() - 2 * columns_ - 8;
  for (std::size_t x = 0; x < columns; ++x) {
    const std::size_t at =
        x * static_cast<std::size_t>(component_.across) / static_cast<std::size_t>(across_);
    row_[x] = from[std::min(at, columns_ - 1)];
  }
  return row_.data();
}

unsigned Limited(int value) {
  return static_cast<unsigned>(std::clamp(value, 0, 255));
}

struct Colour {
  unsigned red, green, blue;
};

// Brightness and two differences, by whole numbers of 16 bits behind the point.
Colour OfBrightness(int brightness, int blueness, int redness) {
  constexpr int kHalf = 1 << 15;
  const int blue = blueness - 128;
  const int red = redness - 128;
  return {Limited(brightness + ((91881 * red + kHalf) >> 16)),
          Limited(brightness + ((-22554 * blue + kHalf - 46802 * red) >> 16)),
          Limited(brightness + ((116130 * blue + kHalf) >> 16))};
}

// Of inks the file has what is left white, if a certain program wrote it, else what is covered.
std::uint32_t OfInks(Colour inks, unsigned black, bool left_white) {
  const auto light = [&](unsigned ink) {
    return left_white ? (ink * black + 127) / 255 : ((255 - ink) * (255 - black) + 127) / 255;
  };
  return Pixel(light(inks.red), light(inks.green), light(inks.blue));
}

using Parts = std::array<const unsigned char*, 4>;

std::uint32_t PixelAt(const Parts& parts, int x, ColourKind kind, bool left_white) {
  const unsigned first = parts[0][x];
  if (kind == ColourKind::kGrey) return Pixel(first, first, first);
  Colour colour = {first, parts[1][x], parts[2][x]};
  if (kind == ColourKind::kBrightness || kind == ColourKind::kBrightnessInks) {
    colour = OfBrightness(parts[0][x], parts[1][x], parts[2][x]);
  }
  if (kind == ColourKind::kBrightnessInks) colour = {255 - colour.red, 255 - colour.green, 255 - colour.blue};
  return parts[3] == nullptr ? Pixel(colour.red, colour.green, colour.blue)
                             : OfInks(colour, parts[3][x], left_white);
}

void PutRow(const Parts& parts, std::uint32_t* to, int width, ColourKind kind, bool left_white) {
  int x = 0;
  if (kind == ColourKind::kBrightness) x = PutBrightnessByVectors(parts[0], parts[1], parts[2], to, width);
  for (; x < width; ++x) to[x] = PixelAt(parts, x, kind, left_white);
}

}  // namespace

void PutColours(Picture& picture, Raster& out) {
  out.width = picture.width;
  out.height = picture.height;
  out.pixels.reserve(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
  const ColourKind kind = KindOf(picture);
  std::vector<FinerRows> rows;
  for (const Component& component : picture.components) rows.emplace_back(picture, component);
  Parts parts = {};
  std::vector<std::uint32_t> row(static_cast<std::size_t>(picture.width));
  for (int y = 0; y < picture.height; ++y) {
    // Row by row: no component is ever held at the size of the whole picture, and no pixel is written twice.
    for (std::size_t i = 0; i < rows.size(); ++i) parts[i] = rows[i].Row(y);
    PutRow(parts, row.data(), picture.width, kind, picture.adobe_transform >= 0);
    out.pixels.insert(out.pixels.end(), row.begin(), row.end());
  }
}

}  // namespace lorv::jpeg
