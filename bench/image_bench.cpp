// Images decoded and drawn, beside Qt's own classes on the same bytes.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include "framework/drawing/context_handles.h"
#include "framework/drawing/device_context.h"
#include "image/decode/image_reader.h"
#include "image/image.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "tests/image/decode/made_images.h"

namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 768;
constexpr int kGifSide = 400;
constexpr int kGifFrames = 10;

// Soft shapes with some noise, as drawings and photographs have both.
QImage Shapes(QImage::Format format) {
  std::mt19937 random(5);
  QImage image(kWidth, kHeight, format);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      const int noise = static_cast<int>(random() % 8);
      image.setPixel(x, y, qRgba((x + y) / 8 % 256, (x * 2 + noise) % 256, y / 3 % 256, 255 - x / 8 % 128));
    }
  return image;
}

std::string Saved(const QImage& image, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format, 85);
  return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

std::string Animation() {
  std::vector<lorv::test::MadeFrame> frames;
  for (int i = 0; i < kGifFrames; ++i) {
    std::string numbers(std::size_t{kGifSide} * kGifSide, '\0');
    for (std::size_t at = 0; at < numbers.size(); ++at)
      numbers[at] = static_cast<char>((at / 40 + at / 9000 + static_cast<std::size_t>(i)) % 4);
    frames.push_back({0, 0, kGifSide, kGifSide, numbers, 10, 1});
  }
  return lorv::test::MadeGif(kGifSide, kGifSide, frames);
}

enum Kind { kPng, kPngAlpha, kJpeg, kBmp, kGif };

const std::string& BytesOf(int kind) {
  static const std::map<int, std::string> all = {{kPng, Saved(Shapes(QImage::Format_RGB32), "PNG")},
                                                 {kPngAlpha, Saved(Shapes(QImage::Format_ARGB32), "PNG")},
                                                 {kJpeg, Saved(Shapes(QImage::Format_RGB32), "JPG")},
                                                 {kBmp, Saved(Shapes(QImage::Format_RGB32), "BMP")},
                                                 {kGif, Animation()}};
  return all.at(kind);
}

// Every frame once, as the picture that is shown.
void DecodeImage(benchmark::State& state) {
  const std::string& bytes = BytesOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto image = lorv::OpenImage(bytes);
    for (int frame = 0; frame < image->FrameCount(); ++frame)
      benchmark::DoNotOptimize(image->Frame(frame).pixels.data());
  }
}

void DecodeImageQt(benchmark::State& state) {
  const std::string& bytes = BytesOf(static_cast<int>(state.range(0)));
  const QByteArray lent = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
  for (auto _ : state) {
    QBuffer buffer;
    buffer.setData(lent);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    for (QImage frame = reader.read(); !frame.isNull(); frame = reader.read()) {
      // The picture that is shown has 32 bits, as our decoders give it; a conversion is part of getting
      // there.
      if (frame.depth() != 32) frame.convertTo(QImage::Format_ARGB32);
      benchmark::DoNotOptimize(frame.constBits());
    }
  }
}

// The first frame, decoded before, on a picture of its size.
void DrawImage(benchmark::State& state) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "lorv_bench_image";
  std::ofstream(path, std::ios::binary) << BytesOf(static_cast<int>(state.range(0)));
  const TImage image(CString::FromUtf8(path.string()));
  std::filesystem::remove(path);
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  CSize size;
  image.GetDim(size);
  CDC dc(std::shared_ptr<lorv::Canvas>(desktop->MakeCanvas(size)));
  const lorv::ContextHandle handle(dc);
  for (auto _ : state)
    benchmark::DoNotOptimize(image.DrawImage(handle.Get(), CRect(0, 0, size.cx, size.cy), 0));
}

void DrawImageQt(benchmark::State& state) {
  const std::string& bytes = BytesOf(static_cast<int>(state.range(0)));
  QImage frame;
  frame.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()));
  // What our decoders give, so that both sides draw pixels of one form.
  frame.convertTo(QImage::Format_ARGB32);
  QImage ground(frame.size(), QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&ground);
    painter.drawImage(ground.rect(), frame);
    painter.end();
    benchmark::DoNotOptimize(ground.constBits());
  }
}

BENCHMARK(DecodeImage)->DenseRange(kPng, kGif)->Unit(benchmark::kMicrosecond);
BENCHMARK(DecodeImageQt)->DenseRange(kPng, kGif)->Unit(benchmark::kMicrosecond);
BENCHMARK(DrawImage)->DenseRange(kPng, kGif)->Unit(benchmark::kMicrosecond);
BENCHMARK(DrawImageQt)->DenseRange(kPng, kGif)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
