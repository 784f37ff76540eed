#include "tools/lorv/session/session.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/tools/run_tool.h"
#include "tools/lorv/session/line_editor.h"

namespace lorv::test {
namespace {

ToolRun Session(const std::string& lines) {
  std::istringstream in(lines);
  std::ostringstream out, err;
  tool::Console console{in, out, err};
  const int code = tool::RunSession(console);
  const std::string said = out.str();
  return {code, said.substr(said.find('\n') + 1), err.str()};
}

TEST(Session, WorksLinesAndKeepsNames) {
  const ToolRun run = Session("2*3\n墙长 = 6\n墙长*ans\n墙长=墙长+1\n\nnames\nquit\n1+1\n");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, "6\n墙长 = 6\n36\n墙长 = 7\nans = 7\n墙长 = 7\n");
  EXPECT_EQ(run.err, "");
}

TEST(Session, WrongLinesChangeNothing) {
  const ToolRun run = Session("A=2\nA=1/0\nA+\nA==2\nclear\nA\n");
  EXPECT_EQ(run.out, "A = 2\n1\n");
  EXPECT_NE(run.err.find("division by zero"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("the name 'A' is not known"), std::string::npos) << run.err;
}

// "PI = 3" would be a comparison, which is 0.
TEST(Session, ReservedNamesCannotBeGiven) {
  const ToolRun run = Session("PI = 3\nmax=2\n2 = 2\nPI==3\n2*PI\n");
  EXPECT_EQ(run.out, "1\n0\n6.2831853072\n");
  EXPECT_EQ(run.err,
            "lorv: \"PI\" cannot be a name in a formula\nlorv: \"max\" cannot be a name in a formula\n");
}

// An editor that plays a person who asks for completions.
class Editor : public tool::LineEditor {
 public:
  std::optional<std::string> Read(const std::string& /*prompt*/) override {
    if (lines_ == 2) return std::nullopt;
    if (++lines_ == 1) return "Länge=2";
    found = completion_("l");
    return "help";
  }
  void Complete(Completion with) override {
    if (with) completion_ = std::move(with);
  }
  std::vector<std::string> found;

 private:
  int lines_ = 0;
  Completion completion_;
};

TEST(Session, CompletesNamesFunctionsAndCommands) {
  std::istringstream in;
  std::ostringstream out, err;
  tool::Console console{in, out, err};
  Editor editor;
  console.editor = &editor;
  EXPECT_EQ(tool::RunSession(console), 0);
  EXPECT_EQ(editor.found, (std::vector<std::string>{"Länge", "LEN(", "LOG("}));
  EXPECT_NE(out.str().find("NAME = FORMULA"), std::string::npos);
}

}  // namespace
}  // namespace lorv::test
