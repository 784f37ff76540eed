#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "compress/zip/zip_writer.h"
#include "tools/lorv/archive/entry_troubles.h"
#include "tools/lorv/archive/source_list.h"
#include "tools/lorv/screen/progress_bar.h"

namespace lorv::tool {

// Packs files and folders into an archive, by as many threads as the machine has.
//
// The archive is the same as if they were packed one after the other: threads pack runs of small files in
// memory, which are put behind one another in their order. Memory is bounded by how far they may be ahead.
// What cannot be packed is reported and left out. Failure: BadInput where a file cannot be read to its end,
// or the archive cannot be written, which is then useless.
class Packer {
 public:
  // `archive` is the name of what is written, for messages.
  Packer(const std::vector<Source>& sources, std::string archive, ZipWriter& zip, EntryTroubles& troubles,
         ProgressBar& bar);
  Packer(const Packer&) = delete;
  Packer& operator=(const Packer&) = delete;
  ~Packer();

  // Gives how many entries the archive has got.
  std::size_t Run();

 private:
  struct Part;
  using Report = std::function<void(const Source& source, const std::string& words)>;

  void Split();
  void StartThreads();
  void Work();
  void PackPart(Part& part) const;
  std::size_t WritePart(Part& part);
  std::size_t WriteDirectly(const Part& part);
  bool AddSource(ZipWriter& zip, const Source& source, const Report& report, ProgressBar* bar) const;
  void Check(DWORD result, const Source& source) const;

  const std::vector<Source>& sources_;
  std::string archive_;
  ZipWriter& zip_;
  EntryTroubles& troubles_;
  ProgressBar& bar_;
  std::vector<Part> parts_;
  std::vector<std::thread> threads_;
  std::size_t ahead_ = 0;  // parts that may be packed before they are written

  std::mutex lock_;  // guards what follows, and `ready` of the parts
  std::condition_variable changed_;
  std::size_t next_ = 0;     // the part that a thread takes next
  std::size_t written_ = 0;  // parts that are in the archive
  bool stopped_ = false;
};

}  // namespace lorv::tool
