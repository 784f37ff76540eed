#pragma once

#include <string>

#include "platform/ports/files.h"
#include "spreadsheet/servers/engine/book.h"

namespace lorv::engine {

// The document of a sheet, made while it is read: no more of it than a block is ever in memory.
class SheetDocument : public File {
 public:
  SheetDocument(const Book& book, const Sheet& sheet);

  std::int64_t Read(void* out, std::size_t size) override;
  bool Write(const void* /*bytes*/, std::size_t /*size*/) override { return false; }
  bool Seek(std::uint64_t /*position*/) override { return false; }
  std::int64_t Size() override { return -1; }
  bool Flush() override { return true; }

 private:
  void MakeMore();
  void MakeHead();
  void MakeColumns();
  void MakeCell(const Cell& cell);
  void MakeTail();
  void StartRow(long row);

  const Book& book_;
  const Sheet& sheet_;
  std::string made_;
  std::size_t taken_ = 0;
  std::size_t block_ = 0;
  std::size_t cell_ = 0;
  long row_ = -1;
  enum class Stage { kHead, kCells, kTail, kEnd } stage_ = Stage::kHead;
};

}  // namespace lorv::engine
