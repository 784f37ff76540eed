#include "framework/objects/object.h"

#include <gtest/gtest.h>

#include <memory>

#include "framework/objects/exceptions.h"

namespace lorv {
namespace {

class Plain : public CObject {
  DECLARE_DYNAMIC(Plain)
};
IMPLEMENT_DYNAMIC(Plain, CObject)

class Made : public Plain {
  DECLARE_DYNCREATE(Made)
 public:
  int number = 5;
};
IMPLEMENT_DYNCREATE(Made, Plain)

TEST(CObject, HeaderExample) {
  EXPECT_EQ(RUNTIME_CLASS(CFileException)->IsDerivedFrom(RUNTIME_CLASS(CException)), TRUE);
}

TEST(CObject, KnowsItsClassAndBases) {
  const Made object;
  EXPECT_STREQ(object.GetRuntimeClass()->m_lpszClassName, "Made");
  EXPECT_EQ(object.GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(Made)));
  EXPECT_TRUE(object.IsKindOf(RUNTIME_CLASS(Made)));
  EXPECT_TRUE(object.IsKindOf(RUNTIME_CLASS(Plain)));
  EXPECT_TRUE(object.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_FALSE(object.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_FALSE(object.IsSerializable());
}

TEST(CObject, IsMadeByClassOnlyWhereOffered) {
  const std::unique_ptr<CObject> object(RUNTIME_CLASS(Made)->CreateObject());
  const auto* made = dynamic_cast<const Made*>(object.get());
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->number, 5);
  EXPECT_EQ(RUNTIME_CLASS(Plain)->CreateObject(), nullptr);
}

TEST(CObject, OnlyStorableClassesAreFoundByName) {
  EXPECT_EQ(CRuntimeClass::FromName("Made"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName("NoSuchClass"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName(nullptr), nullptr);
}

}  // namespace
}  // namespace lorv
