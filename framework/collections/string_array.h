#pragma once

#include "framework/collections/array.h"
#include "framework/text/cstring.h"

// The framework's plain lists: texts, unsigned and 32-bit numbers, pointers. Operations and edges are those
// of CArray (framework/collections/array.h); a text may be given as a pointer, null counting as the empty
// text.
//
//   CStringArray names;  names.Add(_T("KL"));  names.GetAt(5)  raises CInvalidArgException
class CStringArray : public CArray<CString, const CString&> {};

class CUIntArray : public CArray<UINT, UINT> {};

class CDWordArray : public CArray<DWORD, DWORD> {};

class CPtrArray : public CArray<void*, void*> {};
