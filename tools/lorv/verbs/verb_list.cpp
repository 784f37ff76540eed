#include <memory>
#include <ostream>
#include <vector>

#include "platform/ports/platform.h"
#include "tools/lorv/archive/archive_reader.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"
#include "tools/lorv/screen/progress_bar.h"
#include "tools/lorv/text/json_text.h"

// The verbs `list` and `test`: what an archive holds, and whether it can be unpacked. Both write nothing, so
// they are safe on any archive.

namespace lorv::tool {
namespace {

struct ListArguments {
  std::string archive;
  bool json = false;
};

struct TestArguments {
  std::string archive;
  UnpackLimits limits;
  bool json = false;
};

// An entry that a test found damaged.
struct Damaged {
  std::string name;
  std::string why;
};

std::string Time(std::int64_t time) {
  const SYSTEMTIME t = PortsInForce().clock->ToLocal(time);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour,
                t.wMinute, t.wSecond);
  // An entry without a time shows none; the first day of the calendar would be taken for a date.
  return time == 0 ? std::string(19, '-') : text;
}

int ListAsJson(const ArchiveReader& archive, Console& console) {
  JsonText json;
  json.Open('[');
  for (const Item& item : archive.Items()) {
    const ZipListing& entry = item.listing;
    json.Open('{');
    json.Key("name").String(item.name);
    json.Key("size").Number(static_cast<long long>(entry.size));
    json.Key("packed").Number(static_cast<long long>(entry.compressed_size));
    json.Key("written");
    entry.times.write == 0 ? json.Null() : json.String(Time(entry.times.write));
    json.Key("fault");
    entry.fault == ZipFault::kNone ? json.Null() : json.String(WordsFor(entry.fault));
    json.Close('}');
  }
  json.Close(']');
  console.out << json.Text();
  return kFine;
}

int List(const ListArguments& arguments, Console& console) {
  const ArchiveReader archive(arguments.archive);
  if (arguments.json) return ListAsJson(archive, console);
  for (const Item& item : archive.Items()) {
    const ZipListing& entry = item.listing;
    char sizes[60];
    std::snprintf(sizes, sizeof sizes, "%12llu %12llu  ", static_cast<unsigned long long>(entry.size),
                  static_cast<unsigned long long>(entry.compressed_size));
    // Names last, as they are of any length, and without what they could do to the terminal.
    console.out << sizes << Time(entry.times.write) << "  " << Harmless(item.name) << "\n";
  }
  return kFine;
}

std::vector<Damaged> DamagedOf(ArchiveReader& archive, Console& console) {
  ProgressBar bar(console, archive.Total());
  std::vector<Damaged> damaged;
  for (const Item& item : archive.Items()) {
    // Folders have no data.
    if (item.IsFolder()) continue;
    // Unpacked for its sum alone: nothing of it is kept.
    const DWORD result = archive.Zip().UnzipItem(item.index, [&](std::span<const unsigned char> bytes) {
      bar.Advance(bytes.size());
      return true;
    });
    if (result != kZipOk) damaged.push_back({item.name, WordsFor(archive.Zip().LastFault())});
  }
  return damaged;
}

void Write(const TestArguments& arguments, std::size_t entries, const std::vector<Damaged>& damaged,
           Console& console) {
  JsonText json;
  json.Open('{');
  json.Key("archive").String(arguments.archive);
  json.Key("entries").Number(static_cast<long long>(entries));
  json.Key("damaged").Open('[');
  for (const Damaged& entry : damaged) {
    json.Open('{');
    json.Key("name").String(entry.name);
    json.Key("why").String(entry.why);
    json.Close('}');
  }
  json.Close(']');
  json.Close('}');
  console.out << json.Text();
}

int Test(const TestArguments& arguments, Console& console) {
  ArchiveReader archive(arguments.archive);
  // The limits hold here, too: what comes out goes nowhere, but takes as long.
  archive.CheckLimits(arguments.limits);
  const std::vector<Damaged> damaged = DamagedOf(archive, console);
  const std::size_t entries = archive.Items().size();
  if (arguments.json) {
    Write(arguments, entries, damaged, console);
  } else {
    for (const Damaged& entry : damaged) console.out << Harmless(entry.name) << ": " << entry.why << "\n";
    console.out << Say("{} entries, {} damaged", {std::to_string(entries), std::to_string(damaged.size())})
                << "\n";
  }
  return damaged.empty() ? kFine : kResultFailed;
}

}  // namespace

Work DeclareList(VerbSyntax& syntax) {
  const auto arguments = std::make_shared<ListArguments>();
  syntax.Value("ARCHIVE", arguments->archive, "a ZIP archive").Required();
  syntax.Flag("-j,--json", arguments->json, "print the entries as JSON");
  syntax.Footer(
      "Each entry with its size, its size in the archive, when it was written and its name. Control "
      "characters in\n"
      "names are shown as \"\\x1B\".\n\n"
      "Examples:\n  lorv list project.zip\n  lorv list --json project.zip");
  return [arguments](Console& console) { return List(*arguments, console); };
}

Work DeclareTest(VerbSyntax& syntax) {
  const auto arguments = std::make_shared<TestArguments>();
  syntax.Value("ARCHIVE", arguments->archive, "a ZIP archive").Required();
  syntax.Flag("-j,--json", arguments->json, "print the damaged entries as JSON");
  AddLimitOptions(syntax, arguments->limits);
  syntax.Footer(
      "Unpacks each entry into nothing and compares its sum. Exit code 1: entries are damaged, each is "
      "named.\n\n"
      "Examples:\n  lorv test project.zip");
  return [arguments](Console& console) { return Test(*arguments, console); };
}

}  // namespace lorv::tool
