#include "framework/objects/archive.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// A beam that may carry another one: what is stored through pointers.
class Beam : public CObject {
  DECLARE_SERIAL(Beam)
 public:
  void Serialize(CArchive& archive) override {
    if (archive.IsStoring()) {
      archive << name << length << carried.get();
    } else {
      Beam* read = nullptr;
      archive >> name >> length >> read;
      carried.reset(read);
    }
  }

  CString name;
  double length = 0;
  std::unique_ptr<Beam> carried;
};
IMPLEMENT_SERIAL(Beam, CObject, 3)

class Slab : public CObject {
  DECLARE_SERIAL(Slab)
};
IMPLEMENT_SERIAL(Slab, CObject, 1)

template <class Action>
int CauseOf(Action action) {
  try {
    action();
  } catch (CArchiveException* e) {
    const int cause = e->m_cause;
    e->Delete();
    return cause;
  }
  return CArchiveException::none;
}

std::string BytesOf(const CMemFile& file) {
  return {file.GetBytes().begin(), file.GetBytes().end()};
}

std::string Stored(const CString& text) {
  CMemFile file;
  CArchive(&file, CArchive::store) << text;
  return BytesOf(file);
}

int LoadText(const std::string& bytes, CString& text) {
  CMemFile file(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
  CArchive archive(&file, CArchive::load);
  return CauseOf([&] { archive >> text; });
}

TEST(CArchive, TextHasItsDocumentedForm) {
  EXPECT_EQ(Stored(CString()), std::string("\xFF\xFE\xFF\x00", 4));
  EXPECT_EQ(Stored(_T("2*墙")), std::string("\xFF\xFE\xFF\x03"
                                            "2\0*\0\x99\x58",
                                            10));
  EXPECT_EQ(Stored(CString('x', 254)).substr(0, 5), std::string("\xFF\xFE\xFF\xFEx"));
  EXPECT_EQ(Stored(CString('x', 255)).substr(0, 7), std::string("\xFF\xFE\xFF\xFF\xFF\x00x", 7));
  EXPECT_EQ(Stored(CString('x', 65533)).substr(0, 7), std::string("\xFF\xFE\xFF\xFF\xFD\xFFx", 7));
  EXPECT_EQ(Stored(CString('x', 65534)).substr(0, 11),
            std::string("\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\x00\x00x", 11));
}

TEST(CArchive, TextsOfAllLengthsComeBack) {
  for (const int length : {0, 1, 253, 254, 255, 256, 511, 512, 513, 32767, 32768, 32769, 65533, 65534, 65535,
                           65536, 70001, 1 << 20}) {
    CString text(TCHAR{0x5899}, length);
    if (length > 2) text.SetAt(length / 2, 0);
    CString loaded(_T("old"));
    EXPECT_EQ(LoadText(Stored(text), loaded), CArchiveException::none) << length;
    EXPECT_TRUE(loaded == text) << length;
  }
}

TEST(CArchive, LoneSurrogatesComeBack) {
  const TCHAR units[] = {0xD800, 'a', 0xDC00, 0xFFFF};
  CString loaded;
  LoadText(Stored(CString(units, 4)), loaded);
  EXPECT_TRUE(loaded == CString(units, 4));
}

TEST(CArchive, CutStreamEndsInAFailureAndLeavesTheText) {
  const std::string whole = Stored(_T("KL12 梁"));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    CString text(_T("old"));
    EXPECT_EQ(LoadText(whole.substr(0, length), text), CArchiveException::endOfFile) << length;
    EXPECT_EQ(Utf8(text), "old");
  }
}

TEST(CArchive, HostileLengthsTakeNoMemory) {
  const std::string head("\xFF\xFE\xFF\xFF\xFF\xFF", 6);
  CString text(_T("old"));
  EXPECT_EQ(LoadText(head + "\xFF\xFF\xFF\x7F" + "ab", text), CArchiveException::endOfFile);
  EXPECT_EQ(LoadText(head + std::string("\x00\x00\x00\x80", 4) + "ab", text), CArchiveException::badIndex);
  EXPECT_EQ(LoadText(head + "\xFF\xFF\xFF\xFF" + "ab", text), CArchiveException::badIndex);
  EXPECT_EQ(Utf8(text), "old");
}

