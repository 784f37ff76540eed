#include "framework/objects/exceptions.h"
#include "spreadsheet/servers/engine/book/shown_cells.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/engine/objects/engine_object.h"

// Application, workbooks, workbook, worksheets and worksheet. Each answer is a new object over
// the same state, as in the programs: callers must not expect to be given an object a second time.

namespace lorv::engine {
namespace {

class Worksheet : public EngineObject, public DirectSheet {
 public:
  explicit Worksheet(std::shared_ptr<const SheetPlace> place)
      : EngineObject(place->program, ObjectKind::kWorksheet), place_(std::move(place)) {}

  const std::shared_ptr<Sheet>& Data() const { return place_->sheet; }
  bool Visit(const SheetArea& area, SheetVisitor& visitor) const override {
    return ShowCells(*place_->book, *place_->sheet, area, visitor);
  }
  const CString& FormatText(std::uint32_t format) const override {
    return place_->book->styles.FormatText(format);
  }

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> /*args*/) override {
    switch (operation) {
      case Operation::kSheetName:
        return AutoValue(_variant_t(place_->sheet->name));
      case Operation::kCells:
        // The whole sheet, so that places in it are those of the sheet.
        return RangeObject(place_, {0, 0, kMaxRows - 1, kMaxColumns - 1});
      case Operation::kUsedRange:
        return RangeObject(place_, place_->sheet->UsedArea());
      default:
        RaiseNoMember();
    }
  }

  void Put(Operation operation, const AutoValue& value) override {
    if (operation != Operation::kSheetName) RaiseNoMember();
    place_->book->Rename(*place_->sheet, TextArgument(std::span(&value, 1), 0));
  }

 private:
  std::shared_ptr<const SheetPlace> place_;
};

class Worksheets : public EngineObject {
 public:
  Worksheets(const ProgramRef& program, std::shared_ptr<Book> book)
      : EngineObject(program, ObjectKind::kWorksheets), book_(std::move(book)) {}

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> args) override {
    if (operation == Operation::kSheetCount) {
      return AutoValue(_variant_t(static_cast<long>(book_->sheets.size())));
    }
    const long index = LongArgument(args, 0);
    // A program fails here as well; a null object would be an answer that callers do not expect of it.
    if (index < 1 || index > static_cast<long>(book_->sheets.size())) Fail(_T("没有这个序号的工作表。"));
    return ObjectAt(static_cast<std::size_t>(index) - 1);
  }

  // Before, after, count, type: one sheet, before or behind the one named, at the front otherwise.
  AutoValue Call(Operation /*operation*/, std::span<const AutoValue> args) override {
    std::size_t at = 0;
    if (const auto before = PlaceOf(args, 0)) at = *before;
    if (const auto after = PlaceOf(args, 1)) at = *after + 1;
    book_->AddSheet(at);
    return ObjectAt(at);
  }

 private:
  AutoRef ObjectAt(std::size_t at) const {
    return WorksheetObject(std::make_shared<SheetPlace>(SheetPlace{Owner(), book_, book_->sheets[at]}));
  }

  std::optional<std::size_t> PlaceOf(std::span<const AutoValue> args, std::size_t at) const {
    if (at >= args.size() || !args[at].object) return std::nullopt;
    const auto sheet = SheetOf(args[at].object);
    for (std::size_t i = 0; i < book_->sheets.size(); ++i) {
      if (book_->sheets[i] == sheet) return i;
    }
    // A sheet of another workbook names no place here.
    AfxThrowOleException(E_INVALIDARG);
  }

  std::shared_ptr<Book> book_;
};

class Workbook : public EngineObject {
 public:
  Workbook(const ProgramRef& program, std::shared_ptr<Book> book)
      : EngineObject(program, ObjectKind::kWorkbook), book_(std::move(book)) {}

 protected:
  AutoValue Get(Operation /*operation*/, std::span<const AutoValue> /*args*/) override {
    return AutoRef(std::make_shared<Worksheets>(Owner(), book_));
  }

  // "Saved" is of no use without a user who could lose something.
  void Put(Operation /*operation*/, const AutoValue& value) override { TruthArgument(value); }

  AutoValue Call(Operation operation, std::span<const AutoValue> args) override {
    if (operation == Operation::kCloseWorkbook) {
      Owner()->CloseBook(book_);
      return {};
    }
    // The other arguments choose formats and shares that the engine does not have: it writes its one format.
    const CString file = TextArgument(args, 0);
    WriteWorkbookFile(*book_, file);
    book_->name = file;
    return {};
  }

 private:
  std::shared_ptr<Book> book_;
};

class Workbooks : public EngineObject {
 public:
  explicit Workbooks(const ProgramRef& program) : EngineObject(program, ObjectKind::kWorkbooks) {}

 protected:
  AutoValue Call(Operation operation, std::span<const AutoValue> args) override {
    if (operation == Operation::kOpenWorkbook) {
      return WorkbookObject(Owner(), Owner()->OpenBook(TextArgument(args, 0), false));
    }
    // A file in this place is a template: its contents without its name, so that it is never written over.
    if (args.empty() || args[0].IsMissing()) return WorkbookObject(Owner(), Owner()->AddBook());
    return WorkbookObject(Owner(), Owner()->OpenBook(TextArgument(args, 0), true));
  }
};

class Application : public EngineObject {
 public:
  explicit Application(const ProgramRef& program) : EngineObject(program, ObjectKind::kApplication) {}

 protected:
  AutoValue Get(Operation operation, std::span<const AutoValue> /*args*/) override {
    if (operation == Operation::kWorkbooks) return AutoRef(std::make_shared<Workbooks>(Owner()));
    const auto sheet = Owner()->ActiveSheet();
    // Nothing is marked where nothing is open; the exchange then says so.
    if (!sheet) return {};
    const auto place = std::make_shared<SheetPlace>(SheetPlace{Owner(), Owner()->BookOf(sheet), sheet});
    return operation == Operation::kActiveSheet ? WorksheetObject(place)
                                                : RangeObject(place, Owner()->Selection());
  }

  void Put(Operation operation, const AutoValue& value) override {
    if (operation == Operation::kDisplayAlerts) {
      Owner()->alerts = TruthArgument(value);
      return;
    }
    // Showing is an event of the system behind, which hands the workbooks to the user.
    Owner()->visible = TruthArgument(value);
    if (Owner()->visible && Owner()->on_visible) Owner()->on_visible(*Owner());
  }

  AutoValue Call(Operation /*operation*/, std::span<const AutoValue> /*args*/) override {
    // Before the workbooks go: who is told of the end finds none open.
    Owner()->ended = true;
    while (!Owner()->Books().empty()) Owner()->CloseBook(Owner()->Books().back());
    if (Owner()->on_quit) Owner()->on_quit(*Owner());
    return {};
  }
};

}  // namespace

AutoRef ApplicationObject(const ProgramRef& program) {
  return std::make_shared<Application>(program);
}

AutoRef WorkbookObject(const ProgramRef& program, const std::shared_ptr<Book>& book) {
  return std::make_shared<Workbook>(program, book);
}

AutoRef WorksheetObject(const std::shared_ptr<const SheetPlace>& place) {
  return std::make_shared<Worksheet>(place);
}

std::shared_ptr<Sheet> SheetOf(const AutoRef& object) {
  const auto* const worksheet = dynamic_cast<const Worksheet*>(object.get());
  return worksheet == nullptr ? nullptr : worksheet->Data();
}

}  // namespace lorv::engine
