#include <gtest/gtest.h>

#include "image/decode/image_reader.h"
#include "tests/image/decode/made_images.h"
#include "tests/image/decode/tiff/made_tiff.h"
#include "tests/support/data.h"
#include "tests/tools/run_tool.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::test {
namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;

class ImageVerb : public testing::Test {
 protected:
  ImageVerb() {
    Put("three.gif",
        MadeGif(2, 1, {{0, 0, 2, 1, {1, 1}, 7, 1}, {0, 0, 1, 1, {2}, 0, 1}, {1, 0, 1, 1, {3}, 10, 1}}));
    Put("clear.gif", MadeGif(2, 1, {{0, 0, 2, 1, {1, 2}, 1, 0, 2}}));
    Put("tall.bmp", MadeBmp(10, 20, 24, 0, "", std::string(20 * 32, '\xFF')));
  }
  void Put(const std::string& name, const std::string& bytes) const {
    WriteBytes(folder_.Path() / name, bytes);
  }
  std::string Path(const std::string& name) const { return (folder_.Path() / name).string(); }
  // The only frame of a picture that the verb wrote.
  Pixels PixelsOf(const std::string& name) const {
    const auto image = OpenImage(ReadBytes(folder_.Path() / name));
    return image == nullptr || image->Kind() != ImageKind::kPng ? Pixels() : image->Frame(0).pixels;
  }

  ScratchFolder folder_;
};

TEST_F(ImageVerb, ReportsKindSizeFramesAndDelays) {
  EXPECT_EQ(RunTool({"image", Path("three.gif")}).out,
            "GIF, 2 x 1 pixels, 3 frames\n0\t2 x 1\t70 ms\n1\t2 x 1\t0 ms\n2\t2 x 1\t100 ms\n");
  EXPECT_EQ(RunTool({"image", Path("tall.bmp")}).out, "BMP, 10 x 20 pixels, 1 frames\n");
}

TEST_F(ImageVerb, PagesHaveSizesOfTheirOwnAndNoDelays) {
  TiffMaker maker;
  maker.Add({PageFields(2, 1, 8, 1, 1), {"ab"}});
  maker.Add({PageFields(1, 3, 8, 1, 1), {"abc"}});
  Put("pages.tif", maker.Bytes());
  EXPECT_EQ(RunTool({"image", Path("pages.tif")}).out, "TIFF, 2 x 1 pixels, 2 frames\n0\t2 x 1\n1\t1 x 3\n");
  const ToolRun run = RunTool({"image", Path("pages.tif"), "--frame", "1", "--out", Path("page.png")});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(PixelsOf("page.png"), (Pixels{0xFF616161, 0xFF626262, 0xFF636363}));
}

TEST_F(ImageVerb, JsonHasAllOfIt) {
  const ToolRun run = RunTool({"image", Path("clear.gif"), "--json"});
  EXPECT_EQ(run.code, 0);
  const std::string wanted =
      ",\n  \"kind\": \"GIF\",\n  \"width\": 2,\n  \"height\": 1,\n  \"frames\": [\n    {\n      \"width\": "
      "2,\n"
      "      \"height\": 1,\n      \"delay\": null\n    }\n  ]\n}\n";
  EXPECT_NE(run.out.find(wanted), std::string::npos) << run.out;
  const ToolRun three = RunTool({"image", Path("three.gif"), "-j"});
  EXPECT_NE(three.out.find("\"delay\": 70"), std::string::npos) << three.out;
  EXPECT_NE(three.out.find("\"delay\": 0"), std::string::npos) << three.out;
}

TEST_F(ImageVerb, WritesAFrameAsItStandsWithItsAlpha) {
  const ToolRun run = RunTool({"image", Path("three.gif"), "--frame", "1", "--out", Path("second.png")});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(PixelsOf("second.png"), (Pixels{kGreen, kRed}));
  EXPECT_EQ(RunTool({"image", Path("clear.gif"), "--out", Path("clear.png")}).code, 0);
  EXPECT_EQ(PixelsOf("clear.png"), (Pixels{kRed, 0}));
  const ToolRun streamed = RunTool({"image", Path("clear.gif"), "--out", "-"});
  EXPECT_EQ(streamed.out, ReadBytes(folder_.Path() / "clear.png"));
}

TEST_F(ImageVerb, InputMayComeInByAStream) {
  const ToolRun run = RunTool({"image", "-"}, ReadBytes(folder_.Path() / "tall.bmp"));
  EXPECT_EQ(run.out, "BMP, 10 x 20 pixels, 1 frames\n");
}

TEST_F(ImageVerb, WhatCannotBeDoneIsRefusedAndNothingIsWritten) {
  Put("words.gif", "not an image");
  const auto refused = [&](std::vector<std::string> words, const std::string& why) {
    words.insert(words.begin(), "image");
    const ToolRun run = RunTool(words);
    EXPECT_EQ(run.code, 2) << why;
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(why), std::string::npos) << run.err;
  };
  refused({Path("words.gif")}, "no image that can be read");
  refused({Path("missing.gif")}, "there is no such file");
  refused({Path("three.gif"), "--frame", "1"}, "name it by --out");
  refused({Path("three.gif"), "--json", "--out", "-"}, "cannot both go to standard output");
  for (const char* frame : {"3", "-1"})
    refused({Path("three.gif"), "--frame", frame, "--out", Path("none.png")}, "the first is 0, the last 2");
  refused({Path("three.gif"), "--out", Path("tall.bmp")}, "--force");
  EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "none.png"));
  EXPECT_EQ(RunTool({"image", Path("three.gif"), "--out", Path("tall.bmp"), "--force"}).code, 0);
  EXPECT_EQ(PixelsOf("tall.bmp"), (Pixels{kRed, kRed}));
}

TEST_F(ImageVerb, SpeaksChinese) {
  const ToolRun run = RunTool({"--lang", "zh", "image", Path("tall.bmp")});
  tool::SpeakLanguage(tool::Language::kEnglish);
  EXPECT_EQ(run.out, "BMP, 10 x 20像素,1帧\n");
}

TEST_F(ImageVerb, RealAndDamagedImagesAreDistinguished) {
  const auto folder = FindData("images");
  if (!folder) return;
  EXPECT_EQ(RunTool({"image", (*folder / "gif/moon_impact.gif").string()}).out.substr(0, 3), "GIF");
  EXPECT_EQ(RunTool({"image", (*folder / "png/basn6a16.png").string()}).out,
            "PNG, 32 x 32 pixels, 1 frames\n");
  EXPECT_EQ(RunTool({"image", (*folder / "png/xhdn0g08.png").string()}).code, 2);
  EXPECT_EQ(RunTool({"image", (*folder / "bmp/shortfile.bmp").string()}).code, 2);
}

}  // namespace
}  // namespace lorv::test
