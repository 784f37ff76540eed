#include "spreadsheet/servers/recording/recording.h"

#include <utility>

#include "framework/objects/exceptions.h"

// A server in front of another that writes down every call and every release. The order of calls is part of
// what documents and users rely on, so tests hold whole exchanges against records of this form; and a call
// that is made to fail shows what an exchange leaves behind.

namespace lorv {
namespace {

// In the order of ObjectKind.
const char* KindName(ObjectKind kind) {
  static constexpr const char* kNames[] = {"Application", "Any",       "Workbooks", "Workbook",
                                           "Worksheets",  "Worksheet", "Range",     "Font"};
  return kNames[static_cast<std::size_t>(kind)];
}

// What an operation hands out.
ObjectKind KindOfAnswer(Operation operation) {
  switch (operation) {
    case Operation::kApplication:
      return ObjectKind::kApplication;
    case Operation::kWorkbooks:
      return ObjectKind::kWorkbooks;
    case Operation::kAddWorkbook:
    case Operation::kOpenWorkbook:
      return ObjectKind::kWorkbook;
    case Operation::kWorksheets:
      return ObjectKind::kWorksheets;
    case Operation::kActiveSheet:
    case Operation::kSheet:
    case Operation::kAddSheet:
      return ObjectKind::kWorksheet;
    case Operation::kFont:
      return ObjectKind::kFont;
    default:
      return ObjectKind::kRange;
  }
}

class Recorded : public AutoObject {
 public:
  Recorded(CallRecord& record, Program program, ObjectKind kind, AutoRef target)
      : record_(record),
        program_(program),
        kind_(kind),
        target_(std::move(target)),
        name_(KindName(kind) + std::to_string(++record.objects)) {
    ++record_.alive;
  }
  // The order of releases is part of what documents rely on, so each is a line.
  ~Recorded() override {
    --record_.alive;
    record_.lines.push_back("release " + name_);
  }

  AutoValue Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) override;
  void KeepAlive() override {
    record_.lines.push_back(name_ + " keep alive");
    target_->KeepAlive();
  }

  const std::string& Name() const { return name_; }
  const AutoRef& Target() const { return target_; }

 private:
  void FailIfWanted();

  CallRecord& record_;
  Program program_;
  ObjectKind kind_;
  AutoRef target_;
  std::string name_;
};

// Types are written where programs distinguish them: a short from a long index, a real from a whole number.
std::string Shown(const AutoValue& value) {
  if (const auto* const object = dynamic_cast<const Recorded*>(value.object.get())) return object->Name();
  if (value.IsMissing()) return "missing";
  switch (value.data.vt) {
    case VT_EMPTY:
      return "empty";
    case VT_NULL:
      return "null";
    case VT_BOOL:
      return value.data.boolVal != VARIANT_FALSE ? "true" : "false";
    case VT_BSTR:
      return "\"" + CString(_bstr_t(value.data).View()).ToUtf8() + "\"";
    case VT_I2:
      return "short " + std::to_string(value.data.iVal);
    case VT_I4:
      return std::to_string(value.data.lVal);
    case VT_R8:
      return "real " + RealValueToText(value.data.dblVal).ToUtf8();
    default:
      return "tag " + std::to_string(value.data.vt);
  }
}

std::string ShownCall(const OperationRow* row, DISPID dispid, Form form, std::span<const AutoValue> args) {
  static constexpr const char* kForms[] = {" get ", " put ", " call "};
  std::string text = kForms[static_cast<std::size_t>(form)];
  text += row == nullptr ? "number " + std::to_string(dispid) : row->name;
  text += '(';
  for (std::size_t i = 0; i < args.size(); ++i) text += (i == 0 ? "" : ", ") + Shown(args[i]);
  return text + ')';
}

void Recorded::FailIfWanted() {
  if (++record_.calls != record_.fail_at) return;
  record_.lines.push_back(name_ + " fails");
  // Programs fail in two ways, with words of their own and without; callers treat them differently.
  if (record_.description.IsEmpty()) AfxThrowOleException(record_.failure);
  constexpr UINT kNoHelp = 0xFFFFFFFF;
  auto* const failure = new COleDispatchException(record_.description, kNoHelp, 0);
  failure->m_scError = record_.failure;
  throw failure;
}

AutoValue Recorded::Invoke(DISPID dispid, Form form, std::span<const AutoValue> args) {
  const OperationRow* const row = FindOperation(program_, kind_, dispid);
  // The line is made before the call and kept until its answer is known: a call that
  // fails is not written as done.
  const std::string line = name_ + ShownCall(row, dispid, form, args);
  FailIfWanted();
  // The server behind knows its own objects only.
  std::vector<AutoValue> plain(args.begin(), args.end());
  for (AutoValue& each : plain) {
    if (const auto* const object = dynamic_cast<const Recorded*>(each.object.get()))
      each.object = object->Target();
  }
  AutoValue answer = target_->Invoke(dispid, form, plain);
  if (answer.object && row != nullptr) {
    answer.object = RecordedObject(record_, program_, KindOfAnswer(row->operation), answer.object);
  }
  const bool has_answer = answer.object || answer.data.vt != VT_EMPTY;
  record_.lines.push_back(has_answer ? line + " -> " + Shown(answer) : line);
  return answer;
}

// The questions of a search are not written down, as their number goes with the entries of the table; the
// workbook that is found is recorded from then on.
class RecordedRunning : public RunningObject {
 public:
  RecordedRunning(std::unique_ptr<RunningObject> target, CallRecord& record)
      : target_(std::move(target)), record_(record) {}

