#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "compress/zip/zip_writer.h"
#include "platform/ports/files.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

// What this system has beside plain files: links, pipes, devices, rights.
namespace lorv::test {
namespace {

namespace fs = std::filesystem;

CString Wide(const fs::path& path) {
  return CString::FromUtf8(path.string());
}

mode_t ModeOf(const fs::path& path) {
  struct stat facts {};
  EXPECT_EQ(stat(path.c_str(), &facts), 0) << path;
  return facts.st_mode & static_cast<mode_t>(07777);
}

TEST(PosixFiles, LinksAreFollowedToTheEndWhetherAnythingStandsThereOrNot) {
  const ScratchFolder scratch;
  fs::create_directory(scratch.Path() / "d");
  WriteBytes(scratch.Path() / "d" / "f", "x");
  fs::create_symlink("d/g", scratch.Path() / "one");
  fs::create_symlink("f", scratch.Path() / "d" / "g");
  fs::create_symlink(scratch.Path() / "one", scratch.Path() / "two");
  fs::create_symlink("d/none", scratch.Path() / "dangling");
  fs::create_symlink("circle", scratch.Path() / "circle");
  Files& files = NativeFiles();
  const auto follow = [&](const char* name) { return Utf8(files.FollowLinks(Wide(scratch.Path() / name))); };
  EXPECT_EQ(follow("two"), (scratch.Path() / "d" / "f").string());
  EXPECT_EQ(follow("dangling"), (scratch.Path() / "d" / "none").string());
  EXPECT_EQ(follow("circle"), (scratch.Path() / "circle").string());
  EXPECT_EQ(follow("d/f"), (scratch.Path() / "d" / "f").string());
  EXPECT_TRUE(files.IsLink(Wide(scratch.Path() / "two")));
  EXPECT_TRUE(files.IsLink(Wide(scratch.Path() / "dangling")));
  EXPECT_FALSE(files.IsLink(Wide(scratch.Path() / "d" / "f")));
  EXPECT_FALSE(files.Open(Wide(scratch.Path() / "dangling"), FileUse::kCreateNew)) << "a link is something";
  EXPECT_FALSE(files.Rename(Wide(scratch.Path() / "d" / "f"), Wide(scratch.Path() / "dangling")));
}

TEST(PosixFiles, PipesAndDevicesAreStreams) {
  const ScratchFolder scratch;
  const fs::path pipe = scratch.Path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  Files& files = NativeFiles();
  for (const fs::path& path : {pipe, fs::path("/dev/null"), fs::path("/dev/full")}) {
    EXPECT_TRUE(files.Facts(Wide(path))->is_stream) << path;
  }
  EXPECT_FALSE(files.Facts(Wide(scratch.Path()))->is_stream);
  const auto null = files.Open(_T("/dev/null"), FileUse::kStream);
  ASSERT_TRUE(null);
  EXPECT_TRUE(null->Write("x", 1) && null->Sync());
  EXPECT_FALSE(files.Open(Wide(scratch.Path() / "none"), FileUse::kStream));
  EXPECT_FALSE(fs::exists(scratch.Path() / "none"));
}

TEST(PosixFiles, PipeIsRefusedByTheArchiveAndNotWaitedFor) {
  const ScratchFolder scratch;
  const fs::path pipe = scratch.Path() / "pipe.txt";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  ZipWriter zip;
  zip.Create(nullptr, 0);
  EXPECT_EQ(zip.Add("pipe.txt", pipe.c_str()), kZipNoFile);
}

TEST(PosixFiles, RightsAreCopied) {
  const ScratchFolder scratch;
  WriteBytes(scratch.Path() / "a", "x");
  WriteBytes(scratch.Path() / "b", "y");
  for (const mode_t mode : {0600U, 0640U, 0664U, 0755U, 0777U}) {
    ASSERT_EQ(chmod((scratch.Path() / "a").c_str(), mode), 0);
    EXPECT_TRUE(NativeFiles().CopyRights(Wide(scratch.Path() / "a"), Wide(scratch.Path() / "b")));
    EXPECT_EQ(ModeOf(scratch.Path() / "b"), mode);
  }
  EXPECT_FALSE(NativeFiles().CopyRights(Wide(scratch.Path() / "none"), Wide(scratch.Path() / "b")));
}

TEST(PosixFiles, WholeFileSystemIsSyncedByAFolderOfIt) {
  const ScratchFolder scratch;
  EXPECT_TRUE(NativeFiles().SyncAll(Wide(scratch.Path())));
  EXPECT_TRUE(NativeFiles().SyncAll(_T("")));
  EXPECT_FALSE(NativeFiles().SyncAll(Wide(scratch.Path() / "none")));
}

}  // namespace
}  // namespace lorv::test
