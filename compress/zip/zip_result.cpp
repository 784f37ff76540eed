#include "compress/zip/zip_result.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string_view>

// Result codes and their texts, and the last result of the process for callers who ask later. Creating and
// opening keep one each, as callers ask for either; the text of "the last one" is that of the later.

namespace lorv {
namespace {

struct Message {
  DWORD code;
  const char* text;
};

// Spelled as callers know them.
constexpr Message kMessages[] = {
    {kZipOk, "Success"},
    {kZipNoDuplicate, "Culdn't duplicate handle"},
    {kZipNoFile, "Couldn't create/open file"},
    {kZipNoMemory, "Failed to allocate memory"},
    {kZipWriteFailed, "Error writing to file"},
    {kZipNotFound, "File not found in the zipfile"},
    {kZipMore, "Still more data to unzip"},
    {kZipCorrupt, "Zipfile is corrupt or not a zipfile"},
    {kZipReadFailed, "Error reading file"},
    {kZipArguments, "Caller: faulty arguments"},
    {kZipNotInMemory, "Caller: can only get memory of a memory zipfile"},
    {kZipMemoryFull, "Caller: not enough space allocated for memory zipfile"},
    {kZipFailedBefore, "Caller: there was a previous error"},
    {kZipEnded, "Caller: additions to the zip have already been ended"},
    {kZipWrongSize, "Zip-bug: the anticipated size turned out wrong"},
    {kZipPartlyUnzipped, "Caller: the file had already been partially unzipped"},
    {kZipMixed, "Caller: mixing creation and opening of zip"},
    {kZipNotReady, "Zip-bug: internal initialisation not completed"},
    {kZipUnseekable, "Zip-bug: trying to seek the unseekable"},
    {kZipChanged, "Zip-bug: tried to change mind, but not allowed"},
    {kZipFlation, "Zip-bug: an internal error during flation"},
};

// Atomic, so that threads with archives of their own do each other no harm; whose result it is they do not
// learn.
std::atomic<DWORD> last_creation = kZipOk;
std::atomic<DWORD> last_opening = kZipOk;
std::atomic<bool> opening_was_later = false;

std::string_view TextOf(DWORD code) {
  const auto* const found = std::find_if(std::begin(kMessages), std::end(kMessages),
                                         [&](const Message& m) { return m.code == code; });
  return found == std::end(kMessages) ? "unknown zip result code" : found->text;
}

}  // namespace

DWORD LastZipCreation() {
  return last_creation;
}
DWORD LastZipOpening() {
  return last_opening;
}

DWORD KeepZipCreation(DWORD result) {
  opening_was_later = false;
  last_creation = result;
  return result;
}

DWORD KeepZipOpening(DWORD result) {
  opening_was_later = true;
  last_opening = result;
  return result;
}

unsigned FormatZipMessage(DWORD code, char* text, unsigned size) {
  if (code == kZipLast) code = opening_was_later ? last_opening : last_creation;
  const std::string_view message = TextOf(code);
  // Cut to the caller's buffer and always terminated; the length given is that of the whole text.
  if (text != nullptr && size > 0) {
    const std::size_t length = std::min<std::size_t>(message.size(), size - 1);
    std::memcpy(text, message.data(), length);
    text[length] = '\0';
  }
  return static_cast<unsigned>(message.size());
}

}  // namespace lorv
