#pragma once

#include <gtest/gtest.h>

#include <iosfwd>
#include <string>

#include "framework/text/cstring.h"

// Lets a failing check print 16-bit text as UTF-8.
void PrintTo(const CString& text, std::ostream* out);

namespace lorv::test {

// 16-bit text as UTF-8, so that checks read EXPECT_EQ(Utf8(text), "KL12").
std::string Utf8(const CString& text);
std::string Utf8(TextView text);
std::string Utf8(LPCTSTR text);

}  // namespace lorv::test
