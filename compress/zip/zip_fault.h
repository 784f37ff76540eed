#pragma once

// What exactly keeps an archive or an entry from being written or read: finer than the result codes, for
// messages to the user.
namespace lorv {

enum class ZipFault {
  kNone,

  // An entry to be written.
  kNoName,
  kLongName,         // its narrow name
  kLongUnicodeName,  // its name beside
  kLargeEntry,       // also of one to be read
  kManyEntries,
  kLargeArchive,

  // An archive to be read.
  kNoArchive,  // its end record is not there
  kParts,      // it is one of several parts
  kDirectory,  // its directory is damaged or cut

  // An entry to be read.
  kEncrypted,
  kMethod,     // neither stored nor deflated
  kZeroName,   // a byte of 0 stands in its name
  kHeader,     // no header of this entry stands where the directory says
  kCut,        // the archive ends before its data do
  kData,       // its data cannot be unpacked
  kTooMuch,    // it unpacks to more bytes than the directory says
  kTooLittle,  // to fewer
  kSum,        // its bytes do not have the sum that the directory says
  kTaker,      // the receiver of the bytes asked to stop
  kNoMemory,
};

}  // namespace lorv
