#include "tools/lorv/archive/unpacker.h"

#include <algorithm>
#include <map>
#include <thread>
#include <utility>

#include "platform/ports/platform.h"
#include "tools/lorv/archive/entry_name.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Unpacks an archive into a folder. Files are written under unfinished names and given their own when the
// disk has them, so that an interruption leaves whole files or none. Waiting for the disk is what takes the
// time where files are many: they are waited for together, and unpacked by several threads meanwhile.

namespace lorv::tool {
namespace {

// From this many entries on they are shared among threads, and the disk is waited for once a batch.
constexpr std::size_t kMany = 48;
// More threads than that wait for the same disk.
constexpr unsigned kMostThreads = 8;
// Entries of a batch: what is lost when the power fails, and few enough names to be removed at an
// interruption.
constexpr std::size_t kBatchFiles = 2048;
constexpr std::uint64_t kBatchBytes = 96U << 20;
constexpr std::size_t kWriteBlock = 256 * 1024;

CString Wide(const std::string& utf8) {
  return CString::FromUtf8(utf8);
}

}  // namespace

// Bytes collected for a file, so that most files are written by one call.
class Unpacker::Writer {
 public:
  explicit Writer(Unpacker& owner) : owner_(owner) { held_.reserve(kWriteBlock); }

  void Start(File& file) {
    file_ = &file;
    held_.clear();
  }
  bool Take(std::span<const unsigned char> bytes) {
    if (held_.size() + bytes.size() > kWriteBlock && !Flush()) return false;
    held_.insert(held_.end(), bytes.begin(), bytes.end());
    return true;
  }
  bool Flush() {
    const bool written = held_.empty() || file_->Write(held_.data(), held_.size());
    // The bar is shared by all threads; it counts what was written and not what was held.
    const std::lock_guard<std::mutex> hold(owner_.lock_);
    owner_.bar_.Advance(held_.size());
    held_.clear();
    return written && !owner_.stopped_;
  }

 private:
  Unpacker& owner_;
  File* file_ = nullptr;
  std::vector<unsigned char> held_;
};

// Where the folder is not there nothing can stand in it. Entries of one folder mostly follow one another.
bool Unpacker::MayStand(const std::string& goal) {
  std::string folder = goal.substr(0, goal.rfind('/'));
  if (folder != asked_folder_) {
    asked_folder_ = std::move(folder);
    // A root has lost its only letter here, and is always there.
    asked_stands_ = asked_folder_.empty() || PortsInForce().files->Exists(Wide(asked_folder_));
  }
  return asked_stands_;
}

void Unpacker::CheckItem(const Item& item, std::set<std::string>& goals) {
  if (!wishes_.any_place && LeadsOut(item.name)) {
    throw BadInput(
        Say("{} would be unpacked outside the folder; --any-place allows it", {Quoted(item.name)}));
  }
  // Folders may be there. With --force the last entry of a name wins, and replaces what stands in its place.
  if (item.IsFolder() || wishes_.force) return;
  const std::string goal = GoalOf(item);
  if (!goals.insert(goal).second) {
    throw BadInput(Say("{} is in the archive twice; --force keeps the last one", {Quoted(item.name)}));
  }
  if (!MayStand(goal)) return;
  Files& files = *PortsInForce().files;
  // A link that leads nowhere counts as not existing, and would still stand in the way.
  if (files.Exists(Wide(goal)) || files.IsLink(Wide(goal))) {
    throw BadInput(Say("{} is there already; --force replaces it", {Quoted(goal)}));
  }
}

void Unpacker::Check() {
  std::set<std::string> goals;
  for (const Item& item : archive_.Items()) CheckItem(item, goals);
}

// Of entries of one name the last one is unpacked.
void Unpacker::Run() {
  std::map<std::string, const Item*> last;
  for (const Item& item : archive_.Items()) last[item.name] = &item;
  for (const Item& item : archive_.Items()) {
    // Reported here and not at the start: one bad name leaves all other entries as good as they were.
    if (IsNoNameHere(item.name)) {
      troubles_.Add(item.name, Say("no file can have this name here"), item.index);
    } else if (item.IsFolder() || item.listing.fault == ZipFault::kNone) {
      if (last[item.name] == &item) items_.push_back(&item);
    } else {
      troubles_.Add(item.name, WordsFor(item.listing.fault), item.index);
    }
  }
  many_ = items_.size() >= kMany;
  MakeFolders();
  RunThreads();
  if (failure_) std::rethrow_exception(failure_);
  GiveNames(ready_);
  SyncFolders();
}

// Every folder once, the upper ones first. What cannot be made shows when a file is.
void Unpacker::MakeFolders() {
  Files& files = *PortsInForce().files;
  for (const Item* item : items_) {
    const std::string path = GoalOf(*item) + (item->IsFolder() ? "/" : "");
    for (std::size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1)) {
      folders_.insert(path.substr(0, at));
    }
  }
  for (const std::string& folder : folders_) files.MakeFolder(Wide(folder));
  // The topmost name stands in a folder that is not among them.
  folders_.insert(FolderOfPath(Wide(wishes_.folder)).ToUtf8());
}

