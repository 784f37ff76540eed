#pragma once

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "spreadsheet/servers/office/office_port.h"
#include "tests/support/print.h"

namespace lorv::test {

// What offices in memory have in common: the calls, one of which can be made to fail, and what is open.
struct OfficeLog {
  int calls = 0;
  int fail_at = 0;  // counted from 1; 0: none
  office::OfficeFault fault;
  int offices = 0;  // that run
  int books = 0;    // that somebody holds
  std::vector<std::string> saved;

  void Call() {
    if (++calls == fail_at) throw fault;
  }
};

struct MemoryCell {
  office::OfficeCell cell;
  office::OfficeFormat format{_T("General"), false};
};

// A sheet that keeps what is put, in the office's own terms.
class MemorySheet : public office::OfficeSheet {
 public:
  MemorySheet(OfficeLog& log, office::Text first_name) : log_(log), name(std::move(first_name)) {}

  office::Text Name() override { return log_.Call(), name; }
  bool Rename(const office::Text& wanted) override {
    log_.Call();
    if (wanted == refused) return false;
    name = wanted;
    return true;
  }
  office::Area UsedArea() override {
    log_.Call();
    office::Area used;
    for (const auto& [at, each] : cells) {
      used.bottom = std::max(used.bottom, at.first);
      used.right = std::max(used.right, at.second);
    }
    return used;
  }
  std::vector<office::Area> MergedAreas() override { return log_.Call(), merges; }
  void Expect(const office::Area& /*area*/) override {}
  office::OfficeCell Cell(long row, long column) override { return log_.Call(), cells[{row, column}].cell; }
  office::OfficeFormat Format(long row, long column) override {
    return log_.Call(), cells[{row, column}].format;
  }
  office::Area MergedArea(long row, long column) override {
    log_.Call();
    for (const auto& each : merges) {
      if (each.Contains(row, column)) return each;
    }
    return {row, column, row, column};
  }
  office::OfficeWidth Width(long column) override { return log_.Call(), widths[column]; }
  void PutNumber(long row, long column, double number) override {
    log_.Call();
    cells[{row, column}].cell = {office::CellKind::kNumber, number, {}};
  }
  void PutText(long row, long column, const office::Text& text) override {
    log_.Call();
    cells[{row, column}].cell = {office::CellKind::kText, 0, text};
  }
  void Clear(long row, long column) override {
    log_.Call();
    cells[{row, column}].cell = {};
  }
  void PutFormat(const office::Area& area, const office::Text& text) override {
    log_.Call();
    cells[{area.top, area.left}].format = {text, false};
  }
  void PutFontSize(const office::Area& /*area*/, double points) override {
    log_.Call();
    font_size = points;
  }
  void PutAlignment(const office::Area& /*area*/, int code) override {
    log_.Call();
    justify = code;
  }
  void PutWidth(long first, long last, long hundredths) override {
    log_.Call();
    for (long column = first; column <= last; ++column) {
      widths[column].hidden = hundredths == 0;
      if (hundredths != 0) widths[column].hundredths = hundredths;
    }
  }
  void Merge(const office::Area& area, bool /*merged*/) override {
    log_.Call();
    merges.push_back(area);
  }

 private:
  OfficeLog& log_;

 public:
  office::Text name;
  office::Text refused = _T("taken");
  std::map<std::pair<long, long>, MemoryCell> cells;
  std::map<long, office::OfficeWidth> widths;
  std::vector<office::Area> merges;
  double font_size = 0;
  int justify = 0;
};

class MemoryBook : public office::OfficeBook {
 public:
  explicit MemoryBook(OfficeLog& log) : log_(log) {
    Add(0, _T("Sheet1"));
    ++log_.books;
  }
  ~MemoryBook() override { --log_.books; }

  void Add(long at, const office::Text& name) {
    sheets.insert(sheets.begin() + at, std::make_shared<MemorySheet>(log_, name));
  }
  long SheetCount() override { return log_.Call(), static_cast<long>(sheets.size()); }
  std::shared_ptr<office::OfficeSheet> Sheet(long at) override {
    return log_.Call(), sheets.at(static_cast<std::size_t>(at));
  }
  void AddSheet(long at, const office::Text& name) override {
    log_.Call();
    Add(at, name);
  }
  bool CountsFrom1904() override { return log_.Call(), from_1904; }
  void PutSaved(bool /*saved*/) override { log_.Call(); }
  void Save(const office::Text& path, const char* filter) override {
    // As a disk that fills up does it: a part is there, and then it fails.
    std::string native = Utf8(CString(TextView(path)));
    std::replace(native.begin(), native.end(), '\\', '/');
    std::ofstream(native) << filter;
    log_.Call();
    log_.saved.emplace_back(filter);
  }
  void Close() override { log_.Call(); }
  long ActiveSheet() override { return log_.Call(), active; }
  bool Selection(office::Area& area) override {
    log_.Call();
    area = selection;
    return has_selection;
  }
  void Select(long at, const office::Area& area) override {
    log_.Call();
    active = at;
    selection = area;
  }

 private:
  OfficeLog& log_;

 public:
  std::vector<std::shared_ptr<MemorySheet>> sheets;
  bool from_1904 = false;
  long active = 0;
  bool has_selection = true;
  office::Area selection;
};

// An office in memory. `next` is what is opened or made next; a book that is made is left there.
class MemoryOffice : public office::OfficeBridge {
 public:
  MemoryOffice(OfficeLog& log, std::shared_ptr<MemoryBook>& next) : log_(log), next_(next) { ++log_.offices; }
  ~MemoryOffice() override { --log_.offices; }

  std::shared_ptr<office::OfficeBook> NewBook() override {
    log_.Call();
    return next_ = std::make_shared<MemoryBook>(log_);
  }
  std::shared_ptr<office::OfficeBook> OpenBook(const office::Text& /*path*/, bool /*as_template*/) override {
    return log_.Call(), file;
  }
  long ProcessId() override { return 1; }

  std::shared_ptr<MemoryBook> file;

 private:
  OfficeLog& log_;
  std::shared_ptr<MemoryBook>& next_;
};

}  // namespace lorv::test
