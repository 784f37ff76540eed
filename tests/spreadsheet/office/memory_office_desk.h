#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/headless/services/headless_platform.h"
#include "spreadsheet/automation/automation_family.h"
#include "spreadsheet/servers/office/office_system.h"
#include "tests/spreadsheet/office/memory_office.h"
#include "tests/spreadsheet/open_exchange.h"
#include "tests/support/data.h"

namespace lorv::test {

// An office whose waits are counted.
class WaitingOffice : public office::OfficeSystem {
 public:
  using OfficeSystem::OfficeSystem;
  void BeginWait() override { ++waits; }
  void EndWait() override { --waits; }

  int waits = 0;  // that have not ended
};

// A machine on whose files an office in memory works.
class MemoryOfficeDesk : public testing::Test {
 protected:
  MemoryOfficeDesk()
      : system(Program::kExcel,
               [this] {
                 if (starts_with != nullptr) throw office::OfficeFault{true, starts_with};
                 auto office = std::make_unique<MemoryOffice>(log, book);
                 office->file = file;
                 return office;
               }),
        scope_(system) {
    machine.suite.root = CString::FromUtf8(folder.Path().string() + "/");
    machine.dialogs.answer = kAnswerYes;
  }

  CString PathOf(const char* name) const { return CString::FromUtf8((folder.Path() / name).string()); }
  Platform Ports() {
    Platform ports = machine.Ports();
    ports.files = &NativeFiles();
    return ports;
  }
  std::vector<std::string> Messages() const {
    std::vector<std::string> texts;
    for (const auto& each : machine.dialogs.messages) texts.push_back(Utf8(each.text));
    return texts;
  }
  MemorySheet& Sheet() const { return *book->sheets.at(0); }
  AutoRef NewSheet() {
    application = system.CreateDispatch(_T("Excel.Application"));
    workbook = family.AddWorkbook(family.Workbooks(application), AutoValue::Missing());
    return family.Sheet(family.Worksheets(workbook), 1);
  }
  int Load(int index) {
    WriteBytes(folder.Path() / "in.xls", "x");
    return exchange.LoadExcel2(PathOf("in.xls"), tables, names, index);
  }

  ScratchFolder folder;
  HeadlessPlatform machine;
  ScopedPlatform platform_{Ports()};
  OfficeLog log;
  std::shared_ptr<MemoryBook> book;
  std::shared_ptr<MemoryBook> file = std::make_shared<MemoryBook>(log);
  LPCTSTR starts_with = nullptr;
  WaitingOffice system;
  ScopedSpreadsheet scope_;
  AutomationFamily family{Program::kExcel};
  AutoRef application;
  AutoRef workbook;
  OpenExchange exchange;
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
};

}  // namespace lorv::test
