#include "grid/records/sqlite_records.h"

#include <limits>
#include <string>

#include "platform/ports/shared_library.h"

// Records of a database file. The library's functions are found by name, so that programs without databases
// do not depend on it; the few types and numbers of its interface that are needed stand here.

namespace lorv {
namespace {

struct Database;
struct Statement;

constexpr int kDone = 0;
constexpr int kRow = 100;
constexpr int kReadOnly = 1;
constexpr int kWholeNumber = 1;
constexpr int kNumber = 2;
constexpr int kText = 3;

// What is called of the library.
struct Functions {
  int (*open)(const char* file, Database** database, int flags, const char* always_null) = nullptr;
  int (*close)(Database* database) = nullptr;
  int (*prepare)(Database* database, const void* query, int bytes, Statement** statement,
                 const void** rest) = nullptr;
  int (*step)(Statement* statement) = nullptr;
  int (*reset)(Statement* statement) = nullptr;
  int (*finalize)(Statement* statement) = nullptr;
  int (*column_count)(Statement* statement) = nullptr;
  const void* (*column_name)(Statement* statement, int column) = nullptr;
  int (*column_type)(Statement* statement, int column) = nullptr;
  long long (*whole_number)(Statement* statement, int column) = nullptr;
  double (*number)(Statement* statement, int column) = nullptr;
  const void* (*text)(Statement* statement, int column) = nullptr;
  int (*text_bytes)(Statement* statement, int column) = nullptr;
  const void* (*message)(Database* database) = nullptr;
};

template <class Function>
bool Fetch(const SharedLibrary& library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(library.Find(name));
  return function != nullptr;
}

bool FetchAll(const SharedLibrary& library, Functions& f) {
  return Fetch(library, "sqlite3_open_v2", f.open) && Fetch(library, "sqlite3_close_v2", f.close) &&
         Fetch(library, "sqlite3_prepare16_v2", f.prepare) && Fetch(library, "sqlite3_step", f.step) &&
         Fetch(library, "sqlite3_reset", f.reset) && Fetch(library, "sqlite3_finalize", f.finalize) &&
         Fetch(library, "sqlite3_column_count", f.column_count) &&
         Fetch(library, "sqlite3_column_name16", f.column_name) &&
         Fetch(library, "sqlite3_column_type", f.column_type) &&
         Fetch(library, "sqlite3_column_int64", f.whole_number) &&
         Fetch(library, "sqlite3_column_double", f.number) &&
         Fetch(library, "sqlite3_column_text16", f.text) &&
         Fetch(library, "sqlite3_column_bytes16", f.text_bytes) &&
         Fetch(library, "sqlite3_errmsg16", f.message);
}

}  // namespace

// One query, with the library and the database that it belongs to.
class SqliteQuery {
 public:
  SqliteQuery() = default;
  SqliteQuery(const SqliteQuery&) = delete;
  SqliteQuery& operator=(const SqliteQuery&) = delete;
  ~SqliteQuery() {
    if (statement != nullptr) call.finalize(statement);
    if (database != nullptr) call.close(database);
  }

  // Empty: it is open.
  CString Open(const CString& file, const CString& query) {
    // By the name of its interface's version: the one without belongs to the packages of developers.
    library = OpenSharedLibrary({"libsqlite3.so.0", "sqlite3.dll", "winsqlite3.dll"});
    if (library == nullptr || !FetchAll(*library, call)) return _T("SQLite could not be loaded.");
    const std::string name = file.ToUtf8();
    if (call.open(name.c_str(), &database, kReadOnly, nullptr) != kDone) return Message();
    const int bytes = query.GetLength() * static_cast<int>(sizeof(TCHAR));
    if (call.prepare(database, static_cast<LPCTSTR>(query), bytes, &statement, nullptr) != kDone)
      return Message();
    return statement == nullptr ? CString(_T("The query is empty.")) : CString();
  }
  CString Message() const {
    const auto* const words = static_cast<LPCTSTR>(database == nullptr ? nullptr : call.message(database));
    return words == nullptr ? CString(_T("The database could not be opened.")) : CString(words);
  }

  std::unique_ptr<SharedLibrary> library;
  Functions call;
  Database* database = nullptr;
  Statement* statement = nullptr;
};

SqliteRecords::SqliteRecords() = default;
SqliteRecords::~SqliteRecords() = default;

bool SqliteRecords::Open(const CString& file, const CString& query) {
  on_record_ = false;
  query_ = std::make_unique<SqliteQuery>();
  fault_ = query_->Open(file, query);
  if (!fault_.IsEmpty()) {
    query_.reset();
    return false;
  }
  Step();
  return true;
}

int SqliteRecords::GetFieldCount() const {
  return query_ == nullptr ? 0 : query_->call.column_count(query_->statement);
}

CString SqliteRecords::GetFieldName(int field) const {
  if (field < 0 || field >= GetFieldCount()) return {};
  return CString(static_cast<LPCTSTR>(query_->call.column_name(query_->statement, field)));
}

void SqliteRecords::Step() {
  const int code = query_->call.step(query_->statement);
  on_record_ = code == kRow;
  constexpr int kAtEnd = 101;
  // A file that breaks off in the middle is distinguished from one that has ended.
  if (!on_record_ && code != kAtEnd) fault_ = query_->Message();
}

void SqliteRecords::MoveFirst() {
  if (query_ == nullptr) return;
  query_->call.reset(query_->statement);
  Step();
}

void SqliteRecords::MoveNext() {
  if (on_record_) Step();
}

_variant_t SqliteRecords::GetFieldValue(int field) const {
  if (!on_record_ || field < 0 || field >= GetFieldCount()) return {};
  switch (query_->call.column_type(query_->statement, field)) {
    case kWholeNumber: {
      const long long number = query_->call.whole_number(query_->statement, field);
      // The suite's cells know numbers of 32 bits; longer ones keep their digits.
      const bool fits =
          number >= std::numeric_limits<LONG>::min() && number <= std::numeric_limits<LONG>::max();
      return fits ? _variant_t(static_cast<int>(number)) : _variant_t(number);
    }
    case kNumber:
      return query_->call.number(query_->statement, field);
    case kText: {
      const auto* const units = static_cast<LPCTSTR>(query_->call.text(query_->statement, field));
      const int bytes = query_->call.text_bytes(query_->statement, field);
      return units == nullptr ? _variant_t(_T(""))
                              : _variant_t(CString(units, bytes / static_cast<int>(sizeof(TCHAR))));
    }
    default:
      return {};
  }
}

}  // namespace lorv