TEST(CArchive, OtherFormsOfTextAreRefused) {
  CString text;
  EXPECT_EQ(LoadText("\x03"
                     "abc",
                     text),
            CArchiveException::badSchema);
  EXPECT_EQ(LoadText(std::string("\xFF\x03\x00", 3), text), CArchiveException::badSchema);
  EXPECT_EQ(LoadText("\xFF\xFE\xFF\xFF\xFE\xFF", text), CArchiveException::badSchema);
}

TEST(CArchive, NumbersComeBackLittleEndian) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  out << true << BYTE{200} << WORD{0x1234} << -2 << 0xDEADBEEFu << -5000000000LL << 1.5f << -0.1 << short{-3};
  EXPECT_EQ(BytesOf(file).substr(0, 12), std::string("\x01\xC8\x34\x12\xFE\xFF\xFF\xFF\xEF\xBE\xAD\xDE", 12));
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  bool truth = false;
  BYTE byte = 0;
  WORD word = 0;
  int number = 0;
  unsigned bits = 0;
  long long wide = 0;
  float single = 0;
  double real = 0;
  short low = 0;
  in >> truth >> byte >> word >> number >> bits >> wide >> single >> real >> low;
  EXPECT_TRUE(truth);
  EXPECT_EQ(byte, 200);
  EXPECT_EQ(word, 0x1234);
  EXPECT_EQ(number, -2);
  EXPECT_EQ(bits, 0xDEADBEEFu);
  EXPECT_EQ(wide, -5000000000LL);
  EXPECT_EQ(single, 1.5f);
  EXPECT_EQ(real, -0.1);
  EXPECT_EQ(low, -3);
  EXPECT_EQ(CauseOf([&] { in >> byte; }), CArchiveException::endOfFile);
  EXPECT_EQ(byte, 200);
}

TEST(CArchive, WrongDirectionIsRefused) {
  CMemFile file;
  CString text(_T("x"));
  CArchive out(&file, CArchive::store);
  EXPECT_TRUE(out.IsStoring());
  EXPECT_EQ(CauseOf([&] { out >> text; }), CArchiveException::writeOnly);
  CArchive in(&file, CArchive::load);
  EXPECT_TRUE(in.IsLoading());
  EXPECT_EQ(CauseOf([&] { in << text; }), CArchiveException::readOnly);
  EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CArchive, ClosedOrWithoutFileRefusesEverything) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  out << 1;
  out.Close();
  out.Close();
  EXPECT_EQ(CauseOf([&] { out << 2; }), CArchiveException::genericException);
  CArchive none(nullptr, CArchive::load);
  CString text;
  EXPECT_EQ(CauseOf([&] { none >> text; }), CArchiveException::genericException);
  EXPECT_EQ(file.GetLength(), 4u);
}

TEST(CArchive, ObjectsComeBackThroughPointers) {
  Beam beam;
  beam.name = _T("KL1");
  beam.length = 3600;
  beam.carried = std::make_unique<Beam>();
  beam.carried->name = _T("KL2");
  CMemFile file;
  CArchive(&file, CArchive::store) << &beam;
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  Beam* read = nullptr;
  in >> read;
  const std::unique_ptr<Beam> loaded(read);
  ASSERT_NE(loaded, nullptr);
  EXPECT_EQ(Utf8(loaded->name), "KL1");
  EXPECT_EQ(loaded->length, 3600);
  ASSERT_NE(loaded->carried, nullptr);
  EXPECT_EQ(Utf8(loaded->carried->name), "KL2");
  EXPECT_EQ(loaded->carried->carried, nullptr);
}

