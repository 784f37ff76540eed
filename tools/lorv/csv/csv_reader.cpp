#include "tools/lorv/csv/csv_reader.h"

#include <algorithm>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/csv_limits.h"
#include "tools/lorv/language/spoken_language.h"

// Reads tables from text files of any size and any of the forms that spreadsheets write. Bytes come in blocks
// of whole lines, so a row is put together without looking back; places are counted on the way, as every
// message about a cell names one.

namespace lorv::tool {
namespace {

bool IsBlankCharacter(char c) {
  return c == ' ' || c == '\t';
}

// How often each candidate stands in the first row outside of quotes; the earlier wins a tie.
char MostFrequent(std::string_view block) {
  constexpr char kCandidates[] = {',', ';', '\t'};
  std::size_t counts[3] = {};
  bool quoted = false;
  for (const char c : block) {
    if (c == '"') quoted = !quoted;
    if (!quoted && (c == '\n' || c == '\r')) break;
    const char* found = std::find(std::begin(kCandidates), std::end(kCandidates), c);
    if (!quoted && found != std::end(kCandidates)) ++counts[found - kCandidates];
  }
  return kCandidates[std::max_element(counts, counts + 3) - counts];
}

}  // namespace

std::string PlaceText(const std::string& file, FilePlace place) {
  return file + Say(", line {}, column {}: ", {std::to_string(place.line), std::to_string(place.character)});
}

std::string_view CsvRow::operator[](std::size_t cell) const {
  if (cell >= cells_.size()) return {};
  return std::string_view(text_).substr(cells_[cell].begin, cells_[cell].end - cells_[cell].begin);
}

FilePlace CsvRow::Place(std::size_t cell) const {
  if (cells_.empty()) return {};
  return cells_[cell < cells_.size() ? cell : 0].place;
}

bool CsvRow::IsBlank() const {
  return text_.find_first_not_of(" \t\r\n") == std::string::npos;
}

void CsvRow::Clear() {
  text_.clear();
  cells_.clear();
}

CsvReader::CsvReader(InputBytes& bytes, Encoding encoding, bool comments, CsvBlanks blanks)
    : bytes_(bytes),
      decoder_(bytes, bytes.IsWorkbook() ? Encoding::kUtf8 : encoding),
      comments_(comments),
      keeps_blanks_(blanks == CsvBlanks::kKept) {}

CsvForm CsvReader::Form() const {
  return {decoder_.Found(), decoder_.HasMark(), separator_, names_separator_, line_end_};
}

void CsvReader::Fail(FilePlace place, const std::string& message) const {
  throw BadInput(PlaceText(bytes_.Name(), place) + Say(message));
}

bool CsvReader::More() {
  if (at_ < block_.size()) return true;
  at_ = 0;
  return decoder_.Next(block_);
}

char CsvReader::Peek() {
  // At the end it is as if a line ended: no caller then needs to ask twice.
  return More() ? block_[at_] : '\n';
}

char CsvReader::TakeByte() {
  const char c = block_[at_++];
  // A zero ends a text for many programs: what stands behind it would be lost without a word.
  if (c == 0) Fail(place_, "a zero character: this is no text file");
  const bool pair = c == '\r' && at_ < block_.size() && block_[at_] == '\n';
  if (c == '\n' || (c == '\r' && !pair)) {
    ++place_.line;
    place_.character = 1;
    // A character counts once, at its first byte: columns are counted as an editor shows them.
  } else if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
    ++place_.character;
  }
  return c;
}

void CsvReader::SkipLineEnd() {
  if (!More()) return;
  std::string end(1, TakeByte());
  if (end.front() == '\r' && at_ < block_.size() && block_[at_] == '\n') end += TakeByte();
  // The first one says how the file is to be written again.
  if (line_end_.empty()) line_end_ = end;
}

// A spreadsheet names the separator in a first line "sep=;".
void CsvReader::FindSeparator() {
  begun_ = true;
  if (!More()) return;
  const bool named =
      // Longer words behind "sep=" are a title and no separator.
      block_.size() > 5 && block_.compare(0, 4, "sep=") == 0 && (block_[5] == '\r' || block_[5] == '\n');
  if (!named) {
    separator_ = MostFrequent(block_);
    return;
  }
  separator_ = block_[4];
  names_separator_ = true;
  while (block_[at_] != '\r' && block_[at_] != '\n') TakeByte();
  SkipLineEnd();
}

