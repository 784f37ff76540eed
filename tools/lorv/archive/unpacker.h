#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "tools/lorv/archive/archive_reader.h"
#include "tools/lorv/archive/entry_troubles.h"
#include "tools/lorv/files/unfinished_file.h"
#include "tools/lorv/screen/progress_bar.h"

namespace lorv::tool {

struct UnpackWishes {
  std::string folder;
  bool force = false;      // replace files that stand there
  bool any_place = false;  // allow names that lead out of the folder
};

// Unpacks all entries of an archive into a folder, by as many threads as the machine has where there are
// many.
//
// Each file is written under an unfinished name; the disk has it before it takes its own, and has the names
// of the folders at the end. Many files are given their names together, so that the disk is waited for once.
// A damaged entry and one that cannot be written are reported and stop no other; a full disk ends it all.
// A link, a pipe or a device that stands in the way is left as it is.
class Unpacker {
 public:
  Unpacker(ArchiveReader& archive, const UnpackWishes& wishes, ProgressBar& bar, EntryTroubles& troubles)
      : archive_(archive), wishes_(wishes), bar_(bar), troubles_(troubles) {}

  // Refuses, before anything is written, what speaks against the whole: names that lead out, files that stand
  // there already, and entries of one name.
  void Check();
  void Run();

 private:
  struct Ready {
    UnfinishedFile file;
    const Item* item;
  };
  class Writer;

  std::string GoalOf(const Item& item) const { return wishes_.folder + "/" + item.name; }
  void CheckItem(const Item& item, std::set<std::string>& goals);
  bool MayStand(const std::string& goal);
  void MakeFolders();
  void RunThreads();
  void Work(ArchiveReader& archive);
  void UnpackOne(ArchiveReader& archive, Writer& writer, const Item& item);
  bool MayWrite(const Item& item, const CString& goal);
  void PutReady(UnfinishedFile file, const Item& item);
  void GiveNames(std::vector<Ready>& files);
  bool SyncFiles(const std::vector<Ready>& files);
  void SyncFolders();

  ArchiveReader& archive_;
  const UnpackWishes& wishes_;
  ProgressBar& bar_;
  EntryTroubles& troubles_;
  std::vector<const Item*> items_;  // those to be unpacked
  std::set<std::string> folders_;   // in which something is made
  bool many_ = false;
  std::string asked_folder_;  // of the entry checked last, and whether it is there
  bool asked_stands_ = true;

  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> stopped_ = false;
  std::mutex lock_;  // guards what follows, and the bar
  std::vector<Ready> ready_;
  std::uint64_t ready_bytes_ = 0;
  std::exception_ptr failure_;
};

}  // namespace lorv::tool
