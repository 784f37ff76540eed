#include "tools/lorv/archive/entry_troubles.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Collects what could not be packed or unpacked while all else is done, so that one locked file does not
// cost the other thousand.

namespace lorv::tool {

void EntryTroubles::Add(const std::string& name, const std::string& words, int order) {
  const std::lock_guard<std::mutex> hold(lock_);
  troubles_.push_back({order, name, words});
}

// Threads meet them in any order; the reader of the list expects that of the archive.
void EntryTroubles::Sort() {
  std::stable_sort(troubles_.begin(), troubles_.end(),
                   [](const Trouble& a, const Trouble& b) { return a.order < b.order; });
}

void EntryTroubles::Print(Console& console, std::string_view message) {
  Sort();
  // What was done stands above what was not, on a terminal that shows both streams.
  console.out.flush();
  for (const Trouble& trouble : troubles_)
    console.err << "lorv: " << Say(message, {Quoted(trouble.name), trouble.words}) << "\n";
}

void EntryTroubles::Write(JsonText& json) {
  Sort();
  json.Key("left_out").Open('[');
  for (const Trouble& trouble : troubles_) {
    json.Open('{');
    json.Key("name").String(trouble.name);
    json.Key("why").String(trouble.words);
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
