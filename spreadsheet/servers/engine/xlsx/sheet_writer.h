#pragma once

#include <functional>
#include <string>

#include "platform/ports/files.h"
#include "spreadsheet/servers/engine/book/book.h"

namespace lorv::engine {

// The XML document of a worksheet as a file that can only be read, once and from its beginning: its text is
// made while it is read, and never more than about 64 KB of it are in memory. Book and sheet must live as
// long as this and must not change.
class SheetDocument : public File {
 public:
  // Asked now and then, with the cells that are made; false ends the document by a failure of Read.
  using GoesOn = std::function<bool(std::uint64_t cells)>;

  SheetDocument(const Book& book, const Sheet& sheet, GoesOn goes_on = {});

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
  GoesOn goes_on_;
  std::uint64_t cells_ = 0;
  std::string made_;
  std::size_t taken_ = 0;
  std::size_t block_ = 0;
  std::size_t cell_ = 0;
  long row_ = -1;
  enum class Stage { kHead, kCells, kTail, kEnd } stage_ = Stage::kHead;
};

}  // namespace lorv::engine
