#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "compress/lzari/byte_stream.h"
#include "compress/lzari/lzari_coder.h"
#include "compress/lzari/lzari_decoder.h"
#include "compress/lzari/lzari_model.h"
#include "compress/lzari/lzari_totals.h"
#include "compress/lzari/lzari_tree.h"
#include "framework/native/export.h"
#include "platform/ports/files.h"

// Packs a stream of bytes into the LZARI format and unpacks it again, buffer to buffer and file to file.
// docs/formats/lzari.md describes the stream, which is the same in both forms.
//
// Units: lengths count bytes. The plain data may have 2^32 - 1 bytes in a file, 2^31 - 1 in a buffer.
// Decoders: the plain `UnCompress` keeps a historical check that stops renormalising once the last byte is
//   read. From a buffer the last few symbols of a stream may therefore come back wrong ("hello world" gives
//   "hello worll"); from a file only the first symbols come back right, and the rest has the right count but
//   no meaning. A caller that needs the packed data back calls `SetExactDecoding` first: then every stream
//   comes back whole, and a stream that is damaged, cut, or too short for what it claims is refused.
// One operation an object: the coder starts where the last operation left it, unless `Release` did its
//   work in between or exact decoding is chosen.
// Result: none. Failure prints "\n<message>\n" to standard output and throws the int 1; the result
//   arguments are then as they were. "Read Error": a stream of less than 4 bytes, or one that exact
//   decoding refuses. "Write Error": a target that takes no more, or a source of 4 GB and more.
// Progress goes to standard output, a line each 1024 bytes and the totals at the end.
// Objects are independent of one another, and one belongs to one thread at a time. They are large (about
//   100 KB) and need no other memory than the result.
//
//   CAdRar packer;  const unsigned char* stream;  int length;
//   packer.Compress(data, 11, stream, length);  // "hello world" gives 15 bytes: 0b 00 00 00 aa f1 ...
//   CAdRar unpacker;  unpacker.SetExactDecoding(true);
//   unpacker.UnCompress(stream, length, text, text_length);  // "hello world" again
class COMM_LORV_API CAdRar {
 public:
  CAdRar();
  CAdRar(const CAdRar& other);
  CAdRar& operator=(const CAdRar& other);
  virtual ~CAdRar();

  // File to file. Paths are narrow text in the system's code page.
  //
  // Edges: an existing target is overwritten. If one of the files cannot be opened nothing is done and
  //   nothing is reported, but the other one has been opened, so a target has been emptied; it stays open
  //   until the next file operation or the end of the object (of all its copies).
  void Compress(const char* source, const char* target);
  void UnCompress(const char* source, const char* target);

  // From an open file to another, which stay the caller's; the source has a known size where it is packed.
  void Compress(lorv::File& source, lorv::File& target);
  void UnCompress(lorv::File& source, lorv::File& target);

  // Buffer to buffer. `result` points into the object and is valid until `Release` or its end; nobody
  // frees it.
  //
  // Edges: a null or negative source counts as empty. Packing nothing gives 4 zero bytes. Unpacking those
  //   leaves `result` and `result_length` as they were.
  // `UnCompress` puts a 0 byte behind the data, not counted in `result_length`.
  void Compress(const unsigned char* data, int length, const unsigned char*& result, int& result_length);
  void UnCompress(const unsigned char* data, int length, const unsigned char*& result, int& result_length);

  // Makes the object as new for another operation, and frees the result. Does nothing while there is no
  // result, so after the file forms. The choice of the decoder stays.
  void Release();

  // Chooses the decoder of this object: true the one that restores every stream whole, false (as at first)
  // the guarded one described above. With the exact one each operation also starts from a fresh state.
  void SetExactDecoding(bool exact);

  // From now on `handler` is called with the count of plain bytes done, about every 1024 of them, and
  // nothing is printed any more, failures included. An empty handler brings the printing back.
  void SetProgress(std::function<void(std::uint32_t)> handler);

 private:
  class FilesClosed;

  template <class Operation>
  void Run(const Operation& operation);
  [[noreturn]] void Error(const char* message) const;
  void StartTotals();
  bool OpenFiles(const char* source, const char* target);
  void CloseFiles();
  void StartOperation();
  void Encode(std::int64_t size, lorv::ByteSource& source, lorv::ByteSink& sink);
  void Decode(lorv::ByteSource& source, std::uint64_t code_bytes, lorv::ByteSink& sink);
  void GiveResult(std::size_t length, const unsigned char*& result, int& result_length);

  std::shared_ptr<lorv::File> in_file_, out_file_;  // open during the file forms, or while one is missing
  lorv::lzari::Totals totals_;
  lorv::lzari::SearchTree tree_;
  lorv::lzari::CoderState coder_;
  lorv::lzari::SymbolModel model_;
  bool memory_ = false;                // the buffer forms are running
  std::vector<unsigned char> output_;  // their result
  lorv::lzari::BitWriter put_;
  lorv::lzari::BitReader get_;
  lorv::lzari::PlainRow row_;
  bool exact_ = false;
};
