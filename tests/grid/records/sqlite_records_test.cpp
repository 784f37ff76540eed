#include "grid/records/sqlite_records.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "platform/ports/shared_library.h"

namespace {

using lorv::SqliteRecords;

// A database file of its own for a test. `exists` says whether the system has the library to make it with.
class SqliteRecordsTest : public testing::Test {
 protected:
  SqliteRecordsTest() {
    const std::string name = "lorv_records_" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + ".db";
    path_ = std::filesystem::temp_directory_path() / name;
    file = CString::FromUtf8(path_.string());
    library_ = lorv::OpenSharedLibrary({"libsqlite3.so.0", "sqlite3.dll", "winsqlite3.dll"});
  }
  ~SqliteRecordsTest() override { std::filesystem::remove(path_); }

  bool HasLibrary() const { return library_ != nullptr; }
  // Runs statements that make the file.
  void Make(const char* statements) {
    using Open = int (*)(const char*, void**);
    using Execute = int (*)(void*, const char*, void*, void*, void*);
    using Close = int (*)(void*);
    void* database = nullptr;
    ASSERT_EQ(reinterpret_cast<Open>(library_->Find("sqlite3_open"))(file.ToUtf8().c_str(), &database), 0);
    EXPECT_EQ(reinterpret_cast<Execute>(library_->Find("sqlite3_exec"))(database, statements, nullptr,
                                                                        nullptr, nullptr),
              0);
    reinterpret_cast<Close>(library_->Find("sqlite3_close"))(database);
  }
  void MakeBill() {
    Make(
        "CREATE TABLE item (name TEXT, qty REAL, number INTEGER, note TEXT, picture BLOB);"
        "INSERT INTO item VALUES ('梁', 2.5, 7, NULL, x'0102');"
        "INSERT INTO item VALUES ('板', 4.0, 3000000000, '', NULL);"
        "INSERT INTO item VALUES ('墙', -1e-9, -2147483648, 'x', NULL);");
  }

  CString file;

 private:
  std::filesystem::path path_;
  std::unique_ptr<lorv::SharedLibrary> library_;
};

constexpr LPCTSTR kQuery = _T("SELECT name, qty, number, note, picture FROM item ORDER BY rowid");

}  // namespace

TEST_F(SqliteRecordsTest, ReadsTheRecordsOfAQuery) {
  SqliteRecords records;
  if (!HasLibrary()) {
    EXPECT_FALSE(records.Open(file, kQuery));
    EXPECT_EQ(records.GetFault(), _T("SQLite could not be loaded."));
    return;
  }
  MakeBill();
  ASSERT_TRUE(records.Open(file, kQuery)) << records.GetFault().ToUtf8();
  EXPECT_EQ(records.GetFieldCount(), 5);
  EXPECT_EQ(records.GetFieldName(1), _T("qty"));
  EXPECT_EQ(records.GetFieldName(5), _T(""));
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("梁")));
  EXPECT_EQ(records.GetFieldValue(1), _variant_t(2.5));
  EXPECT_EQ(records.GetFieldValue(2), _variant_t(7));
  EXPECT_EQ(records.GetFieldValue(3).vt, VT_EMPTY);
  EXPECT_EQ(records.GetFieldValue(4).vt, VT_EMPTY);
  EXPECT_EQ(records.GetFieldValue(-1).vt, VT_EMPTY);
  records.MoveNext();
  EXPECT_EQ(records.GetFieldValue(2), _variant_t(3000000000LL));
  EXPECT_EQ(records.GetFieldValue(3), _variant_t(_T("")));
  records.MoveNext();
  EXPECT_EQ(records.GetFieldValue(2), _variant_t(std::numeric_limits<int>::min()));
  records.MoveNext();
  EXPECT_TRUE(records.IsEOF());
  EXPECT_EQ(records.GetFieldValue(0).vt, VT_EMPTY);
  records.MoveNext();
  records.MoveFirst();
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("梁")));
}

TEST_F(SqliteRecordsTest, GridTakesItsRows) {
  CBcgTrueDbGridCtrl grid;
  SqliteRecords records;
  if (HasLibrary()) MakeBill();
  const bool opened = records.Open(file, _T("SELECT name, qty FROM item ORDER BY qty"));
  EXPECT_EQ(opened, HasLibrary());
  for (int binding = 0; binding < 2; ++binding) grid.SetDataSource(&records);
  EXPECT_EQ(grid.GetCount(1), opened ? 3 : 0);
  EXPECT_EQ(grid.GetValue(2, 0), opened ? _variant_t(_T("板")) : _variant_t());
  EXPECT_EQ(grid.GetColumnName(0), opened ? _T("name") : _T(""));
}

TEST_F(SqliteRecordsTest, WhatCannotBeReadIsSaid) {
  SqliteRecords records;
  if (HasLibrary()) MakeBill();
  const std::pair<CString, LPCTSTR> wrong[] = {{file, _T("SELECT nothing FROM item")},
                                               {file, _T("not a query")},
                                               {file, _T("")},
                                               {file + _T("/missing/file"), kQuery}};
  for (const auto& [name, query] : wrong) {
    EXPECT_FALSE(records.Open(name, query)) << CString(query).ToUtf8();
    EXPECT_NE(records.GetFault(), _T(""));
    EXPECT_TRUE(records.IsEOF());
    EXPECT_EQ(records.GetFieldCount(), 0);
    records.MoveFirst();
    records.MoveNext();
    EXPECT_EQ(records.GetFieldValue(0).vt, VT_EMPTY);
  }
}

TEST_F(SqliteRecordsTest, NothingIsWritten) {
  SqliteRecords records;
  if (HasLibrary()) MakeBill();
  EXPECT_EQ(records.Open(file, _T("DELETE FROM item")), HasLibrary());
  EXPECT_NE(records.GetFault(), _T(""));
  EXPECT_TRUE(records.IsEOF());
  EXPECT_EQ(records.Open(file, kQuery), HasLibrary());
  EXPECT_EQ(records.IsEOF(), !HasLibrary());
}

TEST_F(SqliteRecordsTest, DamagedFileIsSaidToBeOne) {
  std::FILE* const out = std::fopen(file.ToUtf8().c_str(), "wb");
  ASSERT_NE(out, nullptr);
  const std::string noise(5000, 'x');
  EXPECT_EQ(std::fwrite(noise.data(), 1, noise.size(), out), noise.size());
  std::fclose(out);
  SqliteRecords records;
  EXPECT_FALSE(records.Open(file, kQuery));
  EXPECT_NE(records.GetFault(), _T(""));
}
