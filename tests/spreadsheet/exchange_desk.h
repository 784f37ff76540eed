#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "platform/headless/services/headless_platform.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"
#include "spreadsheet/servers/engine/objects/engine_system.h"
#include "spreadsheet/servers/recording/recording.h"
#include "tests/spreadsheet/open_exchange.h"
#include "tests/support/data.h"

namespace lorv::test {

// A machine in memory with the engine as its spreadsheet program, whose calls are written down.
class ExchangeDesk : public testing::Test {
 protected:
  explicit ExchangeDesk(Program family = Program::kExcel)
      : engine(family), recording(engine, record), spreadsheet_scope_(recording) {
    machine.dialogs.answer = kAnswerYes;
    machine.files.MakeFolder(_T("C:\\Suite"));
  }

  std::vector<std::string> Messages() const {
    std::vector<std::string> texts;
    for (const auto& message : machine.dialogs.messages) {
      texts.push_back((message.caption.IsEmpty() ? "" : Utf8(message.caption) + ": ") + Utf8(message.text));
    }
    return texts;
  }

  // A workbook that its user has open; its first sheet is active.
  std::shared_ptr<engine::Book> OpenedBook() {
    program = engine.Start();
    return program->AddBook();
  }

  HeadlessPlatform machine;
  ScopedPlatform platform_scope_{machine.Ports()};
  engine::EngineSystem engine;
  CallRecord record;
  RecordingSystem recording;
  ScopedSpreadsheet spreadsheet_scope_;
  engine::ProgramRef program;
};

// Holds lines against a file beside the tests. With LORV_ACCEPT in the environment the file is written
// instead, to be looked at and committed.
inline void ExpectGolden(const std::string& name, const std::vector<std::string>& lines) {
  const auto path = ProjectFolder() / "tests" / "spreadsheet" / "golden" / name;
  std::string text;
  for (const auto& line : lines) text += line + "\n";
  if (std::getenv("LORV_ACCEPT") != nullptr) WriteBytes(path, text);
  EXPECT_EQ(ReadBytes(path), text) << path;
}

}  // namespace lorv::test