bool CsvReader::AtCellEnd() {
  const char c = Peek();
  return c == separator_ || c == '\n' || c == '\r';
}

void CsvReader::Keep(CsvRow& row, char c) {
  row.text_ += c;
  CheckCell(row);
}

void CsvReader::CheckCell(const CsvRow& row) const {
  if (row.text_.size() - row.cells_.back().begin > kMaxCsvCell) {
    Fail(row.cells_.back().place, Say("a cell of more than {} bytes", {std::to_string(kMaxCsvCell)}));
  }
}

// As much of a cell without quotes as the block holds, at once: nearly all bytes of a table pass here and are
// not looked at one by one again. False where its next byte is none of such.
bool CsvReader::TakeRun(CsvRow& row) {
  const std::size_t first = at_;
  long long characters = 0;
  for (; at_ < block_.size(); ++at_) {
    const char c = block_[at_];
    if (c == separator_ || c == '\n' || c == '\r' || c == 0) break;
    characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
  }
  if (at_ == first) return false;
  place_.character += characters;
  row.text_.append(block_, first, at_ - first);
  CheckCell(row);
  return true;
}

void CsvReader::ReadQuoted(CsvRow& row, FilePlace begin) {
  TakeByte();
  for (;;) {
    if (!More()) Fail(begin, "the quote that opens here is never closed");
    const char c = TakeByte();
    if (c != '"') {
      Keep(row, c);
      // More() as well: Peek gives a line end where nothing is left, and never a quote.
    } else if (Peek() == '"' && More()) {
      Keep(row, TakeByte());
    } else {
      break;
    }
  }
  row.cells_.back().end = row.text_.size();
  while (More() && IsBlankCharacter(Peek()) && Peek() != separator_) TakeByte();
  // Spreadsheets would each make something else of it.
  if (More() && !AtCellEnd()) {
    Fail(place_, "text behind a closing quote; a quote inside a quoted cell is written twice");
  }
}

void CsvReader::ReadPlain(CsvRow& row) {
  while (More() && !AtCellEnd()) {
    if (!TakeRun(row)) Keep(row, TakeByte());
  }
  CsvRow::Cell& cell = row.cells_.back();
  cell.end = row.text_.size();
  if (keeps_blanks_) return;
  while (cell.end > cell.begin && IsBlankCharacter(row.text_[cell.end - 1])) --cell.end;
}

// In front of a quote blanks mean nothing, even where they are kept.
void CsvReader::SkipBlanks(CsvRow& row) {
  const std::size_t begin = row.text_.size();
  row.cells_.push_back({begin, begin, place_});
  while (More() && IsBlankCharacter(Peek()) && Peek() != separator_) {
    const char blank = TakeByte();
    if (keeps_blanks_) Keep(row, blank);
  }
  if (Peek() == '"') row.text_.resize(begin);
  row.cells_.back().place = place_;
}

void CsvReader::ReadCell(CsvRow& row) {
  // Counted while it is read: a file without line ends must not fill the memory first.
  if (row.cells_.size() == kMaxCsvCells) {
    Fail(place_, Say("a row of more than {} cells", {std::to_string(kMaxCsvCells)}));
  }
  SkipBlanks(row);
  const bool comment = comments_ && row.cells_.size() == 1 && Peek() == '#' && More();
  if (comment) {
    // A remark is prose: quotes and separators in it mean nothing.
    while (More() && Peek() != '\n' && Peek() != '\r') TakeByte();
    row.Clear();
  } else if (Peek() == '"' && More()) {
    ReadQuoted(row, place_);
  } else {
    ReadPlain(row);
  }
}

void CsvReader::ReadRow(CsvRow& row) {
  row.Clear();
  ReadCell(row);
  while (More() && Peek() == separator_) {
    TakeByte();
    ReadCell(row);
  }
  SkipLineEnd();
}

bool CsvReader::Next(CsvRow& row) {
  if (!begun_) FindSeparator();
  while (More()) {
    ReadRow(row);
    if (keeps_blanks_ || !row.IsBlank()) return true;
  }
  row.Clear();
  return false;
}

}  // namespace lorv::tool