  unsigned TypeInfoCount() override { return target_->TypeInfoCount(); }
  std::optional<GUID> TypeId(unsigned index) override { return target_->TypeId(index); }
  bool HasInterface(const GUID& id) override { return target_->HasInterface(id); }
  std::optional<CString> DisplayName() override { return target_->DisplayName(); }
  AutoRef Object() override {
    // Whose numbers the record has to read is known by the workbook's type alone.
    const auto type = target_->TypeId(0);
    const bool et = type && type->Data1 == WorkbookId(Program::kEt).Data1;
    return RecordedObject(record_, et ? Program::kEt : Program::kExcel, ObjectKind::kWorkbook,
                          target_->Object());
  }

 private:
  std::unique_ptr<RunningObject> target_;
  CallRecord& record_;
};

class RecordedWalk : public RunningObjects {
 public:
  RecordedWalk(std::unique_ptr<RunningObjects> target, CallRecord& record)
      : target_(std::move(target)), record_(record) {}

  bool Next() override { return target_->Next(); }
  std::unique_ptr<RunningObject> Bind() override {
    auto bound = target_->Bind();
    if (!bound) return nullptr;
    return std::make_unique<RecordedRunning>(std::move(bound), record_);
  }

 private:
  std::unique_ptr<RunningObjects> target_;
  CallRecord& record_;
};

Program ProgramNamed(LPCTSTR program_id) {
  return CString(program_id) == ProgramId(Program::kEt) ? Program::kEt : Program::kExcel;
}

}  // namespace

AutoRef RecordedObject(CallRecord& record, Program program, ObjectKind kind, const AutoRef& target) {
  if (!target) return nullptr;
  return std::make_shared<Recorded>(record, program, kind, target);
}

// Written behind the call, so that the objects that it makes are numbered first.
AutoRef RecordingSystem::CreateDispatch(LPCTSTR program_id) {
  AutoRef object = RecordedObject(record_, ProgramNamed(program_id), ObjectKind::kApplication,
                                  target_.CreateDispatch(program_id));
  record_.lines.push_back("create " + CString(program_id).ToUtf8() + (object ? "" : " fails"));
  return object;
}

AutoRef RecordingSystem::ActiveObject(const GUID& class_id) {
  // The class that the first program's name stands for is the first program's.
  const auto first = target_.ClassOf(ProgramId(Program::kExcel));
  const bool excel = first && first->Data1 == class_id.Data1;
  return RecordedObject(record_, excel ? Program::kExcel : Program::kEt, ObjectKind::kApplication,
                        target_.ActiveObject(class_id));
}

std::unique_ptr<RunningObjects> RecordingSystem::EnumRunning() {
  auto walk = target_.EnumRunning();
  if (!walk) return nullptr;
  return std::make_unique<RecordedWalk>(std::move(walk), record_);
}

void RecordingSystem::BeginWait() {
  record_.lines.emplace_back("begin wait");
  target_.BeginWait();
}

void RecordingSystem::EndWait() {
  record_.lines.emplace_back("end wait");
  target_.EndWait();
}

}  // namespace lorv
