#include "image/decode/png/png_rows.h"

#include <cstdlib>

// Rows are decoded as the packed stream brings them, so that a picture of 16 bits a sample takes no more
// memory than one of eight: its pixels, and two rows.
namespace lorv::png {
namespace {

constexpr Pass kWhole[] = {{0, 0, 1, 1}};
constexpr Pass kInterlaced[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};

int Count(int size, int first, int step) {
  return size <= first ? 0 : (size - first + step - 1) / step;
}

unsigned char Sum(int one, int other) {
  return static_cast<unsigned char>(one + other);
}

int Nearest(int left, int up, int corner) {
  const int to_left = std::abs(up - corner);
  const int to_up = std::abs(left - corner);
  const int to_corner = std::abs(left + up - 2 * corner);
  const int nearer = to_up <= to_corner ? up : corner;
  return to_left <= to_up && to_left <= to_corner ? left : nearer;
}

// The filters that look to the left, by the bytes of a pixel: as a constant, the pixel before stays in
// registers, which is most of the time that these rows take.
template <std::size_t kPixel>
void AddLeft(unsigned char* row, std::size_t size) {
  for (std::size_t i = kPixel; i < size; ++i) row[i] = Sum(row[i], row[i - kPixel]);
}

template <std::size_t kPixel>
void AddMean(unsigned char* row, const unsigned char* above, std::size_t size) {
  int left[kPixel] = {};
  for (std::size_t i = 0; i + kPixel <= size; i += kPixel)
    for (std::size_t part = 0; part < kPixel; ++part)
      left[part] = row[i + part] = Sum(row[i + part], (left[part] + above[i + part]) / 2);
}

template <std::size_t kPixel>
void AddNearest(unsigned char* row, const unsigned char* above, std::size_t size) {
  int left[kPixel] = {};
  int corner[kPixel] = {};
  for (std::size_t i = 0; i + kPixel <= size; i += kPixel)
    for (std::size_t part = 0; part < kPixel; ++part) {
      const int up = above[i + part];
      left[part] = row[i + part] = Sum(row[i + part], Nearest(left[part], up, corner[part]));
      corner[part] = up;
    }
}

// Takes the filter off a row in place. A row is a whole count of pixels, or they take less than a byte.
template <std::size_t kPixel>
bool Unfilter(unsigned filter, unsigned char* row, const unsigned char* above, std::size_t size) {
  switch (filter) {
    case 0:
      return true;
    case 1:
      AddLeft<kPixel>(row, size);
      return true;
    case 2:
      for (std::size_t i = 0; i < size; ++i) row[i] = Sum(row[i], above[i]);
      return true;
    case 3:
      AddMean<kPixel>(row, above, size);
      return true;
    case 4:
      AddNearest<kPixel>(row, above, size);
      return true;
    default:
      return false;
  }
}

bool UnfilterPixels(std::size_t pixel, unsigned char* row, const unsigned char* above, std::size_t size) {
  const unsigned filter = row[-1];
  switch (pixel) {
    case 1:
      return Unfilter<1>(filter, row, above, size);
    case 2:
      return Unfilter<2>(filter, row, above, size);
    case 3:
      return Unfilter<3>(filter, row, above, size);
    case 4:
      return Unfilter<4>(filter, row, above, size);
    case 6:
      return Unfilter<6>(filter, row, above, size);
    default:
      return Unfilter<8>(filter, row, above, size);
  }
}

}  // namespace

Rows::Rows(const Header& header, const Colours& colours, Raster& out)
    : header_(header),
      colours_(colours),
      out_(out),
      pass_(header.interlaced ? kInterlaced : kWhole),
      end_(header.interlaced ? std::end(kInterlaced) : std::end(kWhole)) {
  out_.Resize(header_.width, header_.height);
  BeginPass();
}

// The next pass that has pixels at all: of a narrow or low picture some have none.
void Rows::BeginPass() {
  row_.clear();
  for (; pass_ != end_; ++pass_) {
    columns_ = Count(header_.width, pass_->first_x, pass_->step_x);
    y_ = pass_->first_y;
    if (columns_ == 0 || y_ >= header_.height) continue;
    row_.assign(1 + header_.RowBytes(columns_), 0);
    // The row above the first one counts as zeros, in each pass anew.
    above_.assign(row_.size(), 0);
    return;
  }
}

bool Rows::TakeRow() {
  if (!UnfilterPixels(header_.PixelBytes(), row_.data() + 1, above_.data() + 1, row_.size() - 1))
    return false;
  PutRow(row_.data() + 1);
  // The row becomes the one above, filter byte and all: only its pixels are asked for.
  row_.swap(above_);
  y_ += pass_->step_y;
  if (y_ >= header_.height) {
    ++pass_;
    BeginPass();
  }
  return true;
}

unsigned Rows::Sample(const unsigned char* row, std::size_t at) const {
  if (header_.depth == 8) return row[at];
  if (header_.depth == 16) return static_cast<unsigned>(row[2 * at]) << 8 | row[2 * at + 1];
  const std::size_t bit = at * header_.depth;
  const unsigned shift = 8 - header_.depth - static_cast<unsigned>(bit % 8);
  return static_cast<unsigned>(row[bit / 8]) >> shift & ((1U << header_.depth) - 1);
}

// A sample of any depth as one of eight bits.
unsigned Rows::Shown(unsigned sample) const {
  if (header_.depth == 16) return sample >> 8;
  return sample * 255 / ((1U << header_.depth) - 1);
}

std::uint32_t Rows::PixelAt(const unsigned char* row, int x) const {
  const std::size_t samples = header_.Samples();
  const std::size_t at = static_cast<std::size_t>(x) * samples;
  const unsigned first = Sample(row, at);
  // A number without a colour is black, as other readers show it.
  if (header_.type == kPalette) return first < colours_.count ? colours_.palette[first] : kOpaque;
  const bool grey = header_.type == kGrey || header_.type == kGreyAlpha;
  const unsigned second = grey ? first : Sample(row, at + 1);
  const unsigned third = grey ? first : Sample(row, at + 2);
  unsigned alpha = 255;
  if ((header_.type & 4) != 0) alpha = Shown(Sample(row, at + samples - 1));
  const std::array<unsigned, 3>& key = colours_.key;
  if (colours_.has_key && first == key[0] && (grey || (second == key[1] && third == key[2]))) alpha = 0;
  return Pixel(Shown(first), Shown(second), Shown(third), alpha);
}

// The kinds that most pictures have, without a question for each sample. Of samples of 16 bits the upper
// eight count, which come first.
void Rows::PutSamples(const unsigned char* row, std::uint32_t* to) const {
  const std::size_t step = header_.depth / 8;
  if (header_.type == kColour) {
    for (int x = 0; x < columns_; ++x, row += 3 * step) to[x] = Pixel(row[0], row[step], row[2 * step]);
  } else {
    for (int x = 0; x < columns_; ++x, row += 4 * step)
      to[x] = Pixel(row[0], row[step], row[2 * step], row[3 * step]);
  }
}

void Rows::PutRow(const unsigned char* row) {
  std::uint32_t* const to = out_.Row(y_);
  const bool whole_samples = header_.depth >= 8 && pass_->step_x == 1 && !colours_.has_key;
  if (whole_samples && (header_.type == kColour || header_.type == kColourAlpha) && pass_->first_x == 0)
    return PutSamples(row, to);
  for (int x = 0; x < columns_; ++x) to[pass_->first_x + x * pass_->step_x] = PixelAt(row, x);
}

}  // namespace lorv::png
