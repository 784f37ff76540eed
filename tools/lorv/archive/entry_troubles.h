#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "tools/lorv/verb.h"

namespace lorv::tool {

// What stood in the way of single files or entries while the others were done. Any thread may add.
class EntryTroubles {
 public:
  // `order` is the place among the others when they are told.
  void Add(const std::string& name, const std::string& words, int order = 0);
  std::size_t Count() const { return troubles_.size(); }
  // A line each: `lorv: "a/b.txt" was not packed: it is encrypted`, with `done` for "packed".
  void Print(Console& console, const std::string& done);

 private:
  struct Trouble {
    int order;
    std::string name;
    std::string words;
  };
  std::mutex lock_;
  std::vector<Trouble> troubles_;
};

}  // namespace lorv::tool
