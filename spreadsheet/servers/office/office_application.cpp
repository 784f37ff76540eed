#include "framework/objects/exceptions.h"
#include "spreadsheet/servers/engine/book/book.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"
#include "spreadsheet/servers/office/office_object.h"

// Application, workbooks, workbook, worksheets and worksheet of an office. Each object asks the bridge at
// every call and keeps nothing of the answers: the office's user interface, its formulas and other objects
// may change them. Faults of the bridge become exceptions right where it is asked.

namespace lorv::office {
namespace {

using Place = std::shared_ptr<const SheetPlace>;

class Worksheet : public OfficeObject {
 public:
  explicit Worksheet(Place place)
      : OfficeObject(place->program, ObjectKind::kWorksheet), place_(std::move(place)) {}
  const SheetPlace& At() const { return *place_; }

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> /*args*/) override {
    switch (operation) {
      case Operation::kSheetName:
        return AutoValue(_variant_t(CString(TextView(AskOffice([&] { return place_->sheet->Name(); })))));
      case Operation::kCells:
        // The size of the other programs' sheets: what lies beyond has no address there.
        return RangeObject(place_, {0, 0, engine::kMaxRows - 1, engine::kMaxColumns - 1});
      case Operation::kUsedRange:
        return RangeObject(place_, AskOffice([&] { return UsedArea(); }));
      default:
        RaiseNoMember();
    }
  }

  void Put(Operation /*operation*/, const AutoValue& value) override {
    const CString name = TextArgument(std::span(&value, 1), 0);
    // The office takes names that the files of the other programs cannot hold.
    const bool taken =
        engine::IsSheetName(name) && AskOffice([&] { return place_->sheet->Rename(Plain(name)); });
    if (!taken) engine::Fail(_T("工作表名称“") + name + _T("”无效，或已经存在。"));
  }

 private:
  // With what is merged, as the engine has it and the other programs: an office counts values only.
  Area UsedArea() const {
    OfficeSheet& sheet = *place_->sheet;
    Area used = sheet.UsedArea();
    // One cell is also what a sheet without any value answers.
    const bool one = used == Area();
    bool any = !one || sheet.Cell(0, 0).kind != CellKind::kEmpty;
    for (const Area& each : sheet.MergedAreas()) any = engine::TakeIntoUse(each, any, used);
    sheet.Expect(used);
    return used;
  }

  Place place_;
};

class Worksheets : public OfficeObject {
 public:
  Worksheets(const ProgramRef& program, BookRef book)
      : OfficeObject(program, ObjectKind::kWorksheets), book_(std::move(book)) {}

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> args) override {
    // The office would answer an index outside with a failure of its own, in English and without a number.
    const long count = Count();
    if (operation == Operation::kSheetCount) return AutoValue(_variant_t(count));
    const long index = LongArgument(args, 0);
    if (index < 1 || index > count) engine::Fail(_T("没有这个序号的工作表。"));
    return ObjectAt(index - 1);
  }

  // Before, after, count, type: one sheet, before or behind the one named, at the front otherwise.
  AutoValue Call(Operation /*operation*/, std::span<const AutoValue> args) override {
    const long before = PlaceOf(args, 0);
    const long after = PlaceOf(args, 1);
    long at = before < 0 ? 0 : before;
    if (after >= 0) at = after + 1;
    // The office wants a name for a new sheet; the programs make one up.
    const CString name = FreeName();
    AskOffice([&] { book_->book->AddSheet(at, Plain(name)); });
    return ObjectAt(at);
  }

 private:
  long Count() const {
    return AskOffice([&] { return book_->book->SheetCount(); });
  }

  AutoRef ObjectAt(long at) const {
    auto sheet = AskOffice([&] { return book_->book->Sheet(at); });
    return std::make_shared<Worksheet>(
        std::make_shared<SheetPlace>(SheetPlace{Owner(), book_, std::move(sheet), at}));
  }

  long PlaceOf(std::span<const AutoValue> args, std::size_t at) const {
    if (at >= args.size() || !args[at].object) return -1;
    const auto* const sheet = dynamic_cast<const Worksheet*>(args[at].object.get());
    // A sheet of another workbook names no place here.
    if (sheet == nullptr || sheet->At().book != book_) AfxThrowOleException(E_INVALIDARG);
    return sheet->At().at;
  }

