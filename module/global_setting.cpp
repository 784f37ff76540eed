#include "module/global_setting.h"

// The settings shared by all modules of a program, made at the first question or when the library is loaded.

gGlobalSetting* gGlobalSetting::m_pGloblSet = nullptr;

gGlobalSetting* TasmerSet = gGlobalSetting::GetInstance();

// The object is left to the end of the process on purpose: other modules still read it while they end.
gGlobalSetting* gGlobalSetting::GetInstance() {
  if (m_pGloblSet == nullptr) m_pGloblSet = new gGlobalSetting;
  return m_pGloblSet;
}
