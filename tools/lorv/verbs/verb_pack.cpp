#include <memory>
#include <ostream>
#include <vector>

#include "compress/zip/zip_writer.h"
#include "tools/lorv/archive/packer.h"
#include "tools/lorv/archive/source_list.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/files/new_file.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// The verb `pack`: files and folders into a ZIP archive. What cannot be packed is left out and reported, as a
// backup of a thousand files must not end at the one that another program has open.

namespace lorv::tool {
namespace {

struct PackArguments {
  std::string archive;
  std::vector<std::string> paths;
  bool force = false;
  bool json = false;
};

constexpr const char* kLeftOut = "{} was not packed: {}";

// Gives how many entries the archive has got.
std::size_t WriteArchive(const SourceList& list, NewFile& target, const PackArguments& arguments,
                         EntryTroubles& troubles, ProgressBar& bar) {
  ZipWriter zip;
  zip.Create(target.Stream());
  const std::size_t packed = Packer(list.Sources(), arguments.archive, zip, troubles, bar).Run();
  // An archive of nothing would pass for a backup.
  if (packed == 0 && troubles.Count() > 0) throw BadInput(Say("nothing could be packed"));
  if (zip.Close() != kZipOk) {
    throw BadInput(Say("{} cannot be written: the disk is full or failed", {Quoted(arguments.archive)}));
  }
  return packed;
}

void Write(const PackArguments& arguments, std::size_t packed, EntryTroubles& troubles, Console& console) {
  JsonText json;
  json.Open('{');
  json.Key("archive").String(arguments.archive);
  json.Key("entries").Number(static_cast<long long>(packed));
  troubles.Write(json);
  json.Close('}');
  console.out << json.Text();
}

int Pack(const PackArguments& arguments, Console& console) {
  if (arguments.json && arguments.archive == "-")
    throw BadInput(Say("--json and an archive cannot both go to standard output"));
  EntryTroubles troubles;
  std::size_t packed = 0;
  try {
    SourceList list(arguments.archive, troubles);
    for (const std::string& path : arguments.paths) list.Add(path);
    // After the search: a path of the user's that is not there leaves no archive.
    NewFile target(arguments.archive, arguments.force, console.out);
    ProgressBar bar(console, list.Total());
    packed = WriteArchive(list, target, arguments, troubles, bar);
    target.Keep();
  } catch (...) {
    // What was left out may be why nothing could be packed: it is reported in any case.
    troubles.Print(console, kLeftOut);
    throw;
  }
  if (arguments.json) {
    Write(arguments, packed, troubles, console);
  } else {
    troubles.Print(console, kLeftOut);
  }
  return troubles.Count() == 0 ? kFine : kResultFailed;
}

}  // namespace

Work DeclarePack(VerbSyntax& syntax) {
  const auto arguments = std::make_shared<PackArguments>();
  syntax.Value("ARCHIVE", arguments->archive, "the ZIP archive to be made; - is standard output").Required();
  syntax.Value("FILE", arguments->paths, "files, and folders with all that is in them").Required();
  syntax.Flag("-f,--force", arguments->force, "replace an archive that is there already");
  syntax.Flag("-j,--json", arguments->json, "print what was packed and what was left out as JSON");
  syntax.Footer(
      "What cannot be packed is named and stops nothing else; the exit code is then 1.\n\n"
      "Examples:\n  lorv pack project.zip drawings plan.csv\n  lorv pack --force project.zip drawings");
  return [arguments](Console& console) { return Pack(*arguments, console); };
}

}  // namespace lorv::tool
