#include <array>
#include <cstdint>
#include <memory>
#include <ostream>

#include "compress/AdRar.h"
#include "compress/lzari/byte_order.h"
#include "platform/ports/platform.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/files/new_file.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"
#include "tools/lorv/screen/progress_bar.h"
#include "tools/lorv/text/json_text.h"

// The verbs `squeeze` and `expand`: single files in the suite's own compressed form, for data that programs
// of the suite read.

namespace lorv::tool {
namespace {

constexpr const char* kSuffix = ".lzari";

struct SqueezeArguments {
  std::string source;
  std::string target;
  bool force = false;
  bool json = false;
};

std::uint64_t SizeOf(const std::string& path) {
  const auto facts = PortsInForce().files->Facts(CString::FromUtf8(path));
  if (!facts || facts->IsFolder() || facts->is_stream) throw BadInput(Say("{} is no file", {Quoted(path)}));
  return facts->size;
}

// What a squeezed file says it holds, for the progress only.
std::uint64_t PlainSizeOf(const std::string& path) {
  std::array<unsigned char, 4> header{};
  const auto file = PortsInForce().files->Open(CString::FromUtf8(path), FileUse::kRead);
  if (!file || file->Read(header.data(), header.size()) != 4)
    throw BadInput(Say("{} is no squeezed file", {Quoted(path)}));
  return LoadLittle32(header.data());
}

// Reports to a program what was made, and of what.
void Write(const SqueezeArguments& arguments, Console& console) {
  if (!arguments.json) return;
  JsonText json;
  json.Open('{');
  json.Key("file").String(arguments.source);
  json.Key("size").Number(static_cast<long long>(SizeOf(arguments.source)));
  json.Key("made").String(arguments.target);
  json.Key("made_size").Number(static_cast<long long>(SizeOf(arguments.target)));
  json.Close('}');
  console.out << json.Text();
}

// Runs one operation of the codec into a new file.
template <class Operation>
void WriteBy(const SqueezeArguments& arguments, std::uint64_t total, Console& console,
             const Operation& operation) {
  if (arguments.json && arguments.target == "-")
    throw BadInput(Say("--json and a file cannot both go to standard output"));
  const auto source = PortsInForce().files->Open(CString::FromUtf8(arguments.source), FileUse::kRead);
  if (!source) throw BadInput(Say("{} cannot be opened", {Quoted(arguments.source)}));
  NewFile target(arguments.target, arguments.force, console.out);
  // The bar is gone before anything else is printed.
  {
    ProgressBar bar(console, total);
    CAdRar codec;
    // Without it only the beginning of a file would come back right.
    codec.SetExactDecoding(true);
    // Without a handler the codec prints lines of its own, into the target where that is standard output.
    codec.SetProgress([&](std::uint32_t done) { bar.Show(done); });
    operation(codec, *source, target.Stream());
  }
  target.Keep();
  Write(arguments, console);
}

int Squeeze(SqueezeArguments arguments, Console& console) {
  if (arguments.target.empty()) arguments.target = arguments.source + kSuffix;
  WriteBy(arguments, SizeOf(arguments.source), console, [&](CAdRar& codec, File& from, File& to) {
    try {
      codec.Compress(from, to);
      // The codec reports failures by numbers that it throws.
    } catch (int) {
      throw BadInput(Say("{} has 4 GB or more, or cannot be read, or there is no more room",
                         {Quoted(arguments.source)}));
    }
  });
  return kFine;
}

int Expand(SqueezeArguments arguments, Console& console) {
  if (arguments.target.empty()) {
    if (!arguments.source.ends_with(kSuffix)) throw BadInput(Say("name the file to be made: --out FILE"));
    arguments.target = arguments.source.substr(0, arguments.source.size() - std::string(kSuffix).size());
  }
  // Refuses a pipe, whose first bytes could not be read a second time.
  SizeOf(arguments.source);
  WriteBy(arguments, PlainSizeOf(arguments.source), console, [&](CAdRar& codec, File& from, File& to) {
    try {
      codec.UnCompress(from, to);
    } catch (int) {
      throw BadInput(Say("{} is damaged or cut, or no squeezed file, or there is no more room",
                         {Quoted(arguments.source)}));
    }
  });
  return kFine;
}

Work Declare(VerbSyntax& syntax, const char* what, int (*work)(SqueezeArguments, Console&)) {
  const auto arguments = std::make_shared<SqueezeArguments>();
  syntax.Value("FILE", arguments->source, what).Required();
  syntax.Value("-o,--out", arguments->target,
               "the file to be made, - for standard output; else with or without \".lzari\" behind");
  syntax.Flag("-f,--force", arguments->force, "replace a file that is there already");
  syntax.Flag("-j,--json", arguments->json, "print the names and sizes of both files as JSON");
  return [arguments, work](Console& console) { return work(*arguments, console); };
}

}  // namespace

Work DeclareSqueeze(VerbSyntax& syntax) {
  syntax.Footer(
      "The suite's own form of a single file; `lorv pack` makes smaller archives that every program "
      "reads.\n\n"
      "Examples:\n  lorv squeeze plan.csv\n  lorv squeeze plan.csv --out plan.lz");
  return Declare(syntax, "the file to be squeezed", Squeeze);
}
Work DeclareExpand(VerbSyntax& syntax) {
  syntax.Footer("Examples:\n  lorv expand plan.csv.lzari\n  lorv expand plan.lz --out plan.csv");
  return Declare(syntax, "a squeezed file", Expand);
}

}  // namespace lorv::tool
