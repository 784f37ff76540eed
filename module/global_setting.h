#pragma once

#include <cstdint>

#include "containers/ox_array.h"
#include "framework/native/export.h"
#include "framework/text/cstring.h"
#include "module/value_list.h"

// Settings shared by all modules of the suite. This library only keeps them: their meaning is the suite's,
// which reaches them through `TasmerSet`.
//
// There is one object, made on first use and never destroyed; it may be copied, member by member. Fields,
//   their order and their defaults are fixed.
// Plain values without a lock, for the user-interface thread.
//
//   TasmerSet->tolerance  gives 0.0001
class COMM_LORV_API gGlobalSetting {
 public:
  static gGlobalSetting* GetInstance();

  double pi = 3.141592653589793;
  double double_2 = 0;  // no default is promised: set it before using it
  double tolerance = 0.0001;
  double double_3 = 50.0;
  std::uint8_t byte_1 = 0;
  std::uint8_t byte_2 = 1;
  std::int16_t short_1 = 1;
  std::int32_t integer_1 = 2;
  std::uint8_t flag_1 = 0;
  std::uint8_t flag_2 = 0;
  std::uint8_t flag_3 = 0;
  std::uint8_t flag_4 = 1;
  std::uint8_t flag_5 = 0;
  std::uint8_t flag_6 = 0;
  std::uint8_t flag_7 = 0;
  std::uint8_t flag_8 = 0;
  std::int32_t integer_2 = 1;
  std::uint8_t byte_3 = 0;
  OxArray<CString, OxVector<CString>> string_list;
  std::uint8_t flag_9 = 0;
  std::uint8_t flag_10 = 0;
  std::uint8_t flag_11 = 0;
  std::int32_t integer_3 = 0;
  lorv::ValueList value_list;
  std::uint8_t byte_4 = 0;

  // Null until the first GetInstance.
  static gGlobalSetting* m_pGloblSet;
};

// The one object; valid as soon as the library is loaded.
extern COMM_LORV_API gGlobalSetting* TasmerSet;
