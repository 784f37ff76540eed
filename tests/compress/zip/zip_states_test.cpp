#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "compress/zip/zip_writer.h"
#include "platform/headless/services/headless_platform.h"

// Every order of calls gives the same codes, wherever the archive is written to.
namespace lorv::test {
namespace {

constexpr int kSequences = 4000;
constexpr int kLongestSequence = 12;

// One call; what it gives while an archive is open and nothing has failed.
struct Call {
  const char* name;
  std::function<DWORD(ZipWriter&)> make;
  DWORD fresh;
};

std::vector<Call> Additions() {
  return {
      {"add memory", [](ZipWriter& zip) { return zip.Add("a.txt", "hello", 5); }, kZipOk},
      {"add path", [](ZipWriter& zip) { return zip.Add("b.txt", "C:\\b.txt"); }, kZipOk},
      {"add folder", [](ZipWriter& zip) { return zip.AddFolder("d"); }, kZipOk},
      {"add missing path", [](ZipWriter& zip) { return zip.Add("c.txt", "C:\\none.txt"); }, kZipNoFile},
      {"add stream", [](ZipWriter& zip) { return zip.Add("c.txt", "C:\\pipe"); }, kZipNoFile},
      {"add null path", [](ZipWriter& zip) { return zip.Add("c.txt", nullptr); }, kZipArguments},
      {"add null memory", [](ZipWriter& zip) { return zip.Add("c.txt", nullptr, 5); }, kZipArguments},
      {"add without name", [](ZipWriter& zip) { return zip.Add("", "x", 1); }, kZipArguments},
      {"add long name", [](ZipWriter& zip) { return zip.AddFolder(std::string(300, 'n').c_str()); },
       kZipArguments},
  };
}

// What the calls must give, derived from the order in which they came.
class Model {
 public:
  DWORD Create() {
    if (state_ == kOpen || state_ == kFailed) return Fail();
    state_ = kOpen;
    return kZipOk;
  }
  DWORD Add(DWORD fresh) {
    if (state_ == kNone) return kZipArguments;
    if (state_ == kEnded) return kZipEnded;
    if (state_ == kFailed) return kZipFailedBefore;
    if (fresh != kZipOk) state_ = kFailed;
    return fresh;
  }
  DWORD Close() {
    if (state_ == kNone) return kZipArguments;
    if (state_ == kEnded) return kZipEnded;
    state_ = kEnded;
    return kZipOk;
  }
  DWORD GetMemory(bool in_memory) const { return in_memory && state_ == kEnded ? kZipOk : kZipNotInMemory; }

 private:
  enum State { kNone, kOpen, kFailed, kEnded };
  DWORD Fail() {
    state_ = kFailed;
    return kZipArguments;
  }
  State state_ = kNone;
};

// What archives are written to.
struct Goal {
  const char* name;
  bool in_memory;
  std::function<DWORD(ZipWriter&)> create;
};

class ZipStates : public testing::Test {
 protected:
  ZipStates() {
    machine_.files.Put(_T("C:\\b.txt"), "bytes");
    machine_.files.Put(_T("C:\\pipe"), "");
    machine_.files.streams.insert(_T("C:\\pipe"));
    file_ = machine_.files.Open(_T("C:\\open.zip"), FileUse::kCreate, nullptr);
    goals_ = {
        {"path", false, [](ZipWriter& zip) { return zip.Create("C:\\p.zip"); }},
        {"file", false, [this](ZipWriter& zip) { return zip.Create(*file_); }},
        {"memory", true, [](ZipWriter& zip) { return zip.Create(nullptr, 0); }},
        {"block", true, [this](ZipWriter& zip) { return zip.Create(block_.data(), block_.size()); }},
    };
  }

  // One sequence of calls; reports it where a code is not the one of the model.
  void RunSequence(const Goal& goal, std::minstd_rand& chance) {
    ZipWriter zip;
    Model model;
    std::string calls = goal.name;
    const auto expect = [&](const char* call, DWORD got, DWORD wanted) {
      calls += std::string(", ") + call;
      ASSERT_EQ(got, wanted) << calls;
      ASSERT_EQ(LastZipCreation(), wanted) << calls;
    };
    for (int i = 0; i < kLongestSequence && !HasFatalFailure(); ++i) {
      const std::size_t pick = chance() % (additions_.size() + 4);
      if (pick < additions_.size()) {
        const Call& call = additions_[pick];
        expect(call.name, call.make(zip), model.Add(call.fresh));
      } else if (pick == additions_.size()) {
        const void* data = nullptr;
        std::size_t size = 0;
        expect("get memory", zip.GetMemory(data, size), model.GetMemory(goal.in_memory));
      } else if (pick == additions_.size() + 1) {
        expect("close", zip.Close(), model.Close());
      } else {
        expect("create", goal.create(zip), model.Create());
      }
    }
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
  std::unique_ptr<File> file_;
  std::vector<unsigned char> block_ = std::vector<unsigned char>(1 << 20);
  std::vector<Call> additions_ = Additions();
  std::vector<Goal> goals_;
};

TEST_F(ZipStates, AnyOrderOfCallsGivesTheCodesOfTheModel) {
  std::minstd_rand chance(7);
  for (int i = 0; i < kSequences && !HasFatalFailure(); ++i) {
    for (const Goal& goal : goals_) RunSequence(goal, chance);
  }
}

TEST_F(ZipStates, AfterTheCloseEverythingIsEnded) {
  for (const Goal& goal : goals_) {
    ZipWriter zip;
    ASSERT_EQ(goal.create(zip), kZipOk) << goal.name;
    ASSERT_EQ(zip.Close(), kZipOk) << goal.name;
    for (int i = 0; i < 2; ++i) {
      for (const Call& call : additions_)
        EXPECT_EQ(call.make(zip), kZipEnded) << goal.name << " " << call.name;
      EXPECT_EQ(zip.Close(), kZipEnded) << goal.name;
    }
    EXPECT_EQ(goal.create(zip), kZipOk) << goal.name << ": another archive may follow";
    EXPECT_EQ(zip.AddFolder("d"), kZipOk) << goal.name;
  }
}

TEST_F(ZipStates, FullBlockIsEndedByItsCloseToo) {
  std::vector<unsigned char> tiny(10);
  ZipWriter zip;
  ASSERT_EQ(zip.Create(tiny.data(), tiny.size()), kZipOk);
  EXPECT_EQ(zip.Close(), kZipMemoryFull);
  EXPECT_EQ(zip.AddFolder("d"), kZipEnded);
  EXPECT_EQ(zip.Close(), kZipEnded);
}

}  // namespace
}  // namespace lorv::test
