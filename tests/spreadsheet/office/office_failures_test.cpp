#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>

#include "tests/spreadsheet/office/memory_office_desk.h"

// Of each journey each call over the bridge fails in turn, in each way in which an office fails: the user
// gets one message, the promised one; nothing is held, waits or stays open; files are whole or as they were.

namespace lorv {
namespace {

namespace fs = std::filesystem;
using test::OpenExchange;
using test::TextTable;
using Texts = std::vector<std::string>;

constexpr const char* kGoneText = "电子表格程序已退出，或没有响应。";

// How an office fails: by a refusal with its reason or without one, or by its end.
struct Way {
  const char* name;
  office::OfficeFault fault;

  friend void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }
};

class OfficeFailures : public test::MemoryOfficeDesk, public testing::WithParamInterface<Way> {
 protected:
  using Journey = std::function<bool(OpenExchange&)>;

  OfficeFailures() { test::WriteBytes(folder.Path() / "in.xls", "x"); }

  // What the office opens, as no journey has changed it yet.
  void MakeFile() {
    file = std::make_shared<test::MemoryBook>(log);
    file->Add(1, _T("b"));
    file->sheets[0]->PutText(0, 0, _T("x"));
    file->sheets[0]->PutNumber(1, 1, 2.5);
    file->sheets[0]->merges = {{0, 1, 0, 2}};
  }

  // An open dialog of progress ends with a note of its own.
  std::ptrdiff_t OpenDialogs() const {
    const auto& notes = machine.shell.progress;
    const auto count = [&](LPCTSTR word) {
      return std::count_if(notes.begin(), notes.end(),
                           [&](const CString& note) { return note.Find(word) == 0; });
    };
    return count(_T("title")) - count(_T("gone"));
  }
  // Files of the folder, those in "Temp" too: one that an office began and did not finish would be one more.
  // The empty tables by which a started program is looked for stay, as it may have them open.
  Texts Files() const {
    Texts files;
    for (const auto& each : fs::recursive_directory_iterator(folder.Path())) {
      if (each.is_regular_file() && each.path().extension() != ".csv")
        files.push_back(each.path().lexically_relative(folder.Path()).string());
    }
    std::sort(files.begin(), files.end());
    return files;
  }

  // The message for a call that failed once the program was there. What was asked is named where that helps.
  void ExpectPromised(const std::string& text, bool with_codes) const {
    const office::OfficeFault& fault = GetParam().fault;
    if (with_codes) {
      const std::string code = fault.gone ? "800706ba" : "800a03ec";
      EXPECT_EQ(text.find("COleDispatchException. SCODE: " + code + ", Description: \""), 0U) << text;
    } else if (fault.gone) {
      EXPECT_EQ(text, kGoneText);
    }
    if (fault.gone) {
      EXPECT_NE(text.find(kGoneText), std::string::npos) << text;
    } else if (!fault.reason.empty()) {
      EXPECT_NE(text.find("\r\nthe office says no"), std::string::npos) << text;
    } else {
      EXPECT_EQ(text.find('\n'), std::string::npos) << text;
    }
  }

