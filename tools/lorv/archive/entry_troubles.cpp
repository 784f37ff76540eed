#include "tools/lorv/archive/entry_troubles.h"

#include <algorithm>
#include <ostream>

#include "tools/lorv/text/harmless_text.h"

namespace lorv::tool {

void EntryTroubles::Add(const std::string& name, const std::string& words, int order) {
  const std::lock_guard<std::mutex> hold(lock_);
  troubles_.push_back({order, name, words});
}

void EntryTroubles::Print(Console& console, const std::string& done) {
  std::stable_sort(troubles_.begin(), troubles_.end(),
                   [](const Trouble& a, const Trouble& b) { return a.order < b.order; });
  console.out.flush();
  for (const Trouble& trouble : troubles_) {
    console.err << "lorv: " << Quoted(trouble.name) << " was not " << done << ": " << trouble.words << "\n";
  }
}

}  // namespace lorv::tool
