#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/native/native_types.h"
#include "spreadsheet/servers/engine/areas/merge_list.h"

// What the bridge to an office does for the library: workbooks of an office that runs for it, asked in the
// office's own terms. The bridge is a module without a link to this library, so nothing but plain types
// passes. Rows, columns and sheets count from 0.
//
// Failures: OfficeFault, by value. One thread at a time; a call ends within the limit of the start, as an
//   office that takes longer is ended.
namespace lorv::office {

using Text = std::basic_string<TCHAR>;
using engine::Area;

struct OfficeFault {
  bool gone = false;  // the office has ended, or was ended as it did not answer
  Text reason;        // what it says, in English; may be empty
};

enum class CellKind { kEmpty, kNumber, kText, kError };

struct OfficeCell {
  CellKind kind = CellKind::kEmpty;
  double number = 0;  // dates are days since 1899-12-30 or, where the workbook says so, since 1904-01-01
  Text text;
};

// As the office spells it in English.
struct OfficeFormat {
  Text text;
  bool is_time = false;  // shows a date or a time of day
};

struct OfficeWidth {
  long hundredths = 0;  // of a millimetre
  bool hidden = false;
};

class OfficeSheet {
 public:
  OfficeSheet() = default;
  OfficeSheet(const OfficeSheet&) = delete;
  OfficeSheet& operator=(const OfficeSheet&) = delete;
  virtual ~OfficeSheet() = default;

  virtual Text Name() = 0;
  // False where the office does not take the name; it keeps the old one.
  virtual bool Rename(const Text& name) = 0;
  // The smallest area that holds all values; cell A1 for a sheet without any.
  virtual Area UsedArea() = 0;
  // All that are merged, in the order of their corners, rows first.
  virtual std::vector<Area> MergedAreas() = 0;
  // A hint for reading ahead: the cells of the area will be asked for next, row by row. Other questions are
  // answered as well.
  virtual void Expect(const Area& area) = 0;
  virtual OfficeCell Cell(long row, long column) = 0;
  virtual OfficeFormat Format(long row, long column) = 0;
  // The area that a cell is merged into, or the cell alone.
  virtual Area MergedArea(long row, long column) = 0;
  virtual OfficeWidth Width(long column) = 0;

  virtual void PutNumber(long row, long column, double number) = 0;
  virtual void PutText(long row, long column, const Text& text) = 0;
  virtual void Clear(long row, long column) = 0;
  virtual void PutFormat(const Area& area, const Text& text) = 0;
  virtual void PutFontSize(const Area& area, double points) = 0;
  // `justify`: 0 standard, 1 left, 2 centre, 3 right.
  virtual void PutAlignment(const Area& area, int justify) = 0;
  // Of the columns from `first` to `last`; a width of 0 hides them.
  virtual void PutWidth(long first, long last, long hundredths) = 0;
  virtual void Merge(const Area& area, bool merged) = 0;
};

class OfficeBook {
 public:
  OfficeBook() = default;
  OfficeBook(const OfficeBook&) = delete;
  OfficeBook& operator=(const OfficeBook&) = delete;
  virtual ~OfficeBook() = default;

  virtual long SheetCount() = 0;
  virtual std::shared_ptr<OfficeSheet> Sheet(long at) = 0;
  virtual void AddSheet(long at, const Text& name) = 0;
  virtual bool CountsFrom1904() = 0;
  virtual void PutSaved(bool saved) = 0;
  // The filter is the office's name of a format of files.
  virtual void Save(const Text& path, const char* filter) = 0;
  virtual void Close() = 0;

  // The sheet in front; -1 where there is none.
  virtual long ActiveSheet() = 0;
  // What is marked on it; false where that is no area of cells.
  virtual bool Selection(Area& area) = 0;
  virtual void Select(long sheet, const Area& area) = 0;
};

// An office that runs for this object; it ends with it.
class OfficeBridge {
 public:
  OfficeBridge() = default;
  OfficeBridge(const OfficeBridge&) = delete;
  OfficeBridge& operator=(const OfficeBridge&) = delete;
  virtual ~OfficeBridge() = default;

  virtual std::shared_ptr<OfficeBook> NewBook() = 0;
  // As a copy without the file's name where it is a template.
  virtual std::shared_ptr<OfficeBook> OpenBook(const Text& path, bool as_template) = 0;
  // Of the office's process.
  virtual long ProcessId() = 0;
};

struct OfficeStart {
  long start_seconds = 60;  // until the office answers
  long call_seconds = 180;  // of one call, an opening or saving too
};

}  // namespace lorv::office

// The module's one function. The answer is the caller's.
extern "C" using LorvOfficeStarter = lorv::office::OfficeBridge * (const lorv::office::OfficeStart& start);
