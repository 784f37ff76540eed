#include "tools/lorv-desk/sample_dialogs.h"

#include "platform/headless/services/headless_platform.h"
#include "report/dialogs/dialog_forms.h"
#include "report/dialogs/dlg_except.h"
#include "report/dialogs/dlg_except_add_info.h"
#include "report/dialogs/dlg_file_select.h"

// The library's dialogs with content, in both languages: long and short texts, of one line and of several, as
// they are in use. Tests look at their layout on every desktop.

namespace lorv::tool {
namespace {

// A report of a machine that is the same everywhere: pictures are compared.
std::unique_ptr<CDialog> Failure(LPCTSTR message, LPCTSTR file) {
  HeadlessProcess process;
  process.modules[nullptr] = _T("C:\\Suite\\takeoff.exe");
  process.versions[_T("C:\\Suite\\takeoff.exe \\StringFileInfo\\040904B0\\FileVersion")] = _T("1.0.0.1");
  Platform ports;
  ports.process = &process;
  const ScopedPlatform scope(ports);
  auto dialog = std::make_unique<CDlgExcept>();
  constexpr int kLine = 128;
  dialog->BuildReport(message, {file, kLine, nullptr});
  return dialog;
}

std::unique_ptr<CDialog> Description(LPCTSTR text, LONG print) {
  auto dialog = std::make_unique<CDlgExceptAddInfo>();
  dialog->m_strText = text;
  dialog->m_nPrint = print;
  return dialog;
}

std::unique_ptr<CDialog> Choice(std::initializer_list<LPCTSTR> names) {
  CStringArray list;
  for (const LPCTSTR name : names) list.Add(name);
  return std::make_unique<CDlgFileSelect>(list);
}

}  // namespace

std::vector<SampleDialog> SampleDialogs() {
  return {
      {"failure-zh", "a failure, in Chinese", &kFailureForm,
       [] { return Failure(_T("不能找到文件."), _T("构件计算.cpp")); }},
      {"failure-en", "a failure, in English", &kFailureForm,
       [] { return Failure(_T("The table \"Beam\" could not be opened."), _T("beam_table.cpp")); }},
      {"description-zh", "its description for paper, in Chinese", &kDescriptionForm,
       [] { return Description(_T("打开一号楼的梁表，\r\n按下“重新计算”以后出错。"), 1); }},
      {"description-en", "its description for mail, in English", &kDescriptionForm,
       [] { return Description(_T("I opened the beams of building 1\r\nand pressed \"Calculate\"."), 0); }},
      {"workbooks-zh", "a choice of workbooks, in Chinese", &kFileSelectForm,
       [] {
         return Choice({_T("D:\\工程\\一号楼工程量.xls"), _T("D:\\工程\\二号楼工程量.xls"), _T("工作簿1")});
       }},
      {"workbooks-en", "a choice of workbooks, in English", &kFileSelectForm,
       [] {
         return Choice({_T("Book1"), _T("D:\\Projects\\House\\Quantities.xlsx"), _T("Prices.xlsx")});
       }},
  };
}

}  // namespace lorv::tool
