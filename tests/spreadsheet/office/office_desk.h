#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/headless/services/headless_platform.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/engine/objects/engine_system.h"
#include "spreadsheet/servers/office/office_system.h"
#include "tests/spreadsheet/open_exchange.h"
#include "tests/support/data.h"

namespace lorv::test {

using Rows = std::vector<std::vector<std::string>>;

// What an exchange read of a workbook.
struct LoadedBook {
  int result = 0;
  std::vector<Rows> sheets;
  std::vector<std::string> names;
  std::vector<CBCGPGridRange> ranges;
};

inline std::vector<CBCGPGridRange> RangesOf(const CAdExcel2GridEx& exchange) {
  std::vector<CBCGPGridRange> ranges;
  const auto& list = exchange.GetRanges();
  for (POSITION at = list.GetHeadPosition(); at != nullptr;) ranges.push_back(list.GetNext(at));
  return ranges;
}

// A desk with a real office, on the files of the system, and nothing of it left behind.
class OfficeDesk : public testing::Test {
 protected:
  OfficeDesk() {
    machine.suite.root = CString::FromUtf8(folder.Path().string() + "/");
    machine.dialogs.answer = kAnswerYes;
  }

  Platform Ports() {
    Platform ports = machine.Ports();
    ports.files = &NativeFiles();
    return ports;
  }
  CString PathOf(const std::string& name) const { return CString::FromUtf8((folder.Path() / name).string()); }
  std::vector<std::string> Messages() const {
    std::vector<std::string> texts;
    for (const auto& each : machine.dialogs.messages) {
      texts.push_back((each.caption.IsEmpty() ? "" : Utf8(each.caption) + ": ") + Utf8(each.text));
    }
    return texts;
  }
  static LoadedBook Load(SpreadsheetSystem& by, const CString& file, int index = 0) {
    const ScopedSpreadsheet scope(by);
    OpenExchange exchange;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    LoadedBook loaded;
    loaded.result = exchange.LoadExcel2(file, tables, names, index);
    for (const auto& table : tables) loaded.sheets.push_back(RowsOf(table));
    for (int i = 0; i < names.GetSize(); ++i) loaded.names.push_back(Utf8(names.GetAt(i)));
    loaded.ranges = RangesOf(exchange);
    return loaded;
  }

  ScratchFolder folder;
  HeadlessPlatform machine;
  ScopedPlatform platform_{Ports()};
  office::OfficeSystem system;
  ScopedSpreadsheet scope_{system};
  engine::EngineSystem engine;
};

}  // namespace lorv::test
