#include "platform/win32/services/gdi_print_job.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/drawing/device_context.h"
#include "platform/ports/mail.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

// A page in a metafile, and what is read back from it.
class GdiPrint : public testing::Test {
 protected:
  struct Line {
    std::string text;
    POINT at;
  };

  GdiPrint() : context_(CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr)) {}

  std::vector<Line> Lines() {
    const HENHMETAFILE file = CloseEnhMetaFile(context_);
    EnumEnhMetaFile(nullptr, file, &Note, this, nullptr);
    DeleteEnhMetaFile(file);
    return lines_;
  }

  HDC context_;
  std::vector<Line> lines_;
  std::vector<DWORD> modes_;
  std::vector<std::string> faces_;
  std::vector<POINTL> origins_;
  std::vector<DWORD> aligns_;
  std::vector<LONG> heights_;

 private:
  static int CALLBACK Note(HDC, HANDLETABLE*, const ENHMETARECORD* record, int, LPARAM self) {
    reinterpret_cast<GdiPrint*>(self)->Read(*record);
    return 1;
  }
  template <class Kind>
  static const Kind& As(const ENHMETARECORD& record) {
    return reinterpret_cast<const Kind&>(record);
  }
  void Read(const ENHMETARECORD& record) {
    if (record.iType == EMR_SETMAPMODE) modes_.push_back(As<EMRSETMAPMODE>(record).iMode);
    if (record.iType == EMR_SETVIEWPORTORGEX) origins_.push_back(As<EMRSETVIEWPORTORGEX>(record).ptlOrigin);
    if (record.iType == EMR_SETTEXTALIGN) aligns_.push_back(As<EMRSETTEXTALIGN>(record).iMode);
    if (record.iType == EMR_EXTCREATEFONTINDIRECTW) {
      const LOGFONTW& face = As<EMREXTCREATEFONTINDIRECTW>(record).elfw.elfLogFont;
      faces_.push_back(test::Utf8(CString(face.lfFaceName)));
      heights_.push_back(face.lfHeight);
    }
    if (record.iType == EMR_EXTTEXTOUTW) {
      const EMRTEXT& text = As<EMREXTTEXTOUTW>(record).emrtext;
      const auto* const units =
          reinterpret_cast<const wchar_t*>(reinterpret_cast<const BYTE*>(&record) + text.offString);
      lines_.push_back({test::Utf8(CString(units, static_cast<int>(text.nChars))),
                        {text.ptlReference.x, text.ptlReference.y}});
    }
  }
};

constexpr PageWays kWays = {kThousandths, 120, L"Arial", 0};

TEST_F(GdiPrint, WritesThePageInItsWays) {
  const LONG page = GetDeviceCaps(context_, VERTRES);
  LONG height = 0;
  {
    GdiPrintJob job(context_, GdiPrintJob::Ending::kLeave);
    ASSERT_TRUE(job.Begin(L"Error message", kWays));
    height = job.Extent(L"00").cy;
    job.Text(300, 9000, L"beam");
    job.Text(300, 9000 - height, L"墙");
    job.End();
  }
  const std::vector<Line> lines = Lines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].text, "beam");
  EXPECT_EQ(lines[0].at.x, 300);
  EXPECT_EQ(lines[0].at.y, 9000);
  EXPECT_EQ(lines[1].text, "墙");
  EXPECT_EQ(lines[1].at.y, 9000 - height);
  EXPECT_EQ(modes_, std::vector<DWORD>{MM_HIENGLISH});
  ASSERT_EQ(origins_.size(), 1U);
  EXPECT_EQ(origins_[0].y, page);
  EXPECT_EQ(faces_, std::vector<std::string>{"Arial"});
  // 12 points are a sixth of an inch.
  ASSERT_EQ(heights_.size(), 1U);
  EXPECT_NEAR(heights_[0], -167, 12);
  EXPECT_GE(height, 150);
  EXPECT_LE(height, 260);
  ASSERT_FALSE(aligns_.empty());
  EXPECT_EQ(aligns_.back(), 0U);
}

TEST_F(GdiPrint, WithoutAPrinterNothingBegins) {
  GdiPrintJob job(nullptr, GdiPrintJob::Ending::kLeave);
  EXPECT_FALSE(job.Begin(L"x", kWays));
  Lines();
}

TEST_F(GdiPrint, PagesAreDrawnOnThroughAContext) {
  {
    GdiPrintJob job(context_, GdiPrintJob::Ending::kLeave);
    ASSERT_TRUE(job.BeginPages(L"list"));
    CPrintDC page(job.NextPage());
    EXPECT_NE(page.IsPrinting(), FALSE);
    EXPECT_EQ(page.GetDeviceCaps(HORZRES), GetDeviceCaps(context_, HORZRES));
    page.DrawText(L"梁", CRect(10, 20, 300, 80), DT_SINGLELINE);
    EXPECT_EQ(job.NextPage(), nullptr) << "a metafile is one page";
    page.DrawText(L"lost", CRect(10, 90, 300, 150), DT_SINGLELINE);
    job.End();
  }
  const std::vector<Line> lines = Lines();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].text, "梁");
}

// The library is only looked at: a test never sends.
TEST(NativeMail, IsLoadedAndFreed) {
  ASSERT_TRUE(NativeMail().Installed());
  const auto library = NativeMail().Load();
  ASSERT_NE(library, nullptr);
  EXPECT_TRUE(library->CanSend());
}

}  // namespace
}  // namespace lorv
