#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <new>
#include <type_traits>

#include "TEXPRESSCAL/express.h"
#include "framework/objects/archive.h"
#include "tests/support/print.h"

namespace {

double ValueOf(CExpression& e) {
  double value = 0;
  e.Value(value);
  return value;
}

class Height : public CValue {
 public:
  double GetValue() const override { return 2.5; }
};

TEST(ExpressionObject, CopyOutlivesItsSource) {
  CExpression copy;
  {
    CExpression source;
    source.ChangeExpression(_T("'a'+'b'='AB'"));
    copy = source;
    source.ChangeExpression(_T("7"));
  }
  EXPECT_EQ(ValueOf(copy), 1);
  EXPECT_EQ(copy.m_nPos, 0U);
  const CExpression second(copy);
  EXPECT_EQ(second.m_szVarList[0], 0);
  EXPECT_EQ(second.m_pValidParameter, nullptr);
}

TEST(ExpressionObject, ArchiveKeepsTheRewrittenText) {
  CMemFile file;
  CExpression stored;
  stored.ChangeExpression(_T("2>=1"));
  {
    CArchive out(&file, CArchive::store);
    stored.Serialize(out);
  }
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  CExpression loaded;
  loaded.Serialize(in);
  EXPECT_EQ(CString(loaded.m_pszExpr), CString(stored.m_pszExpr));
  EXPECT_EQ(ValueOf(loaded), 1);
}

// The parser builds no variable node; a tree from elsewhere may hold one.
TEST(ExpressionObject, VariableNodeAsksTheMap) {
  Height height;
  CExpression::VariableMap map;
  map.SetAt(_T("H"), &height);
  ExprNode node{};
  node.kind = 'V';
  node.text = _T("H");
  CExpression e;
  e.m_pRoot = &node;
  EXPECT_EQ(ValueOf(e), 0);
  EXPECT_EQ(e.m_nError, 3);
  e.m_pVars = &map;
  EXPECT_EQ(ValueOf(e), 2.5);
  EXPECT_EQ(e.m_nError, 0);
  node.text = _T("B");
  EXPECT_EQ(ValueOf(e), 0);
  EXPECT_EQ(e.m_nError, 3);
}

TEST(ExpressionObject, ListOfNamesIsZeroThroughoutAtFirst) {
  alignas(CExpression) std::byte room[sizeof(CExpression)];
  std::memset(room, 0xAA, sizeof room);
  auto* const e = new (room) CExpression;
  for (const TCHAR unit : e->m_szVarList) EXPECT_EQ(unit, 0);
  EXPECT_EQ(std::size(e->m_szVarList), 255U);
  e->~CExpression();
}

// Callers walk trees: a text is theirs to read like any other.
TEST(ExpressionObject, TextLeafHasATerminatedTextOfItsOwn) {
  CExpression e;
  ASSERT_EQ(e.ChangeExpression(_T("FIND('ab','b')")), -1);
  const ExprNode* const leaf = e.m_pRoot->left;
  ASSERT_EQ(leaf->kind, 39);
  EXPECT_EQ(CString(leaf->text), CString(_T("AB")));
  CExpression copy(e);
  EXPECT_EQ(CString(copy.m_pRoot->left->text), CString(_T("AB")));
  EXPECT_NE(copy.m_pRoot->left->text, leaf->text);
  e.m_pszExpr[6] = 'X';
  EXPECT_EQ(ValueOf(e), 2);
}

TEST(ExpressionObject, ResolverIsKeptAsAPlainPointer) {
  static_assert(std::is_same_v<decltype(CExpression::m_pValidParameter), CValidParameter*>);
}

}  // namespace
