#include "tools/lorv/verbs/archive_verbs.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>

#include "compress/zip/zip_format.h"
#include "compress/zip/zip_writer.h"
#include "platform/ports/platform.h"
#include "tools/lorv/verbs/archive_output.h"

namespace lorv::tool {
namespace {

struct PackArguments {
  std::string archive;
  std::vector<std::string> paths;
  bool force = false;
};

struct Source {
  std::string path;
  FileFacts facts;
};

// A path's name in an archive: without what leads to it from the top or from above.
std::string EntryName(std::string path) {
  std::replace(path.begin(), path.end(), '\\', '/');
  if (path.size() > 1 && path[1] == ':') path.erase(0, 2);
  for (bool cut = true; cut;) {
    cut = false;
    for (const char* lead : {"/", "./", "../"}) {
      if (!path.starts_with(lead)) continue;
      path.erase(0, std::string(lead).size());
      cut = true;
    }
  }
  return path;
}

// The file, or the folder with all that is in it.
void Collect(const std::string& path, std::vector<Source>& sources) {
  Files& files = *PortsInForce().files;
  const auto facts = files.Facts(CString::FromUtf8(path));
  if (!facts) throw BadInput("\"" + path + "\" is not there");
  if (facts->size > zip::kMaxEntryBytes) {
    throw BadInput("\"" + path + "\" has 2 GB or more, which this kind of archive cannot hold");
  }
  if (!EntryName(path).empty() && EntryName(path) != ".") sources.push_back({path, *facts});
  if (!facts->IsFolder()) return;
  for (const FoundFile& found : files.List(CString::FromUtf8(path), _T("*"))) {
    Collect(path + (path.ends_with('/') || path.ends_with('\\') ? "" : "/") + found.name.ToUtf8(), sources);
  }
}

DWORD AddSource(ZipWriter& zip, const Source& source, ProgressBar& bar) {
  const std::string name = NarrowPath(EntryName(source.path));
  if (source.facts.IsFolder()) return zip.AddFolder(name.c_str());
  const auto file = PortsInForce().files->Open(CString::FromUtf8(source.path), FileUse::kRead);
  if (!file) throw BadInput("\"" + source.path + "\" cannot be opened");
  WatchedFile watched(*file, bar);
  return zip.Add(name.c_str(), watched, &source.facts);
}

void Pack(const PackArguments& arguments, Console& console) {
  std::vector<Source> sources;
  for (const std::string& path : arguments.paths) Collect(path, sources);
  std::uint64_t total = 0;
  for (const Source& source : sources) total += source.facts.size;
  NewFile target(arguments.archive, arguments.force);
  {
    ProgressBar bar(console, total);
    ZipWriter zip;
    zip.Create(target.Stream());
    for (const Source& source : sources) {
      const DWORD result = AddSource(zip, source, bar);
      if (result != kZipOk) throw BadInput("\"" + source.path + "\" cannot be packed: " + ZipMessage(result));
    }
    const DWORD result = zip.Close();
    if (result != kZipOk) throw BadInput("\"" + arguments.archive + "\": " + ZipMessage(result));
  }
  target.Keep();
}

}  // namespace

Work DeclarePack(CLI::App& app) {
  const auto arguments = std::make_shared<PackArguments>();
  app.add_option("ARCHIVE", arguments->archive, "the ZIP archive to be made")->required();
  app.add_option("FILE", arguments->paths, "files, and folders with all that is in them")->required();
  app.add_flag("--force", arguments->force, "replace an archive that is there already");
  app.footer(
      "Examples:\n  lorv pack project.zip drawings plan.csv\n  lorv pack --force project.zip drawings");
  return [arguments](Console& console) {
    Pack(*arguments, console);
    return static_cast<int>(kFine);
  };
}

}  // namespace lorv::tool
