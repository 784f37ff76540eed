#include "spreadsheet/automation/automation_family.h"

#include <array>

#include "framework/objects/exceptions.h"

// The typed operations over AutoObject: each is one call by number, with its arguments in the program's own
// types. The exchange above is written once; what the two programs want differently stands here and in the
// table of numbers, and nowhere else.

namespace lorv {
namespace {

// The second program's word for a plain value.
constexpr long kEtValueType = 10;
// The file format of SaveAs, and "no sharing mode".
constexpr short kSavedFormat = 39;
constexpr long kNoAccessMode = 0;
// Arguments are known by their places, so those of an opening that have no value are
// handed over as missing ones.
constexpr std::size_t kOpenArguments = 13;

// Programs answer one question with different types of number, a width even as a whole one, so every answer
// is converted. What cannot be raises its code: a 0 in its place would be taken for a real count.
_variant_t Converted(const _variant_t& value, VARTYPE type) {
  _variant_t result;
  const HRESULT code = ChangeValueType(result, value, type);
  if (FAILED(code)) AfxThrowOleException(code);
  return result;
}

AutoValue Bool(bool value) {
  return AutoValue(_variant_t(value));
}

AutoValue Long(long value) {
  return AutoValue(_variant_t(value));
}

AutoValue Text(const CString& text) {
  return AutoValue(_variant_t(text));
}

}  // namespace

AutoValue AutomationFamily::Ask(const AutoRef& object, Operation operation, Form form,
                                std::initializer_list<AutoValue> args) const {
  // An object that the program did not give is a failure that the exchange shows, as
  // one of the program itself.
  if (!object) AfxThrowOleException(E_POINTER);
  return object->Invoke(DispidOf(program_, operation), form, std::span(args.begin(), args.size()));
}

AutoRef AutomationFamily::ObjectOf(const AutoRef& object, Operation operation) const {
  return Ask(object, operation, Form::kGet).object;
}

long AutomationFamily::LongOf(const AutoRef& object, Operation operation) const {
  return Converted(Ask(object, operation, Form::kGet).data, VT_I4).lVal;
}

CString AutomationFamily::TextOf(const AutoRef& object, Operation operation) const {
  const _variant_t text = Converted(Ask(object, operation, Form::kGet).data, VT_BSTR);
  return CString(TextView(text.bstrVal == nullptr ? _T("") : text.bstrVal, SysStringLen(text.bstrVal)));
}

_variant_t AutomationFamily::Real(long value) const {
  return program_ == Program::kExcel ? _variant_t(value) : _variant_t(static_cast<double>(value));
}

AutoRef AutomationFamily::Workbooks(const AutoRef& application) const {
  return ObjectOf(application, Operation::kWorkbooks);
}

AutoRef AutomationFamily::ActiveSheet(const AutoRef& application) const {
  return ObjectOf(application, Operation::kActiveSheet);
}

AutoRef AutomationFamily::Selection(const AutoRef& application) const {
  return ObjectOf(application, Operation::kSelection);
}

void AutomationFamily::PutDisplayAlerts(const AutoRef& application, bool shown) const {
  Ask(application, Operation::kDisplayAlerts, Form::kPut, {Bool(shown)});
}

void AutomationFamily::PutVisible(const AutoRef& application, bool visible) const {
  Ask(application, Operation::kVisible, Form::kPut, {Bool(visible)});
}

void AutomationFamily::Quit(const AutoRef& application) const {
  Ask(application, Operation::kQuit, Form::kCall);
}

AutoRef AutomationFamily::Application(const AutoRef& object) const {
  return ObjectOf(object, Operation::kApplication);
}

AutoRef AutomationFamily::AddWorkbook(const AutoRef& workbooks, const AutoValue& template_file) const {
  return Ask(workbooks, Operation::kAddWorkbook, Form::kCall, {template_file}).object;
}

AutoRef AutomationFamily::OpenWorkbook(const AutoRef& workbooks, const CString& file) const {
  std::array<AutoValue, kOpenArguments> args;
  args.fill(AutoValue::Missing());
  args[0] = Text(file);
  if (!workbooks) AfxThrowOleException(E_POINTER);
  return workbooks->Invoke(DispidOf(program_, Operation::kOpenWorkbook), Form::kCall, args).object;
}

AutoRef AutomationFamily::Worksheets(const AutoRef& workbook) const {
  return ObjectOf(workbook, Operation::kWorksheets);
}

void AutomationFamily::PutSaved(const AutoRef& workbook, bool saved) const {
  Ask(workbook, Operation::kSaved, Form::kPut, {Bool(saved)});
}

void AutomationFamily::CloseWorkbook(const AutoRef& workbook, const CString& file) const {
  Ask(workbook, Operation::kCloseWorkbook, Form::kCall,
      {AutoValue::Missing(), Text(file), AutoValue::Missing()});
}

void AutomationFamily::SaveAs(const AutoRef& workbook, const CString& file) const {
  const AutoValue missing = AutoValue::Missing();
  Ask(workbook, Operation::kSaveAs, Form::kCall,
      {Text(file), AutoValue(_variant_t(kSavedFormat)), missing, missing, missing, missing,
       Long(kNoAccessMode), missing, missing, missing, missing});
}

long AutomationFamily::SheetCount(const AutoRef& worksheets) const {
  return LongOf(worksheets, Operation::kSheetCount);
}

AutoRef AutomationFamily::Sheet(const AutoRef& worksheets, int index) const {
  // Collections are asked by an index of 16 bits, which no workbook's count of sheets comes near.
  const auto narrow = static_cast<short>(index);
  return Ask(worksheets, Operation::kSheet, Form::kGet, {AutoValue(_variant_t(narrow))}).object;
}

AutoRef AutomationFamily::AddSheetAfter(const AutoRef& worksheets, const AutoRef& last) const {
  const AutoValue missing = AutoValue::Missing();
  return Ask(worksheets, Operation::kAddSheet, Form::kCall, {missing, AutoValue(last), missing, missing})
      .object;
}

CString AutomationFamily::SheetName(const AutoRef& worksheet) const {
  return TextOf(worksheet, Operation::kSheetName);
}

void AutomationFamily::PutSheetName(const AutoRef& worksheet, const CString& name) const {
  Ask(worksheet, Operation::kSheetName, Form::kPut, {Text(name)});
}

AutoRef AutomationFamily::Cells(const AutoRef& worksheet) const {
  return ObjectOf(worksheet, Operation::kCells);
}

AutoRef AutomationFamily::UsedRange(const AutoRef& worksheet) const {
  return ObjectOf(worksheet, Operation::kUsedRange);
}

long AutomationFamily::Count(const AutoRef& range) const {
  return LongOf(range, Operation::kCount);
}

AutoRef AutomationFamily::Item(const AutoRef& range, int row, int column) const {
  return Ask(range, Operation::kItem, Form::kGet, {Long(row), Long(column)}).object;
}

AutoRef AutomationFamily::Range(const AutoRef& range, const CString& first_corner,
                                const CString& last_corner) const {
  return Ask(range, Operation::kRange, Form::kGet, {Text(first_corner), Text(last_corner)}).object;
}

long AutomationFamily::Row(const AutoRef& range) const {
  return LongOf(range, Operation::kRow);
}

long AutomationFamily::Column(const AutoRef& range) const {
  return LongOf(range, Operation::kColumn);
}

AutoRef AutomationFamily::Rows(const AutoRef& range) const {
  return ObjectOf(range, Operation::kRows);
}

AutoRef AutomationFamily::Columns(const AutoRef& range) const {
  return ObjectOf(range, Operation::kColumns);
}

AutoRef AutomationFamily::EntireColumn(const AutoRef& range) const {
  return ObjectOf(range, Operation::kEntireColumn);
}

double AutomationFamily::ColumnWidth(const AutoRef& range) const {
  return Converted(Ask(range, Operation::kColumnWidth, Form::kGet).data, VT_R8).dblVal;
}

void AutomationFamily::PutColumnWidth(const AutoRef& range, long width) const {
  Ask(range, Operation::kColumnWidth, Form::kPut, {AutoValue(Real(width))});
}

AutoRef AutomationFamily::Font(const AutoRef& range) const {
  return ObjectOf(range, Operation::kFont);
}

void AutomationFamily::PutFontSize(const AutoRef& font, long size) const {
  Ask(font, Operation::kFontSize, Form::kPut, {AutoValue(Real(size))});
}

void AutomationFamily::PutHorizontalAlignment(const AutoRef& range, long alignment) const {
  Ask(range, Operation::kHorizontalAlignment, Form::kPut, {Long(alignment)});
}

CString AutomationFamily::NumberFormat(const AutoRef& range) const {
  const _variant_t format = Ask(range, Operation::kNumberFormat, Form::kGet).data;
  // A range of several formats has none.
  return format.vt == VT_NULL ? CString() : CString(_bstr_t(Converted(format, VT_BSTR)).View());
}

void AutomationFamily::PutNumberFormat(const AutoRef& range, const CString& format) const {
  Ask(range, Operation::kNumberFormat, Form::kPut, {Text(format)});
}

_variant_t AutomationFamily::Value(const AutoRef& range) const {
  if (program_ == Program::kExcel) return Ask(range, Operation::kValue, Form::kGet).data;
  return Ask(range, Operation::kValue, Form::kGet, {Long(kEtValueType)}).data;
}

void AutomationFamily::PutValue(const AutoRef& range, const _variant_t& value) const {
  if (program_ == Program::kExcel) {
    Ask(range, Operation::kValue, Form::kPut, {AutoValue(value)});
  } else {
    Ask(range, Operation::kValue, Form::kPut, {Long(kEtValueType), AutoValue(value)});
  }
}

bool AutomationFamily::IsMerged(const AutoRef& range) const {
  const _variant_t merged = Ask(range, Operation::kMergeCells, Form::kGet).data;
  // A range that is merged in part says neither.
  return merged.vt != VT_NULL && Converted(merged, VT_BOOL).boolVal != VARIANT_FALSE;
}

void AutomationFamily::PutMerged(const AutoRef& range, bool merged) const {
  Ask(range, Operation::kMergeCells, Form::kPut, {Bool(merged)});
}

AutoRef AutomationFamily::MergeArea(const AutoRef& range) const {
  return ObjectOf(range, Operation::kMergeArea);
}

}  // namespace lorv
