#include "tools/lorv/verbs/archive_verbs.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <set>

#include "compress/zip/zip_reader.h"
#include "platform/ports/platform.h"
#include "tools/lorv/verbs/archive_output.h"

namespace lorv::tool {
namespace {

// Archives that unpack to more are refused unless the user raises the limits. The ratio counts from this
// total on: small files of one repeated character are no danger.
constexpr std::uint64_t kMegabyte = 1024 * 1024;
constexpr std::uint64_t kDefaultMegabytes = 4096;
constexpr std::uint64_t kDefaultRatio = 200;
constexpr std::uint64_t kRatioFrom = kMegabyte;

struct UnpackArguments {
  std::string archive;
  std::string folder = ".";
  bool force = false;
  bool any_place = false;
  std::uint64_t megabytes = kDefaultMegabytes;
  std::uint64_t ratio = kDefaultRatio;
};

struct Item {
  ZipEntry entry;
  std::string name;  // UTF-8, with "/" between folders
  bool IsFolder() const { return (entry.attributes & kAttributeFolder) != 0; }
};

struct Archive {
  ZipReader zip;
  std::unique_ptr<File> file;
  std::vector<Item> items;
  std::uint64_t total = 0;
};

void Open(const std::string& path, Archive& archive) {
  archive.file = PortsInForce().files->Open(CString::FromUtf8(path), FileUse::kRead);
  if (!archive.file) throw BadInput("\"" + path + "\" cannot be opened");
  const DWORD result = archive.zip.Open(*archive.file);
  if (result != kZipOk) throw BadInput("\"" + path + "\": " + ZipMessage(result));
  ZipEntry count;
  archive.zip.GetItem(-1, count);
  for (int i = 0; i < count.index; ++i) {
    Item item;
    const DWORD got = archive.zip.GetItem(i, item.entry);
    if (got != kZipOk)
      throw BadInput("\"" + path + "\", entry " + std::to_string(i) + ": " + ZipMessage(got));
    item.name = CString(PortsInForce().code_page->ToText(item.entry.name)).ToUtf8();
    std::replace(item.name.begin(), item.name.end(), '\\', '/');
    archive.total += static_cast<std::uint64_t>(item.entry.size);
    archive.items.push_back(std::move(item));
  }
}

// Whether a name leads out of the folder that it is unpacked to.
bool LeadsOut(const std::string& name) {
  const std::string framed = "/" + name + "/";
  return name.empty() || name[0] == '/' || name.find(':') != std::string::npos ||
         framed.find("/../") != std::string::npos;
}

void CheckLimits(const UnpackArguments& arguments, const Archive& archive) {
  if (archive.total > arguments.megabytes * kMegabyte) {
    throw BadInput("\"" + arguments.archive + "\" unpacks to " + std::to_string(archive.total / kMegabyte) +
                   " MB, more than " + std::to_string(arguments.megabytes) + "; --max-size raises the limit");
  }
  const auto packed = static_cast<std::uint64_t>(std::max<std::int64_t>(archive.file->Size(), 1));
  if (archive.total > kRatioFrom && archive.total / packed > arguments.ratio) {
    throw BadInput("\"" + arguments.archive + "\" unpacks to " + std::to_string(archive.total / packed) +
                   " times its size, more than " + std::to_string(arguments.ratio) +
                   "; --max-ratio raises the limit");
  }
}

std::string TargetOf(const UnpackArguments& arguments, const Item& item) {
  return arguments.folder + "/" + item.name;
}

// All that speaks against unpacking is known before the first file is written.
void Check(const UnpackArguments& arguments, const Archive& archive) {
  CheckLimits(arguments, archive);
  std::set<std::string> targets;
  for (const Item& item : archive.items) {
    if (!arguments.any_place && LeadsOut(item.name)) {
      throw BadInput("\"" + item.name + "\" would be unpacked outside the folder; --any-place allows it");
    }
    const std::string target = TargetOf(arguments, item);
    if (item.IsFolder() || arguments.force) continue;
    if (!targets.insert(target).second) {
      throw BadInput("\"" + item.name + "\" is in the archive twice; --force keeps the last one");
    }
    if (PortsInForce().files->Exists(CString::FromUtf8(target))) {
      throw BadInput("\"" + target + "\" is there already; --force replaces it");
    }
  }
}

void MakeFoldersOf(const std::string& path) {
  for (std::size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1)) {
    PortsInForce().files->MakeFolder(CString::FromUtf8(path.substr(0, at)));
  }
}

void UnpackItem(const UnpackArguments& arguments, Archive& archive, const Item& item, ProgressBar& bar) {
  const std::string target = TargetOf(arguments, item);
  MakeFoldersOf(item.IsFolder() ? target + "/" : target);
  if (item.IsFolder()) return;
  NewFile file(target, arguments.force);
  const DWORD result = archive.zip.UnzipItem(item.entry.index, [&](std::span<const unsigned char> bytes) {
    bar.Advance(bytes.size());
    return file.Stream().Write(bytes.data(), bytes.size());
  });
  if (result != kZipOk) throw BadInput("\"" + item.name + "\": " + ZipMessage(result));
  file.Keep();
  Files& files = *PortsInForce().files;
  const CString path = CString::FromUtf8(target);
  files.SetTimes(path, {item.entry.access_time, item.entry.creation_time, item.entry.write_time});
  files.SetAttributes(path, item.entry.attributes);
}

int Unpack(const UnpackArguments& arguments, Console& console) {
  Archive archive;
  Open(arguments.archive, archive);
  Check(arguments, archive);
  ProgressBar bar(console, archive.total);
  for (const Item& item : archive.items) UnpackItem(arguments, archive, item, bar);
  return kFine;
}

std::string Time(std::int64_t time) {
  const SYSTEMTIME t = PortsInForce().clock->ToLocal(time);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                t.wMinute, t.wSecond);
  return time == 0 ? std::string(19, '-') : text;
}

