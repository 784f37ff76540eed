#include "tools/lorv/archive/zip_words.h"

#include <algorithm>
#include <iterator>

#include "tools/lorv/language/spoken_language.h"

// Faults of archives in words for users. They are parts of a sentence, as the name of the file or entry
// stands in front of each; the texts are keys of the table of messages.

namespace lorv::tool {
namespace {

struct Words {
  ZipFault fault;
  const char* words;
};

constexpr Words kWords[] = {
    {ZipFault::kNone, "nothing is wrong with it"},
    {ZipFault::kNoName, "it has no name in the archive"},
    {ZipFault::kLongName, "its name is too long: archives hold 259 bytes in the suite's code page"},
    {ZipFault::kLongUnicodeName, "its name is too long: archives hold 65509 bytes"},
    {ZipFault::kLargeEntry, "it has 2 GB or more, which this kind of archive cannot hold"},
    {ZipFault::kManyEntries, "the archive has 65535 entries already, and can hold no more"},
    {ZipFault::kLargeArchive, "the archive would have more than 4 GB, which this kind cannot"},
    {ZipFault::kNoArchive, "it is no ZIP archive, or its end is cut off"},
    {ZipFault::kParts, "it is one of several parts of an archive"},
    {ZipFault::kDirectory, "the archive's list of entries is damaged"},
    {ZipFault::kEncrypted, "it is encrypted"},
    {ZipFault::kMethod, "it is packed by a method that is not known here"},
    {ZipFault::kZeroName, "its name is damaged: a byte of 0 stands in it"},
    {ZipFault::kHeader, "its place in the archive is damaged: its header is not there"},
    {ZipFault::kCut, "the archive ends before its data do"},
    {ZipFault::kData, "its data are damaged: they cannot be unpacked"},
    {ZipFault::kTooMuch, "its data are damaged: there are more than the archive says"},
    {ZipFault::kTooLittle, "its data are damaged: there are fewer than the archive says"},
    {ZipFault::kSum, "its data are damaged: their sum is wrong"},
    {ZipFault::kTaker, "it could not be written"},
    {ZipFault::kNoMemory, "there is too little memory"},
};

}  // namespace

std::string WordsFor(ZipFault fault) {
  const auto* const found =
      std::find_if(std::begin(kWords), std::end(kWords), [&](const Words& w) { return w.fault == fault; });
  return found == std::end(kWords) ? std::string() : Say(found->words);
}

}  // namespace lorv::tool
