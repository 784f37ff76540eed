#include "spreadsheet/records/file_records.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "framework/objects/exceptions.h"
#include "grid/CBcgTrueDbGridCtrl.h"

namespace {

using lorv::FileRecords;

class FileRecordsTest : public testing::Test {
 protected:
  FileRecordsTest() {
    const std::string name = "lorv_rows_" + std::to_string(reinterpret_cast<std::uintptr_t>(this)) + ".csv";
    path_ = std::filesystem::temp_directory_path() / name;
    file = CString::FromUtf8(path_.string());
  }
  ~FileRecordsTest() override { std::filesystem::remove(path_); }
  void Put(const std::string& bytes) {
    std::FILE* const out = std::fopen(path_.string().c_str(), "wb");
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(std::fwrite(bytes.data(), 1, bytes.size(), out), bytes.size());
    std::fclose(out);
  }
  CString file;

 private:
  std::filesystem::path path_;
};

}  // namespace

TEST_F(FileRecordsTest, FirstRowNamesTheFields) {
  Put("name,qty\n梁,2.50\n\"板, 厚\",\n墙,7,beyond\n");
  FileRecords records;
  records.Open(file);
  EXPECT_EQ(records.GetFieldCount(), 2);
  EXPECT_EQ(records.GetFieldName(0), _T("name"));
  EXPECT_EQ(records.GetFieldName(2), _T(""));
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("梁")));
  EXPECT_EQ(records.GetFieldValue(1), _variant_t(_T("2.50")));
  records.MoveNext();
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("板, 厚")));
  EXPECT_EQ(records.GetFieldValue(1).vt, VT_EMPTY);
  records.MoveNext();
  EXPECT_EQ(records.GetFieldValue(2).vt, VT_EMPTY);
  records.MoveNext();
  EXPECT_TRUE(records.IsEOF());
  EXPECT_EQ(records.GetFieldValue(0).vt, VT_EMPTY);
  records.MoveNext();
  records.MoveFirst();
  EXPECT_EQ(records.GetFieldValue(1), _variant_t(_T("2.50")));
}

TEST_F(FileRecordsTest, GridTakesItsRows) {
  Put("name,qty\n梁,2.50\n墙,7\n");
  FileRecords records;
  records.Open(file);
  CBcgTrueDbGridCtrl grid;
  grid.InsertColumns(_T("a,b,c"), _T(""), 0);
  grid.SetDataSource(&records);
  EXPECT_EQ(grid.GetCount(1), 2);
  EXPECT_EQ(grid.GetValue(1, 0), _variant_t(_T("墙")));
  EXPECT_EQ(grid.GetValue(1, 2).vt, VT_EMPTY);
}

TEST_F(FileRecordsTest, FilesWithoutRecordsStandAtTheirEnd) {
  for (const char* bytes : {"", "name,qty\n"}) {
    Put(bytes);
    FileRecords records;
    records.Open(file);
    EXPECT_TRUE(records.IsEOF());
    records.MoveFirst();
    records.MoveNext();
    EXPECT_TRUE(records.IsEOF());
  }
}

TEST_F(FileRecordsTest, WhatCannotBeReadLeavesTheSetAsItWas) {
  Put("name\nbeam\n");
  FileRecords records;
  records.Open(file);
  try {
    records.Open(file + _T(".missing"));
    ADD_FAILURE() << "opened";
  } catch (CException* failure) {
    failure->Delete();
  }
  EXPECT_EQ(records.GetFieldValue(0), _variant_t(_T("beam")));
}