  bool IsTaken(const CString& name) const {
    return AskOffice([&] {
      for (long at = 0; at < book_->book->SheetCount(); ++at) {
        const Text other = book_->book->Sheet(at)->Name();
        // For the programs "sheet1" and "Sheet1" are one name.
        if (CompareWithoutCase(TextView(other), name.View()) == 0) return true;
      }
      return false;
    });
  }

  // From the count of sheets on, as programs name them.
  CString FreeName() const {
    CString name;
    long number = Count() + 1;
    do {
      name.Format(_T("Sheet%d"), number++);
    } while (IsTaken(name));
    return name;
  }

  BookRef book_;
};

class Workbook : public OfficeObject {
 public:
  Workbook(const ProgramRef& program, BookRef book)
      : OfficeObject(program, ObjectKind::kWorkbook), book_(std::move(book)) {}

 protected:
  AutoValue Get(Operation /*operation*/, std::span<const AutoValue> /*args*/) override {
    return AutoRef(std::make_shared<Worksheets>(Owner(), book_));
  }

  void Put(Operation /*operation*/, const AutoValue& value) override {
    AskOffice([&] { book_->book->PutSaved(TruthArgument(value)); });
  }

  AutoValue Call(Operation operation, std::span<const AutoValue> args) override {
    if (operation == Operation::kCloseWorkbook) {
      Owner()->CloseBook(book_);
    } else {
      Owner()->SaveBook(*book_, TextArgument(args, 0));
    }
    return {};
  }

 private:
  BookRef book_;
};

class Workbooks : public OfficeObject {
 public:
  explicit Workbooks(const ProgramRef& program) : OfficeObject(program, ObjectKind::kWorkbooks) {}

 protected:
  AutoValue Call(Operation operation, std::span<const AutoValue> args) override {
    if (operation == Operation::kOpenWorkbook) {
      return WorkbookObject(Owner(), Owner()->OpenFile(TextArgument(args, 0), false));
    }
    // A file in this place is a template: its contents without its name.
    if (args.empty() || args[0].IsMissing()) return WorkbookObject(Owner(), Owner()->AddBook());
    return WorkbookObject(Owner(), Owner()->OpenFile(TextArgument(args, 0), true));
  }
};

class Application : public OfficeObject {
 public:
  explicit Application(const ProgramRef& program) : OfficeObject(program, ObjectKind::kApplication) {}

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> /*args*/) override {
    if (operation == Operation::kWorkbooks) return AutoRef(std::make_shared<Workbooks>(Owner()));
    if (Owner()->Books().empty()) return {};
    // The one opened last stands in front, as in a program with windows.
    const BookRef book = Owner()->Books().back();
    return AskOffice([&]() -> AutoValue {
      const long at = book->book->ActiveSheet();
      if (at < 0) return {};
      const auto place = std::make_shared<SheetPlace>(SheetPlace{Owner(), book, book->book->Sheet(at), at});
      if (operation == Operation::kActiveSheet) return AutoRef(std::make_shared<Worksheet>(place));
      Area area;
      return book->book->Selection(area) ? AutoValue(RangeObject(place, area)) : AutoValue();
    });
  }

  void Put(Operation operation, const AutoValue& value) override {
    // Nothing asks a user who does not sit before this office: there are no alerts to put off.
    const bool shown = TruthArgument(value);
    if (operation == Operation::kVisible && shown && Owner()->on_visible) Owner()->on_visible(*Owner());
  }

  AutoValue Call(Operation /*operation*/, std::span<const AutoValue> /*args*/) override {
    Owner()->Quit();
    if (Owner()->on_quit) Owner()->on_quit(*Owner());
    return {};
  }
};

}  // namespace

AutoRef ApplicationObject(const ProgramRef& program) {
  return std::make_shared<Application>(program);
}

AutoRef WorkbookObject(const ProgramRef& program, const BookRef& book) {
  return std::make_shared<Workbook>(program, book);
}

}  // namespace lorv::office
