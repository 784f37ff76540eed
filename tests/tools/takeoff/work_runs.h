#pragma once

#include <gtest/gtest.h>

#include "tests/support/data.h"
#include "tests/tools/run_tool.h"

namespace lorv::test {

// A folder with a components and a rules file, and runs of the tool on them.
class WorkRuns : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_.Path() / name).string(); }

  ToolRun Work(const std::string& components, const std::string& rules, std::vector<std::string> more = {}) {
    WriteBytes(folder_.Path() / "c.csv", components);
    WriteBytes(folder_.Path() / "r.csv", rules);
    std::vector<std::string> words = {"work", Path("c.csv"), "--rules", Path("r.csv")};
    words.insert(words.end(), more.begin(), more.end());
    ToolRun run = RunTool(words);
    Shorten(run.err);
    return run;
  }
  // Messages name files by their path; the tests want them short.
  void Shorten(std::string& text) const {
    const std::string prefix = (folder_.Path() / "").string();
    for (std::size_t at = 0; (at = text.find(prefix)) != std::string::npos;) text.erase(at, prefix.size());
  }
  std::string Table(const std::string& components, const std::string& rules) {
    Work(components, rules, {"--quiet", "--out", Path("out.csv")});
    return ReadBytes(folder_.Path() / "out.csv");
  }

  ScratchFolder folder_;
};

}  // namespace lorv::test
