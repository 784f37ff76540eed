#include <gtest/gtest.h>

#include <thread>

#include "module/critical_section.h"
#include "module/product_flags.h"
#include "module/scope_markers.h"
#include "module/startup.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

constexpr LPCTSTR kProductFile = _T("C:\\Suite\\sys\\product.ini");

class ProductFlags : public testing::Test {
 protected:
  ProductFlags() { CachedProductFlags() = 0; }
  ~ProductFlags() override { CachedProductFlags() = 0; }
  void Set(const std::string& value) {
    machine_.files.Put(kProductFile, "[Product]\r\nCustomFlag=" + value + "\r\n");
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(ProductFlags, WithoutAFileTheDefaultIsKept) {
  EXPECT_EQ(GetGlobelInfo(), 72U);
  Set("5");
  EXPECT_EQ(GetGlobelInfo(), 72U);
  EXPECT_EQ(machine_.settings.asked.size(), 1U);
}

TEST_F(ProductFlags, AskedUnderTheRootWithADoubledSeparator) {
  GetGlobelInfo();
  ASSERT_EQ(machine_.settings.asked.size(), 1U);
  EXPECT_EQ(Utf8(machine_.settings.asked[0]),
            "C:\\Suite\\\\sys\\product.ini [Product] CustomFlag default 72");
}

TEST_F(ProductFlags, PositiveValueIsKeptForTheProcess) {
  Set("4168");
  EXPECT_EQ(GetGlobelInfo(), 0x1048U);
  Set("1");
  EXPECT_EQ(GetGlobelInfo(), 0x1048U);
}

TEST_F(ProductFlags, SmallestKeptValueIsOne) {
  Set("1");
  EXPECT_EQ(GetGlobelInfo(), 1U);
  Set("2");
  EXPECT_EQ(GetGlobelInfo(), 1U);
}

TEST_F(ProductFlags, ZeroIsReadAnewAtEachCall) {
  Set("0");
  EXPECT_EQ(GetGlobelInfo(), 0U);
  EXPECT_EQ(GetGlobelInfo(), 0U);
  EXPECT_EQ(machine_.settings.asked.size(), 2U);
  Set("9");
  EXPECT_EQ(GetGlobelInfo(), 9U);
}

TEST_F(ProductFlags, NegativeValueIsReadAnewAtEachCall) {
  Set("-2");
  EXPECT_EQ(GetGlobelInfo(), 0xFFFFFFFEU);
  EXPECT_EQ(GetGlobelInfo(), 0xFFFFFFFEU);
  EXPECT_EQ(machine_.settings.asked.size(), 2U);
}

TEST(OpenProject, InnerEndTakesTheMarkAway) {
  EXPECT_FALSE(TOpenProject::IsOpenProject());
  {
    const TOpenProject outer;
    EXPECT_TRUE(TOpenProject::IsOpenProject());
    {
      const TOpenProject inner;
      EXPECT_TRUE(TOpenProject::IsOpenProject());
    }
    EXPECT_FALSE(TOpenProject::IsOpenProject());
  }
  EXPECT_FALSE(TOpenProject::IsOpenProject());
}

TEST(BlockMouse, NestedObjectsCount) {
  EXPECT_EQ(TBlockMouse::IsBlockMouse(), 0);
  {
    const TBlockMouse outer;
    {
      const TBlockMouse inner;
      EXPECT_EQ(TBlockMouse::IsBlockMouse(), 2);
    }
    EXPECT_EQ(TBlockMouse::IsBlockMouse(), 1);
  }
  EXPECT_EQ(TBlockMouse::IsBlockMouse(), 0);
}

TEST(BlockMouse, EventTextsOnlyGrow) {
  TBlockMouse::m_iEventInfo.Empty();
  TBlockMouse::m_iEventAllInfo.Empty();
  TBlockMouse::SetEventInfo(3);
  TBlockMouse::SetEventInfo(4);
  EXPECT_EQ(Utf8(TBlockMouse::GetEventInfo()), ";3;4");
  EXPECT_EQ(Utf8(TBlockMouse::GetAllEventInfo()), "");
  TBlockMouse::SetAllEventInfo(-5);
  TBlockMouse::SetAllEventInfo(0);
  EXPECT_EQ(Utf8(TBlockMouse::GetAllEventInfo()), ";-5;0");
  EXPECT_EQ(Utf8(TBlockMouse::GetEventInfo()), ";3;4");
  CString copy = TBlockMouse::GetEventInfo();
  copy += _T("x");
  EXPECT_EQ(Utf8(TBlockMouse::GetEventInfo()), ";3;4");
}

// Whether another thread can enter.
bool IsFree(CCriticalSection& section) {
  bool entered = false;
  std::thread([&] {
    entered = section.TryLock() != 0;
    if (entered) section.Unlock();
  }).join();
  return entered;
}

TEST(CriticalSectionEx, LeavesAsOftenAsItEntered) {
  CCriticalSection section;
  {
    TCriticalSectionEx guard(&section);
    EXPECT_EQ(guard.GetSection(), &section);
    EXPECT_TRUE(IsFree(section));
    EXPECT_EQ(guard.Lock(), 1);
    EXPECT_EQ(guard.Lock(), 2);
    EXPECT_FALSE(IsFree(section));
  }
  EXPECT_TRUE(IsFree(section));
}

TEST(CriticalSectionEx, HeldByAnotherThreadGivesZero) {
  CCriticalSection section;
  section.Lock();
  int count = -1;
  std::thread([&] {
    TCriticalSectionEx guard(&section);
    count = guard.Lock();
  }).join();
  EXPECT_EQ(count, 0);
  EXPECT_FALSE(IsFree(section));
  section.Unlock();
}

TEST(CriticalSectionEx, SectionServesASingleLock) {
  CCriticalSection section;
  TCriticalSectionEx guard(&section);
  const CSingleLock lock(guard.GetSection(), TRUE);
  EXPECT_TRUE(lock.IsLocked());
  EXPECT_FALSE(IsFree(section));
}

TEST(CriticalSectionEx, WithoutASectionNothingIsEntered) {
  TCriticalSectionEx guard(nullptr);
  EXPECT_EQ(guard.Lock(), 0);
}

TEST(Startup, AttachedModuleIsKeptAndSearchedFirst) {
  int modules[2] = {};
  const auto first = reinterpret_cast<HINSTANCE>(&modules[0]);
  const auto second = reinterpret_cast<HINSTANCE>(&modules[1]);
  const HINSTANCE before = OwnModule();
  const std::size_t count = ResourceModules().size();
  EXPECT_EQ(AttachModule(first), 1);
  EXPECT_EQ(AttachModule(second), 1);
  EXPECT_EQ(OwnModule(), second);
  ASSERT_EQ(ResourceModules().size(), count + 2);
  EXPECT_EQ(ResourceModules()[0], second);
  DetachModule();
  EXPECT_EQ(OwnModule(), nullptr);
  EXPECT_EQ(ResourceModules().size(), count + 1);
  AttachModule(first);
  DetachModule();
  if (before != nullptr) AttachModule(before);
}

}  // namespace
}  // namespace lorv