void Unpacker::RunThreads() {
  const unsigned most = many_ ? std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads) : 1;
  std::vector<std::unique_ptr<ArchiveReader>> readers;
  std::vector<std::thread> threads;
  for (unsigned i = 1; i < most; ++i) {
    // The first thread has the archive that is open; the others need places in the file of their own.
    auto reader = archive_.OpenAgain();
    if (!reader) break;
    readers.push_back(std::move(reader));
    threads.emplace_back([this, &archive = *readers.back()] { Work(archive); });
  }
  Work(archive_);
  for (std::thread& thread : threads) thread.join();
}

void Unpacker::Work(ArchiveReader& archive) {
  try {
    Writer writer(*this);
    for (std::size_t at = next_++; at < items_.size() && !stopped_; at = next_++) {
      if (!items_[at]->IsFolder()) UnpackOne(archive, writer, *items_[at]);
    }
  } catch (...) {
    const std::lock_guard<std::mutex> hold(lock_);
    stopped_ = true;
    // The first failure is the cause; those of other threads follow from it.
    if (!failure_) failure_ = std::current_exception();
  }
}

bool Unpacker::MayWrite(const Item& item, const CString& goal) {
  Files& files = *PortsInForce().files;
  // Without --force nothing stood there at the start; with it nobody has looked yet.
  const auto facts = wishes_.force ? files.Facts(goal) : std::nullopt;
  const char* why = nullptr;
  if (wishes_.force && files.IsLink(goal))
    why = "a link stands there, which is never replaced";
  else if (facts && facts->is_stream)
    why = "a pipe or a device stands there, which is never replaced";
  else if (facts && facts->IsFolder())
    why = "a folder stands there";
  else if (facts && (facts->attributes & kAttributeReadOnly) != 0)
    why = "what stands there is read-only";
  if (why != nullptr) troubles_.Add(item.name, Say(why), item.index);
  return why == nullptr;
}

void Unpacker::UnpackOne(ArchiveReader& archive, Writer& writer, const Item& item) {
  const CString goal = Wide(GoalOf(item));
  if (!MayWrite(item, goal)) return;
  UnfinishedFile file(goal);
  if (!file.IsOpen()) {
    troubles_.Add(item.name, Say("its folder cannot be made or written to, or its name is too long"),
                  item.index);
    return;
  }
  writer.Start(file.Stream());
  const DWORD result = archive.Zip().UnzipItem(
      item.index, [&](std::span<const unsigned char> bytes) { return writer.Take(bytes); });
  // Another thread's failure stops the writer, too, and is not a full disk.
  const bool full = result == kZipOk ? !writer.Flush() : archive.Zip().LastFault() == ZipFault::kTaker;
  if (full && stopped_) return;
  if (full) throw BadInput(Say("{} cannot be written: the disk is full or failed", {Quoted(GoalOf(item))}));
  if (result != kZipOk) {
    troubles_.Add(item.name, WordsFor(archive.Zip().LastFault()), item.index);
    return;
  }
  // While it is open, as renaming leaves times as they are.
  file.Stream().SetTimes(item.listing.times);
  if (!file.Close(!many_))
    throw BadInput(Say("{} cannot be written: {}", {Quoted(GoalOf(item)), Say("the disk failed")}));
  PutReady(std::move(file), item);
}

void Unpacker::PutReady(UnfinishedFile file, const Item& item) {
  std::vector<Ready> batch;
  {
    const std::lock_guard<std::mutex> hold(lock_);
    ready_.push_back({std::move(file), &item});
    ready_bytes_ += item.listing.size;
    if (ready_.size() < kBatchFiles && ready_bytes_ < kBatchBytes) return;
    batch.swap(ready_);
    ready_bytes_ = 0;
  }
  // Outside of the lock: waiting for the disk must not stop the threads that unpack.
  GiveNames(batch);
}

bool Unpacker::SyncFiles(const std::vector<Ready>& files) {
  if (!many_ || files.empty()) return true;
  // One call for the whole file system where there is one; else each file by itself.
  if (PortsInForce().files->SyncAll(FolderOfPath(files[0].file.Goal()))) return true;
  return std::all_of(files.begin(), files.end(), [](const Ready& ready) { return ready.file.SyncClosed(); });
}

void Unpacker::GiveNames(std::vector<Ready>& files) {
  if (!SyncFiles(files))
    throw BadInput(Say("{} cannot be written: {}", {Quoted(wishes_.folder), Say("the disk failed")}));
  for (Ready& ready : files) {
    const Item& item = *ready.item;
    if (!ready.file.TakeName(wishes_.force)) {
      troubles_.Add(item.name, Say("another program holds its place, or has made it meanwhile"), item.index);
    } else if ((item.listing.attributes & ~kAttributeNormal) != 0) {
      // Last of all: whatever else is done to a file wants it writable.
      PortsInForce().files->SetAttributes(ready.file.Goal(), item.listing.attributes);
    }
  }
  files.clear();
}

void Unpacker::SyncFolders() {
  Files& files = *PortsInForce().files;
  if (many_ && files.SyncAll(Wide(wishes_.folder))) return;
  for (const std::string& folder : folders_) {
    // One that could not be made was reported with its files.
    if (files.Exists(Wide(folder)) || folder.empty()) files.SyncFolder(Wide(folder));
  }
}

}  // namespace lorv::tool