  // The count of calls of the journey. Those up to `connecting` end in a search that finds nothing: what
  // fails while a program is started is no failure yet.
  int FailEachCall(int connecting, bool with_codes, const std::function<void()>& before,
                   const Journey& journey) {
    log.fault = GetParam().fault;
    for (int n = 1; n < 1000; ++n) {
      log.fail_at = 0;
      MakeFile();
      before();
      const Texts files = Files();
      const int books = log.books;
      const int offices = log.offices;
      machine.dialogs.messages.clear();
      log.calls = 0;
      log.fail_at = n;
      bool succeeded = false;
      {
        OpenExchange own;
        succeeded = journey(own);
      }
      book.reset();
      const bool whole = log.calls < n;
      EXPECT_EQ(succeeded, whole) << n;
      if (whole) return n - 1;
      if (machine.dialogs.messages.size() != 1) {
        ADD_FAILURE() << n << ": " << testing::PrintToString(Messages());
      } else if (n <= connecting) {
        EXPECT_EQ(Messages()[0], "没有打开 excel 程序!") << n;
      } else {
        ExpectPromised(Messages()[0], with_codes);
      }
      EXPECT_EQ(log.books, books) << n;
      EXPECT_EQ(log.offices, offices) << n;
      EXPECT_EQ(system.waits, 0) << n;
      EXPECT_EQ(OpenDialogs(), 0) << n;
      EXPECT_EQ(test::ReadBytes(folder.Path() / "in.xls"), "x") << n;
      EXPECT_EQ(Files(), files) << n;
      if (HasFailure()) return n;
    }
    ADD_FAILURE() << "a journey without end";
    return 0;
  }
};

const Way kWays[] = {{"Refuses", {false, _T("the office says no")}},
                     {"RefusesWithoutAWord", {false, {}}},
                     {"Ends", {true, _T("connection closed")}}};

INSTANTIATE_TEST_SUITE_P(EachWay, OfficeFailures, testing::ValuesIn(kWays),
                         [](const auto& each) { return std::string(each.param.name); });

// A new workbook is made by two calls: the workbook, and its first day.
constexpr int kCallsOfANewBook = 2;

TEST_P(OfficeFailures, ImportOfOneSheetOfAFile) {
  const int calls = FailEachCall(
      kCallsOfANewBook, false, [] {},
      [&](OpenExchange& in) {
        std::vector<CXArrayDBToArray> read;
        CStringArray read_names;
        const int result = in.LoadExcel2(PathOf("in.xls"), read, read_names, 2);
        EXPECT_EQ(static_cast<int>(read.size()), read_names.GetSize());
        EXPECT_EQ(static_cast<std::size_t>(result), read.size());
        return result == 1;
      });
  EXPECT_GT(calls, 10);
}

TEST_P(OfficeFailures, ImportOfAllSheetsOfAFile) {
  const int calls = FailEachCall(
      kCallsOfANewBook, false, [] {},
      [&](OpenExchange& in) {
        std::vector<CXArrayDBToArray> read;
        CStringArray read_names;
        const int result = in.LoadExcel2(PathOf("in.xls"), read, read_names, 0);
        EXPECT_EQ(static_cast<int>(read.size()), read_names.GetSize());
        return result == 1;
      });
  EXPECT_GT(calls, 25);
}

TEST_P(OfficeFailures, ImportOfTheSelection) {
  const auto before = [&] {
    // A new office each time: one that has ended is not asked again.
    system.EndAll();
    OpenExchange out;
    out.SetArray(TextTable({{"a", "b"}, {"c", "d"}, {"e", "f"}}));
    out.AddRange(0, 0, 1, 0);
    ASSERT_TRUE(out.ToExcel());
    book->Select(0, {0, 0, 2, 1});
    book.reset();
  };
  const int calls = FailEachCall(0, true, before, [](OpenExchange& in) { return in.FromExcel(); });
  EXPECT_GT(calls, 15);
}

TEST_P(OfficeFailures, ExportToAWorkbookThatIsShown) {
  const int calls = FailEachCall(
      kCallsOfANewBook, false, [&] { system.EndAll(); },
      [](OpenExchange& out) {
        out.SetArray(TextTable({{"墙", "12.50"}, {"007", ""}}));
        out.AddRange(0, 0, 1, 0);
        return out.ToExcel(CString(), false, true, -4131, 1, false, _T("清单"), 0, 0);
      });
  EXPECT_GT(calls, 30);
}

TEST_P(OfficeFailures, ExportIntoAnExistingFile) {
  test::WriteBytes(folder.Path() / "old.xls", "old");
  bool is_last = false;
  // A workbook that is opened takes two calls as well.
  const int calls = FailEachCall(
      kCallsOfANewBook, false, [&] { test::WriteBytes(folder.Path() / "old", "as it was"); },
      [&](OpenExchange& out) {
        out.SetArray(TextTable({{"墙", "12.50"}}));
        ColumnList hidden;
        hidden.AddSorted(0);
        out.SetInVisibleCols(hidden);
        is_last = out.ToExcel(PathOf("old"), true, false, 1, 5, true, CString(), 0, 0);
        EXPECT_EQ(test::ReadBytes(folder.Path() / "old.xls"), "old");
        // Whole or not at all; what comes behind the saving may fail with the file in place.
        const std::string saved = test::ReadBytes(folder.Path() / "old");
        EXPECT_TRUE(saved == "as it was" || saved == "MS Excel 97") << saved;
        return is_last;
      });
  EXPECT_TRUE(is_last);
  EXPECT_GT(calls, 25);
  EXPECT_EQ(test::ReadBytes(folder.Path() / "old"), "MS Excel 97");
}

}  // namespace
}  // namespace lorv
