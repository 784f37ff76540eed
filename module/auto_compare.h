#pragma once

#include <string>

#include "framework/native/export.h"
#include "tables/xarray_db.h"

// The modes of the automatic comparison. The modules that drive it name them; all this library knows is that
// 0 is the mode at the start.
enum EmDiffNumAutoTestMode : int {};

// The switches, the tables and the files of the suite's automatic comparison. Copies member by member.
// The switches are unguarded plain values, for the user-interface thread.
class COMM_LORV_API CAutoCompareMode {
 public:
  CXArrayDBToArray& GetXarrExcel() { return excel_; }
  CXArrayDBToArray& GetXarrAllExce() { return all_excel_; }
  CXArrayDBToArray& GetTimeExce() { return time_; }
  CXArrayDBToArray& GetStTimeExce() { return standard_time_; }

  static void SetWorkMode(EmDiffNumAutoTestMode mode) { m_emTestMode = mode; }
  static EmDiffNumAutoTestMode GetWorkMode() { return m_emTestMode; }

  // Files below the suite's root: the list of projects to compare, the list of those done (both as narrow
  // text), and the settings.
  static void GetAutoCalcProPath(std::string& path);
  static void GetFinishedAutoCalcProPath(std::string& path);
  static void GetAutoCalcSettingPath(CString& path);

  static EmDiffNumAutoTestMode m_emTestMode;
  static bool g_bStartCloudFX;
  static bool g_AutoCalcAndMultiProc;

 private:
  CXArrayDBToArray excel_;
  CXArrayDBToArray all_excel_;
  CXArrayDBToArray time_;
  CXArrayDBToArray standard_time_;
};
