#include <gtest/gtest.h>

#include "module/global_setting.h"
#include "module/startup.h"
#include "platform/ports/process.h"

// Linked with the shared library as users have it: what its loading sets up.
namespace {

TEST(LoadedLibrary, SettingsAreValidAtOnce) {
  ASSERT_NE(TasmerSet, nullptr);
  EXPECT_EQ(TasmerSet->tolerance, 0.0001);
}

TEST(LoadedLibrary, KnowsItsOwnModule) {
  ASSERT_NE(lorv::OwnModule(), nullptr);
  const CString path = lorv::NativeProcess().ModulePath(lorv::OwnModule(), 4096);
  EXPECT_GE(path.Find(_T("Comm_LORV.")), 0) << path.ToUtf8();
  const CString program = lorv::NativeProcess().ModulePath(nullptr, 4096);
  EXPECT_GE(program.Find(_T("lorv_test_loaded")), 0) << program.ToUtf8();
  ASSERT_EQ(lorv::ResourceModules().size(), 1U);
  EXPECT_EQ(lorv::ResourceModules()[0], lorv::OwnModule());
}

}  // namespace
