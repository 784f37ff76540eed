#include "tools/lorv/archive/packer.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <system_error>
#include <utility>

#include "platform/ports/platform.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/files/watched_file.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/harmless_text.h"

// Packs sources in runs. Deflating is nearly all of the work and needs nothing of what stands before: a
// thread makes an archive in memory of each run, and the one that writes puts these together in order. A
// large file goes straight into the archive, as it would take the memory that bounds the others.

namespace lorv::tool {
namespace {

constexpr std::uint64_t kPartBytes = 1U << 20;
constexpr std::size_t kPartSources = 512;
constexpr unsigned kMostThreads = 8;
// Parts for each thread, so that none waits while a large file is written.
constexpr std::size_t kAhead = 3;

// Thrown where a file holds more than was listed, and would take too much memory.
struct Grown {};

}  // namespace

// A run of sources, and what a thread has made of it.
struct Packer::Part {
  std::size_t first = 0;
  std::size_t last = 0;  // behind the last one
  std::uint64_t bytes = 0;
  bool ready = false;
  std::unique_ptr<ZipWriter> zip;
  std::size_t packed = 0;
  std::vector<std::pair<const Source*, std::string>> left_out;
  std::exception_ptr failure;

  bool IsLarge() const { return bytes > kPartBytes; }
};

Packer::Packer(const std::vector<Source>& sources, std::string archive, ZipWriter& zip,
               EntryTroubles& troubles, ProgressBar& bar)
    : sources_(sources), archive_(std::move(archive)), zip_(zip), troubles_(troubles), bar_(bar) {
  Split();
}

Packer::~Packer() {
  {
    const std::lock_guard<std::mutex> hold(lock_);
    stopped_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void Packer::Split() {
  for (std::size_t i = 0; i < sources_.size(); ++i) {
    const std::uint64_t size = sources_[i].facts.size;
    const bool fits = !parts_.empty() && parts_.back().bytes + size <= kPartBytes &&
                      parts_.back().last - parts_.back().first < kPartSources;
    if (!fits) parts_.emplace_back().first = i;
    parts_.back().bytes += size;
    parts_.back().last = i + 1;
  }
}

std::size_t Packer::Run() {
  StartThreads();
  std::size_t packed = 0;
  for (Part& part : parts_) {
    packed += threads_.empty() || part.IsLarge() ? WriteDirectly(part) : WritePart(part);
    const std::lock_guard<std::mutex> hold(lock_);
    ++written_;
    changed_.notify_all();
  }
  return packed;
}

void Packer::StartThreads() {
  if (parts_.size() < 2) return;
  const unsigned most = std::clamp(std::thread::hardware_concurrency(), 1U, kMostThreads);
  ahead_ = kAhead * most;
  try {
    for (unsigned i = 0; i < most && most > 1; ++i) threads_.emplace_back([this] { Work(); });
  } catch (const std::system_error&) {
    // The system grants no more threads: those that there are do all of it, if need be this one alone.
    return;
  }
}

void Packer::Work() {
  std::unique_lock<std::mutex> hold(lock_);
  for (;;) {
    changed_.wait(hold, [&] { return stopped_ || next_ == parts_.size() || next_ < written_ + ahead_; });
    if (stopped_ || next_ == parts_.size()) return;
    Part& part = parts_[next_++];
    if (part.IsLarge()) continue;
    hold.unlock();
    PackPart(part);
    hold.lock();
    part.ready = true;
    changed_.notify_all();
  }
}

void Packer::PackPart(Part& part) const {
  const auto report = [&](const Source& source, const std::string& words) {
    part.left_out.emplace_back(&source, words);
  };
  try {
    part.zip = std::make_unique<ZipWriter>();
    part.zip->Create(nullptr, 0);
    for (std::size_t i = part.first; i < part.last; ++i) {
      part.packed += AddSource(*part.zip, sources_[i], report, nullptr) ? 1U : 0U;
    }
    Check(part.zip->Close(), sources_[part.first]);
  } catch (const Grown&) {
    part.zip.reset();
  } catch (...) {
    // Reported when it is this part's turn, as if nothing had been packed ahead.
    part.failure = std::current_exception();
  }
}

std::size_t Packer::WritePart(Part& part) {
  {
    std::unique_lock<std::mutex> hold(lock_);
    changed_.wait(hold, [&] { return part.ready; });
  }
  if (part.failure) std::rethrow_exception(part.failure);
  // At the limits of the whole archive it matters which source still fits: each is asked for itself.
  if (!part.zip || !zip_.CanAppend(*part.zip)) return WriteDirectly(part);
  for (const auto& [source, words] : part.left_out) troubles_.Add(source->path, words);
  Check(zip_.Append(*part.zip), sources_[part.first]);
  part.zip.reset();
  bar_.Advance(part.bytes);
  return part.packed;
}

std::size_t Packer::WriteDirectly(const Part& part) {
  std::size_t packed = 0;
  const auto report = [&](const Source& source, const std::string& words) {
    troubles_.Add(source.path, words);
  };
  for (std::size_t i = part.first; i < part.last; ++i) {
    packed += AddSource(zip_, sources_[i], report, &bar_) ? 1U : 0U;
  }
  return packed;
}

// Packs one source; false where it was reported and left out.
bool Packer::AddSource(ZipWriter& zip, const Source& source, const Report& report, ProgressBar* bar) const {
  // Asked before a byte is written: an entry that fails half-way cannot be taken out again.
  const ZipFault fault = zip.Obstacle(source.narrow, source.facts.size, source.unicode);
  if (fault != ZipFault::kNone) {
    report(source, WordsFor(fault));
    return false;
  }
  if (source.facts.IsFolder()) {
    Check(zip.AddFolder(source.narrow.c_str(), source.unicode), source);
    return true;
  }
  const auto file = PortsInForce().files->Open(CString::FromUtf8(source.path), FileUse::kRead);
  if (!file) {
    report(source, Say("it cannot be opened"));
    return false;
  }
  if (bar == nullptr) {
    if (file->Size() > static_cast<std::int64_t>(kPartBytes)) throw Grown{};
    Check(zip.Add(source.narrow.c_str(), *file, &source.facts, source.unicode), source);
  } else {
    WatchedFile watched(*file, *bar);
    Check(zip.Add(source.narrow.c_str(), watched, &source.facts, source.unicode), source);
  }
  return true;
}

// Part of an entry that failed is in the archive by then, so it ends the whole.
void Packer::Check(DWORD result, const Source& source) const {
  if (result == kZipOk) return;
  if (result == kZipReadFailed) throw BadInput(Say("{} cannot be read to its end", {Quoted(source.path)}));
  if (result == kZipWrongSize || result == kZipArguments)
    throw BadInput(Say("{} has grown to more than 2 GB meanwhile", {Quoted(source.path)}));
  throw BadInput(Say("{} cannot be written: the disk is full or failed", {Quoted(archive_)}));
}

}  // namespace lorv::tool