int List(const std::string& path, Console& console) {
  Archive archive;
  Open(path, archive);
  for (const Item& item : archive.items) {
    char sizes[40];
    std::snprintf(sizes, sizeof sizes, "%12d %12d  ", item.entry.size, item.entry.compressed_size);
    console.out << sizes << Time(item.entry.write_time) << "  " << item.name << "\n";
  }
  return kFine;
}

int Test(const std::string& path, Console& console) {
  Archive archive;
  Open(path, archive);
  ProgressBar bar(console, archive.total);
  int bad = 0;
  for (const Item& item : archive.items) {
    const DWORD result = archive.zip.UnzipItem(item.entry.index, [&](std::span<const unsigned char> bytes) {
      bar.Advance(bytes.size());
      return true;
    });
    if (result == kZipOk || item.IsFolder()) continue;
    console.out << item.name << ": " << ZipMessage(result) << "\n";
    ++bad;
  }
  console.out << archive.items.size() << " entries, " << bad << " damaged\n";
  return bad == 0 ? kFine : kResultFailed;
}

Work DeclareReading(CLI::App& app, int (*work)(const std::string&, Console&)) {
  const auto archive = std::make_shared<std::string>();
  app.add_option("ARCHIVE", *archive, "a ZIP archive")->required();
  return [archive, work](Console& console) { return work(*archive, console); };
}

}  // namespace

Work DeclareUnpack(CLI::App& app) {
  const auto arguments = std::make_shared<UnpackArguments>();
  app.add_option("ARCHIVE", arguments->archive, "a ZIP archive")->required();
  app.add_option("--to", arguments->folder, "the folder to unpack to; the working folder if not given");
  app.add_flag("--force", arguments->force, "replace files that are there already");
  app.add_flag("--any-place", arguments->any_place, "allow names that lead out of the folder");
  app.add_option("--max-size", arguments->megabytes, "refuse archives of more megabytes, unpacked (4096)");
  app.add_option("--max-ratio", arguments->ratio, "refuse archives that grow to more times their size (200)");
  app.footer("Examples:\n  lorv unpack project.zip\n  lorv unpack project.zip --to project --force");
  return [arguments](Console& console) { return Unpack(*arguments, console); };
}

Work DeclareList(CLI::App& app) {
  app.footer("Examples:\n  lorv list project.zip");
  return DeclareReading(app, List);
}
Work DeclareTest(CLI::App& app) {
  app.footer("Examples:\n  lorv test project.zip");
  return DeclareReading(app, Test);
}

}  // namespace lorv::tool
