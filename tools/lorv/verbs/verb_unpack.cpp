#include <memory>
#include <ostream>

#include "tools/lorv/archive/unpacker.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"

// The verb `unpack`: a ZIP archive into a folder. Limits and names are looked at before the first file is
// written.

namespace lorv::tool {
namespace {

struct UnpackArguments {
  std::string archive;
  UnpackWishes wishes{"."};
  UnpackLimits limits;
  bool json = false;
};

void Write(const UnpackArguments& arguments, std::size_t entries, EntryTroubles& troubles, Console& console) {
  JsonText json;
  json.Open('{');
  json.Key("archive").String(arguments.archive);
  json.Key("folder").String(arguments.wishes.folder);
  json.Key("entries").Number(static_cast<long long>(entries));
  troubles.Write(json);
  json.Close('}');
  console.out << json.Text();
}

int Unpack(const UnpackArguments& arguments, Console& console) {
  // An empty name is most often a variable of a script that was never set.
  if (arguments.wishes.folder.empty())
    throw BadInput(Say("--to needs the name of a folder; \".\" is the working folder"));
  ArchiveReader archive(arguments.archive);
  archive.CheckLimits(arguments.limits);
  EntryTroubles troubles;
  // The bar is gone before troubles are reported.
  {
    ProgressBar bar(console, archive.Total());
    Unpacker unpacker(archive, arguments.wishes, bar, troubles);
    unpacker.Check();
    unpacker.Run();
  }
  if (arguments.json) {
    Write(arguments, archive.Items().size(), troubles, console);
  } else {
    troubles.Print(console, "{} was not unpacked: {}");
  }
  return troubles.Count() == 0 ? kFine : kResultFailed;
}

}  // namespace

Work DeclareUnpack(VerbSyntax& syntax) {
  const auto arguments = std::make_shared<UnpackArguments>();
  syntax.Value("ARCHIVE", arguments->archive, "a ZIP archive").Required();
  syntax.Value("-t,--to", arguments->wishes.folder,
               "the folder to unpack to; the working folder if not given");
  syntax.Flag("-f,--force", arguments->wishes.force, "replace files that are there already, but no links");
  syntax.Flag("--any-place", arguments->wishes.any_place, "allow names that lead out of the folder");
  syntax.Flag("-j,--json", arguments->json, "print the entries left out as JSON");
  AddLimitOptions(syntax, arguments->limits);
  syntax.Footer(
      "An entry that is damaged, encrypted or cannot be written is named and stops no other; the exit code "
      "is\n"
      "then 1.\n\n"
      "Examples:\n  lorv unpack project.zip\n  lorv unpack project.zip --to project --force");
  return [arguments](Console& console) { return Unpack(*arguments, console); };
}

}  // namespace lorv::tool
