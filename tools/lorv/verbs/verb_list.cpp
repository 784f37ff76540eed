#include <CLI/CLI.hpp>
#include <ostream>

#include "platform/ports/platform.h"
#include "tools/lorv/archive/archive_reader.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/text/harmless_text.h"
#include "tools/lorv/text/progress_bar.h"
#include "tools/lorv/verbs/archive_verbs.h"

namespace lorv::tool {
namespace {

struct TestArguments {
  std::string archive;
  UnpackLimits limits;
};

std::string Time(std::int64_t time) {
  const SYSTEMTIME t = PortsInForce().clock->ToLocal(time);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                t.wMinute, t.wSecond);
  return time == 0 ? std::string(19, '-') : text;
}

int List(const std::string& path, Console& console) {
  const ArchiveReader archive(path);
  for (const Item& item : archive.Items()) {
    const ZipListing& entry = item.listing;
    char sizes[60];
    std::snprintf(sizes, sizeof sizes, "%12llu %12llu  ", static_cast<unsigned long long>(entry.size),
                  static_cast<unsigned long long>(entry.compressed_size));
    console.out << sizes << Time(entry.times.write) << "  " << Harmless(item.name) << "\n";
  }
  return kFine;
}

int Test(const TestArguments& arguments, Console& console) {
  ArchiveReader archive(arguments.archive);
  archive.CheckLimits(arguments.limits);
  ProgressBar bar(console, archive.Total());
  int bad = 0;
  for (const Item& item : archive.Items()) {
    if (item.IsFolder()) continue;
    const DWORD result = archive.Zip().UnzipItem(item.index, [&](std::span<const unsigned char> bytes) {
      bar.Advance(bytes.size());
      return true;
    });
    if (result == kZipOk) continue;
    console.out << Harmless(item.name) << ": " << WordsFor(archive.Zip().LastFault()) << "\n";
    ++bad;
  }
  console.out << archive.Items().size() << " entries, " << bad << " damaged\n";
  return bad == 0 ? kFine : kResultFailed;
}

}  // namespace

Work DeclareList(CLI::App& app) {
  const auto archive = std::make_shared<std::string>();
  app.add_option("ARCHIVE", *archive, "a ZIP archive")->required();
  app.footer("Control characters in names are shown as \"\\x1B\".\n\nExamples:\n  lorv list project.zip");
  return [archive](Console& console) { return List(*archive, console); };
}

Work DeclareTest(CLI::App& app) {
  const auto arguments = std::make_shared<TestArguments>();
  app.add_option("ARCHIVE", arguments->archive, "a ZIP archive")->required();
  AddLimitOptions(app, arguments->limits);
  app.footer("Examples:\n  lorv test project.zip");
  return [arguments](Console& console) { return Test(*arguments, console); };
}

}  // namespace lorv::tool
