#include "spreadsheet/automation/served_object.h"

#include <cstring>

#include "framework/objects/exceptions.h"

// What all objects of the servers in this library share: a call by number is looked up in the table of the
// program that is played, checked for its form, and handed to the object's class as an operation. So one
// server answers callers of either program.

namespace lorv {
namespace {

// The first letter of a form distinguishes it from the others.
bool HasForm(const OperationRow& row, Form form) {
  return std::strchr(row.forms, "gpc"[static_cast<std::size_t>(form)]) != nullptr;
}

// Arguments are converted as a program would; what cannot be fails with the system's code for it.
_variant_t Converted(const AutoValue& value, VARTYPE type) {
  _variant_t result;
  const HRESULT code = ChangeValueType(result, value.data, type);
  if (FAILED(code)) AfxThrowOleException(code);
  return result;
}

}  // namespace

void RaiseNoMember() {
  AfxThrowOleException(DISP_E_MEMBERNOTFOUND);
}

const AutoValue& Argument(std::span<const AutoValue> args, std::size_t at) {
  if (at >= args.size()) AfxThrowOleException(DISP_E_BADPARAMCOUNT);
  return args[at];
}

long LongArgument(std::span<const AutoValue> args, std::size_t at) {
  const AutoValue& value = Argument(args, at);
  // Rows and columns of cells come in this type, once for each cell: no conversion for them.
  return value.data.vt == VT_I4 ? value.data.lVal : Converted(value, VT_I4).lVal;
}

CString TextArgument(std::span<const AutoValue> args, std::size_t at) {
  return CString(_bstr_t(Converted(Argument(args, at), VT_BSTR)).View());
}

double RealArgument(const AutoValue& value) {
  return Converted(value, VT_R8).dblVal;
}

bool TruthArgument(const AutoValue& value) {
  return Converted(value, VT_BOOL).boolVal != VARIANT_FALSE;
}

AutoValue ServedObject::Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) {
  const OperationRow* const row = FindOperation(family_, kind_, dispid);
  if (row == nullptr || !HasForm(*row, form)) RaiseNoMember();
  // Every object knows its application.
  if (row->operation == Operation::kApplication) return ApplicationObject();
  switch (form) {
    case Form::kGet:
      return Get(row->operation, args);
    case Form::kPut:
      // What stands before the new value are words about it.
      Put(row->operation, Argument(args, args.empty() ? 0 : args.size() - 1));
      return {};
    default:
      return Call(row->operation, args);
  }
}

AutoValue ServedObject::Get(Operation /*operation*/, std::span<const AutoValue> /*args*/) {
  RaiseNoMember();
}

void ServedObject::Put(Operation /*operation*/, const AutoValue& /*value*/) {
  RaiseNoMember();
}

AutoValue ServedObject::Call(Operation /*operation*/, std::span<const AutoValue> /*args*/) {
  RaiseNoMember();
}

}  // namespace lorv
