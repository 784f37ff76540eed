#include <CLI/CLI.hpp>

#include "compress/zip/zip_writer.h"
#include "platform/ports/platform.h"
#include "tools/lorv/archive/source_list.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/files/new_file.h"
#include "tools/lorv/text/harmless_text.h"
#include "tools/lorv/verbs/archive_verbs.h"
#include "tools/lorv/verbs/watched_file.h"

namespace lorv::tool {
namespace {

struct PackArguments {
  std::string archive;
  std::vector<std::string> paths;
  bool force = false;
};

// Packs one source; false where it was told and left out.
bool AddSource(ZipWriter& zip, const Source& source, EntryTroubles& troubles, ProgressBar& bar) {
  const ZipFault fault = zip.Obstacle(source.narrow, source.facts.size, source.unicode);
  if (fault != ZipFault::kNone) {
    troubles.Add(source.path, WordsFor(fault));
    return false;
  }
  if (source.facts.IsFolder()) return zip.AddFolder(source.narrow.c_str(), source.unicode) == kZipOk;
  const auto file = PortsInForce().files->Open(CString::FromUtf8(source.path), FileUse::kRead);
  if (!file) {
    troubles.Add(source.path, "it cannot be opened");
    return false;
  }
  WatchedFile watched(*file, bar);
  const DWORD result = zip.Add(source.narrow.c_str(), watched, &source.facts, source.unicode);
  if (result == kZipReadFailed) throw BadInput(Quoted(source.path) + " cannot be read to its end");
  if (result == kZipWrongSize) throw BadInput(Quoted(source.path) + " has grown to more than 2 GB meanwhile");
  return result == kZipOk;
}

void WriteArchive(const SourceList& list, NewFile& target, const PackArguments& arguments,
                  EntryTroubles& troubles, ProgressBar& bar) {
  ZipWriter zip;
  zip.Create(target.Stream());
  std::size_t packed = 0;
  for (const Source& source : list.Sources()) packed += AddSource(zip, source, troubles, bar) ? 1U : 0U;
  if (packed == 0 && troubles.Count() > 0) throw BadInput("nothing could be packed");
  if (zip.Close() != kZipOk) {
    throw BadInput(Quoted(arguments.archive) + " cannot be written: the disk is full or failed");
  }
}

int Pack(const PackArguments& arguments, Console& console) {
  EntryTroubles troubles;
  try {
    SourceList list(arguments.archive, troubles);
    for (const std::string& path : arguments.paths) list.Add(path);
    NewFile target(arguments.archive, arguments.force, console.out);
    ProgressBar bar(console, list.Total());
    WriteArchive(list, target, arguments, troubles, bar);
    target.Keep();
  } catch (...) {
    troubles.Print(console, "packed");
    throw;
  }
  troubles.Print(console, "packed");
  return troubles.Count() == 0 ? kFine : kResultFailed;
}

}  // namespace

Work DeclarePack(CLI::App& app) {
  const auto arguments = std::make_shared<PackArguments>();
  app.add_option("ARCHIVE", arguments->archive, "the ZIP archive to be made; - is standard output")
      ->required();
  app.add_option("FILE", arguments->paths, "files, and folders with all that is in them")->required();
  app.add_flag("--force", arguments->force, "replace an archive that is there already");
  app.footer(
      "What cannot be packed is named and stops nothing else; the exit code is then 1.\n\n"
      "Examples:\n  lorv pack project.zip drawings plan.csv\n  lorv pack --force project.zip drawings");
  return [arguments](Console& console) { return Pack(*arguments, console); };
}

}  // namespace lorv::tool