TEST(CArchive, ObjectOfAnotherClassOrSchemaIsRefused) {
  Beam beam;
  CMemFile file;
  CArchive(&file, CArchive::store) << &beam;
  const auto read = [&](const CRuntimeClass* wanted) {
    file.SeekToBegin();
    CArchive in(&file, CArchive::load);
    return CauseOf([&] { delete in.ReadObject(wanted); });
  };
  EXPECT_EQ(read(RUNTIME_CLASS(Beam)), CArchiveException::none);
  EXPECT_EQ(read(nullptr), CArchiveException::none);
  EXPECT_EQ(read(RUNTIME_CLASS(Slab)), CArchiveException::badClass);
  file.Seek(12, CFile::begin);
  file.Write("\x04", 1);
  EXPECT_EQ(read(RUNTIME_CLASS(Beam)), CArchiveException::badSchema);
  file.Seek(4, CFile::begin);
  file.Write("Z", 1);
  EXPECT_EQ(read(nullptr), CArchiveException::badClass);
}

TEST(CArchive, ObjectThatCannotBeStoredIsRefused) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  const CMemFile object;
  try {
    out << &object;
    ADD_FAILURE() << "was stored";
  } catch (CNotSupportedException* e) {
    e->Delete();
  }
}

// The bytes of beams nested `depth` deep.
std::string Nested(int depth) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  for (int i = 0; i < depth; ++i) out << CString(_T("Beam")) << 3u << CString() << 0.0;
  out << CString();
  return BytesOf(file);
}

TEST(CArchive, DepthOfObjectsIsBounded) {
  for (const int depth : {kMaxArchiveDepth - 1, kMaxArchiveDepth, kMaxArchiveDepth + 1}) {
    const std::string bytes = Nested(depth);
    CMemFile file(reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size()));
    CArchive in(&file, CArchive::load);
    const int cause = CauseOf([&] { delete in.ReadObject(nullptr); });
    EXPECT_EQ(cause, depth > kMaxArchiveDepth ? CArchiveException::badIndex : CArchiveException::none)
        << depth;
  }
}

TEST(CMemFile, ReadsWritesAndFillsGaps) {
  CMemFile file;
  BYTE buffer[5] = {};
  file.Write("ab", 2);
  file.SeekToBegin();
  EXPECT_EQ(file.Read(buffer, 5), 2u);
  EXPECT_EQ(file.Read(buffer, 5), 0u);
  EXPECT_EQ(file.Seek(2, CFile::current), 4u);
  EXPECT_EQ(file.Read(buffer, 5), 0u);
  file.Write("c", 1);
  EXPECT_EQ(BytesOf(file), std::string("ab\0\0c", 5));
  file.SetLength(1);
  EXPECT_EQ(file.GetLength(), 1u);
  EXPECT_EQ(file.GetPosition(), 5u);
}

TEST(CMemFile, PlaceInFrontOfTheFileIsRefused) {
  CMemFile file(reinterpret_cast<const BYTE*>("abc"), 3);
  const auto refused = [&](long long offset, UINT from) {
    try {
      file.Seek(offset, from);
    } catch (CFileException* e) {
      const bool right = e->m_cause == CFileException::badSeek;
      e->Delete();
      return right;
    }
    return false;
  };
  EXPECT_TRUE(refused(-1, CFile::begin));
  EXPECT_TRUE(refused(-4, CFile::end));
  EXPECT_TRUE(refused(0, 3));
  EXPECT_TRUE(refused(std::numeric_limits<long long>::max(), CFile::end));
  EXPECT_EQ(file.GetPosition(), 0u);
  EXPECT_EQ(file.SeekToEnd(), 3u);
}

TEST(CMemFile, LackOfMemoryIsReportedAndChangesNothing) {
  CMemFile file(reinterpret_cast<const BYTE*>("abc"), 3);
  try {
    file.SetLength(std::numeric_limits<unsigned long long>::max());
    ADD_FAILURE() << "was granted";
  } catch (CMemoryException* e) {
    e->Delete();
  }
  EXPECT_EQ(file.GetLength(), 3u);
}

}  // namespace
}  // namespace lorv
