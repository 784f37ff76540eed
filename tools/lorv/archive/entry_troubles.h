#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// What stood in the way of single files or entries while the others were done. Any thread may add.
class EntryTroubles {
 public:
  // `order` is the place among the others when they are reported.
  void Add(const std::string& name, const std::string& words, int order = 0);
  std::size_t Count() const { return troubles_.size(); }
  // A line each, made of a message such as "{} was not packed: {}" with the name and the words.
  void Print(Console& console, std::string_view message);
  // The same as a member "left_out" of an open JSON object: a list of objects with "name" and "why".
  void Write(JsonText& json);

 private:
  struct Trouble {
    int order;
    std::string name;
    std::string words;
  };
  void Sort();

  std::mutex lock_;
  std::vector<Trouble> troubles_;
};

}  // namespace lorv::tool
