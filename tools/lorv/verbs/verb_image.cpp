#include <memory>
#include <optional>
#include <ostream>

#include "image/decode/image_reader.h"
#include "image/picture/picture.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/csv/input_bytes.h"
#include "tools/lorv/files/new_file.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/pictures/png_bytes.h"
#include "tools/lorv/text/json_text.h"

// The verb `image`: what the library makes of an image file, and a frame of it as PNG. It asks the reader
// that the suite's images go through, with its limits.

namespace lorv::tool {

Work DeclareImage(VerbSyntax& syntax);

namespace {

struct ImageArguments {
  std::string source;
  std::string target;
  std::optional<int> frame;
  bool force = false;
  bool json = false;
};

constexpr const char* kHelp =
    "Says the kind, the size and the count of frames of a GIF, PNG, JPEG, BMP, ICO or TIFF, by its content "
    "and\n"
    "not by its name; of several frames each with its size and delay. Pages of a TIFF are frames, of an ICO "
    "the\n"
    "largest picture counts. With --out it writes a frame, as it stands once those before it are drawn.\n"
    "\n"
    "Examples:\n"
    "  lorv image beam.gif\n"
    "  lorv image beam.gif --json\n"
    "  lorv image beam.gif --frame 2 --out third.png\n"
    "\n"
    "Exit code 2: the file is no such image, is damaged, takes more memory than images may, or has no such "
    "frame.";

const char* NameOf(ImageKind kind) {
  // In the order of ImageKind.
  static constexpr const char* kNames[] = {"GIF", "PNG", "JPEG", "BMP", "ICO", "TIFF"};
  return kNames[static_cast<int>(kind)];
}

// The whole file; one that is larger than images may be is not read to its end.
std::string BytesOf(const std::string& path, Console& console) {
  constexpr std::size_t kBlock = std::size_t{1} << 16;
  InputBytes input(path, console.in);
  std::string bytes;
  std::string block;
  for (input.Read(block, kBlock); !block.empty(); input.Read(block, kBlock)) {
    bytes += block;
    if (bytes.size() > static_cast<std::size_t>(kMostImageBytes))
      throw BadInput(Say("{} is larger than {} bytes", {input.Name(), std::to_string(kMostImageBytes)}));
  }
  return bytes;
}

std::unique_ptr<ImageReader> Opened(const std::string& path, Console& console) {
  // By content, as the suite's windows do: endings of files are often wrong.
  auto image = OpenImage(BytesOf(path, console));
  if (image == nullptr) throw BadInput(Say("{} is no image that can be read, or it is damaged", {path}));
  return image;
}

// In milliseconds, as an image tip waits.
long long DelayOf(const ImageReader& image, int frame) {
  // Files count delays in hundredths of a second.
  constexpr long long kMillisecondsAnEntry = 10;
  return kMillisecondsAnEntry * image.Delays()[static_cast<std::size_t>(frame)];
}

void WriteFrameFacts(const ImageReader& image, int frame, JsonText& json) {
  const auto [width, height] = image.FrameSize(frame);
  json.Open('{');
  json.Key("width").Number(static_cast<long long>(width));
  json.Key("height").Number(static_cast<long long>(height));
  json.Key("delay");
  image.Delays().empty() ? json.Null() : json.Number(DelayOf(image, frame));
  json.Close('}');
}

void ReportAsJson(const ImageArguments& arguments, const ImageReader& image, Console& console) {
  JsonText json;
  json.Open('{');
  json.Key("file").String(arguments.source);
  json.Key("kind").String(NameOf(image.Kind()));
  json.Key("width").Number(static_cast<long long>(image.Width()));
  json.Key("height").Number(static_cast<long long>(image.Height()));
  json.Key("frames").Open('[');
  for (int frame = 0; frame < image.FrameCount(); ++frame) WriteFrameFacts(image, frame, json);
  json.Close(']');
  json.Close('}');
  console.out << json.Text();
}

std::string SizeText(int width, int height) {
  return std::to_string(width) + " x " + std::to_string(height);
}

void Report(const ImageReader& image, Console& console) {
  const int count = image.FrameCount();
  console.out << NameOf(image.Kind()) << ", "
              << Say("{} pixels, {} frames", {SizeText(image.Width(), image.Height()), std::to_string(count)})
              << "\n";
  // Of a single frame the line above has said it all.
  for (int frame = 0; frame < count && count > 1; ++frame) {
    const auto [width, height] = image.FrameSize(frame);
    console.out << std::to_string(frame) << "\t" << SizeText(width, height);
    if (!image.Delays().empty()) console.out << "\t" << std::to_string(DelayOf(image, frame)) << " ms";
    console.out << "\n";
  }
}

// A frame as it is seen: in a GIF it may hold only what has changed.
void WriteFrame(const ImageArguments& arguments, ImageReader& image, Console& console) {
  const int frame = arguments.frame.value_or(0);
  if (frame < 0 || frame >= image.FrameCount())
    throw BadInput(Say("there is no frame {}: the first is 0, the last {}",
                       {std::to_string(frame), std::to_string(image.FrameCount() - 1)}));
  const Raster& shown = image.Frame(frame);
  const std::string png =
      PngOf({shown.width, shown.height}, {shown.pixels.begin(), shown.pixels.end()}, PngColours::kWithAlpha);
  // Opened when the picture is there: a frame that fails leaves no file.
  NewFile target(arguments.target, arguments.force, console.out);
  if (!target.Stream().Write(png.data(), png.size()))
    throw BadInput(Say("{} cannot be written: the disk is full or failed", {arguments.target}));
  target.Keep();
}

int Run(const ImageArguments& arguments, Console& console) {
  if (arguments.frame && arguments.target.empty())
    throw BadInput(Say("a frame is written to a file: name it by --out"));
  // What is reported and what is written would run into each other.
  if (arguments.json && arguments.target == "-")
    throw BadInput(Say("--json and a file cannot both go to standard output"));
  const auto image = Opened(arguments.source, console);
  if (!arguments.target.empty()) WriteFrame(arguments, *image, console);
  if (arguments.json) {
    ReportAsJson(arguments, *image, console);
  } else if (arguments.target.empty()) {
    Report(*image, console);
  }
  return kFine;
}

}  // namespace

Work DeclareImage(VerbSyntax& syntax) {
  const auto arguments = std::make_shared<ImageArguments>();
  syntax.Value("FILE", arguments->source, "an image; - is standard input").Required();
  syntax.Value("--frame", arguments->frame, "the frame to be written, counted from 0");
  syntax.Value("--out", arguments->target, "the PNG to be made; - is standard output");
  syntax.Flag("-f,--force", arguments->force, "replace a file that is there already");
  syntax.Flag("-j,--json", arguments->json, "print what the image holds as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Run(*arguments, console); };
}

}  // namespace lorv::tool
