#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "compress/AdRar.h"
#include "tests/compress/lzari/lzari_samples.h"
#include "tests/compress/lzari/plain_lzari.h"
#include "tests/support/data.h"

namespace lorv::test {
namespace {

namespace fs = std::filesystem;

class AdRarFile : public testing::Test {
 protected:
  std::string Path(const char* name) const { return (folder_.Path() / name).string(); }

  std::string PackedFile(const std::string& plain) {
    WriteBytes(Path("plain"), plain);
    CAdRar().Compress(Path("plain").c_str(), Path("packed").c_str());
    return ReadBytes(Path("packed"));
  }

  std::string UnpackedFile(const std::string& stream, bool exact) {
    WriteBytes(Path("packed"), stream);
    CAdRar codec;
    codec.SetExactDecoding(exact);
    codec.UnCompress(Path("packed").c_str(), Path("unpacked").c_str());
    return ReadBytes(Path("unpacked"));
  }

  ScratchFolder folder_;
};

TEST_F(AdRarFile, StreamIsThatOfTheBufferForm) {
  for (const Sample& sample : LzariSamples()) {
    EXPECT_TRUE(PackedFile(sample.bytes) == Packed(sample.bytes)) << sample.name;
  }
  EXPECT_EQ(PackedFile(""), std::string(4, '\0'));
}

TEST_F(AdRarFile, ExactDecoderGivesFilesBackWhole) {
  for (const Sample& sample : LzariSamples()) {
    EXPECT_TRUE(UnpackedFile(Packed(sample.bytes), true) == sample.bytes) << sample.name;
  }
  EXPECT_EQ(UnpackedFile(std::string(4, '\0'), true), "");
}

TEST_F(AdRarFile, GuardedDecoderIsRightForTheFirstSymbolsOnly) {
  const std::string text = "hello world, this is the guarded decoder";
  const std::string stream = Packed(text);
  const std::string back = UnpackedFile(stream, false);
  EXPECT_EQ(back, std::make_unique<PlainLzari>()->Decode(stream, PlainLzari::Reading::kFile));
  EXPECT_EQ(back.front(), 'h');
  EXPECT_NE(back, text);
}

TEST_F(AdRarFile, GuardedDecoderEqualsThePlainOneOnFiles) {
  for (const Sample& sample : LzariSamples()) {
    const std::string stream = Packed(sample.bytes);
    EXPECT_TRUE(UnpackedFile(stream, false) ==
                std::make_unique<PlainLzari>()->Decode(stream, PlainLzari::Reading::kFile))
        << sample.name;
  }
  const std::string short_code = std::string("\x09\x00\x00\x00\x5a", 5);
  EXPECT_EQ(UnpackedFile(short_code, false),
            std::make_unique<PlainLzari>()->Decode(short_code, PlainLzari::Reading::kFile))
      << "past the end all bits are 1";
}

TEST_F(AdRarFile, ShortHeaderIsAReadError) {
  EXPECT_THROW(UnpackedFile("abc", false), int);
  EXPECT_THROW(UnpackedFile("abc", true), int);
}

TEST_F(AdRarFile, CutAndDamagedFilesAreRefusedByTheExactDecoder) {
  const std::string stream = Packed(Noise(9000, 4, 30));
  for (const std::size_t length : {std::size_t{4}, std::size_t{5}, stream.size() / 2, stream.size() - 1}) {
    EXPECT_THROW(UnpackedFile(stream.substr(0, length), true), int) << length;
  }
  EXPECT_THROW(UnpackedFile(stream + "x", true), int);
  EXPECT_THROW(UnpackedFile(std::string("\xff\xff\xff\xff", 4) + stream, true), int);
}

TEST_F(AdRarFile, FilesAreClosedAfterFailure) {
  CAdRar codec;
  WriteBytes(Path("packed"), "abc");
  EXPECT_THROW(codec.UnCompress(Path("packed").c_str(), Path("unpacked").c_str()), int);
  EXPECT_TRUE(fs::remove(Path("packed")));
  EXPECT_TRUE(fs::remove(Path("unpacked")));
}

TEST_F(AdRarFile, MissingSourceIsNotReportedButTheTargetIsOpened) {
  WriteBytes(Path("packed"), "old content");
  testing::internal::CaptureStdout();
  {
    CAdRar codec;
    codec.Compress(Path("absent").c_str(), Path("packed").c_str());
    codec.UnCompress(nullptr, nullptr);
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(ReadBytes(Path("packed")), "");
}

TEST_F(AdRarFile, TargetThatCannotBeOpenedLeavesTheSourceAlone) {
  WriteBytes(Path("plain"), "text");
  CAdRar codec;
  codec.Compress(Path("plain").c_str(), Path("no/such/folder/packed").c_str());
  EXPECT_EQ(ReadBytes(Path("plain")), "text");
}

TEST_F(AdRarFile, ReleaseDoesNothingAfterAFileOperation) {
  CAdRar codec;
  WriteBytes(Path("plain"), "hello world");
  codec.Compress(Path("plain").c_str(), Path("first").c_str());
  codec.Release();
  codec.Compress(Path("plain").c_str(), Path("second").c_str());
  EXPECT_EQ(ReadBytes(Path("first")), Packed("hello world"));
  EXPECT_NE(ReadBytes(Path("second")), Packed("hello world")) << "the coder was used before";
}

}  // namespace
}  // namespace lorv::test
