#include "TEXPRESSCAL/formula_plan.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "TEXPRESSCAL/operator_rewriting.h"
#include "TEXPRESSCAL/parser.h"
#include "TEXPRESSCAL/slot_edit.h"
#include "TEXPRESSCAL/substitution.h"

namespace lorv {
namespace {

// What stands for every value while a plan is made: its text is longer than any name, so that no hit is
// missed behind it, and it has digits at both ends, as the text of every value that fits.
constexpr double kStandIn = 1e20;
// In the search for gaps: farther than any name reaches.
constexpr std::size_t kNoGap = 1000;

bool IsPartOfNumber(TCHAR c) {
  return IsDigit(c) || c == '.';
}

// A name whose hits cannot begin inside the text of a value, and that holds no sign of the grammar.
bool IsPlainName(TextView name) {
  if (IsDigit(name.front())) return false;
  return std::all_of(name.begin(), name.end(), [](TCHAR c) { return IsNameChar(c) || c >= 0x80; });
}

// No name may be left over: whether it is known, and that it counts 0, is asked anew for every text.
class NoNames final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR) const override { return 0; }
};

}  // namespace

// Reads the plan off a tree that was parsed from a text with stand-ins.
class PlanReader {
 public:
  PlanReader(TextView text, std::vector<SlotEdit::Place> places) : text_(text), places_(std::move(places)) {}

  // True when every value is a number of its own in the tree.
  bool Read(const ExprNode* root) {
    for (std::size_t i = 0; i < places_.size(); ++i) {
      const SlotEdit::Place& place = places_[i];
      if (place.start > 0 && IsPartOfNumber(text_[place.start - 1])) return false;
      if (place.end < text_.size() && IsPartOfNumber(text_[place.end])) return false;
      starts_[place.start] = i;
    }
    Walk(root);
    return found_.size() == places_.size();
  }

  // The name that a number leaf stands for; null for a constant.
  const std::size_t* NameOf(const ExprNode* leaf) const {
    const auto at = starts_.find(leaf->place);
    return at == starts_.end() ? nullptr : &places_[at->second].name;
  }

  // A sign that was typed as "+" before a value takes no "-" behind it.
  bool TakesNegative(const SlotEdit::Place& place) const {
    std::size_t at = place.start;
    while (at > 0 && text_[at - 1] == ' ') --at;
    return at == 0 || text_[at - 1] != '+' || sums_.contains(at - 1);
  }

  const std::vector<SlotEdit::Place>& Places() const { return places_; }

 private:
  void Walk(const ExprNode* root) {
    std::vector<const ExprNode*> open{root};
    while (!open.empty()) {
      const ExprNode* node = open.back();
      open.pop_back();
      if (node == nullptr) continue;
      if (node->kind == kNumber && starts_.contains(node->place)) found_.insert(node->place);
      if (node->kind == kAdd) sums_.insert(node->place);
      open.push_back(node->left);
      open.push_back(node->right);
    }
  }

  TextView text_;
  std::vector<SlotEdit::Place> places_;
  std::map<std::size_t, std::size_t> starts_;  // the index of the place that starts at a unit
  std::set<std::size_t> found_;
  std::set<std::size_t> sums_;
};

namespace {

// What is put in place of a name, and what that asks of its values.
struct StandIn {
  bool is_slot;            // else the value itself stands in the text
  std::size_t least_text;  // shorter texts would change which hits are found
};

// Puts stand-ins in place of every name; false if a plan cannot be made for these names.
bool PutStandIns(SlotEdit& edit, const CMapValue& values, bool writes_thirds,
                 std::vector<StandIn>& stand_ins) {
  for (const auto& [key, value] : values) {
    const TextView name(static_cast<LPCTSTR>(key));
    stand_ins.push_back({!writes_thirds || ThirdsOf(value) == 0, 0});
    StandIn& stand_in = stand_ins.back();
    if (name.empty()) continue;
    if (!IsPlainName(name)) return false;
    edit.BeginName(stand_ins.size() - 1);
    SubstituteValue(edit, name, stand_in.is_slot ? kStandIn : value);
    const std::size_t gap = edit.LeastGap(name, kNoGap);
    if (gap < name.size()) stand_in.least_text = name.size() - gap;
    if (!stand_in.is_slot && stand_in.least_text > ValueText(value).Plain().size()) return false;
  }
  edit.EndNames();
  return !edit.IsDoubtful();
}

}  // namespace

bool FormulaPlan::Make(TextView formula, const CMapValue& values, Thirds thirds) {
  slots_.clear();
  close_slots_.clear();
  places_.clear();
  SlotEdit edit(formula);
  std::vector<StandIn> stand_ins;
  if (IsPlainNumber(formula) || !PutStandIns(edit, values, thirds == Thirds::kWritten, stand_ins))
    return false;
  RewriteOperators(edit);
  if (edit.CopiesText()) return false;

  NodePool pool;
  TCHAR refused[kVarListSize] = {};
  NameList names(refused);
  const NoNames judge;
  Parser parser(edit.Writable(), pool, &judge, names);
  const ExprNode* root = parser.Parse();
  if (root == nullptr) return false;
  std::vector<SlotEdit::Place> places = edit.Places();
  std::erase_if(places, [&](const SlotEdit::Place& place) { return !stand_ins[place.name].is_slot; });
  PlanReader reader({edit.Text(), edit.Length()}, std::move(places));
  if (!reader.Read(root)) return false;

  std::vector<std::size_t> least_texts(stand_ins.size());
  std::transform(stand_ins.begin(), stand_ins.end(), least_texts.begin(),
                 [](const StandIn& stand_in) { return stand_in.least_text; });
  MakeSlots(reader, least_texts);
  return program_.Make(root, values_.size(), [&](const ExprNode* leaf) {
    const std::size_t* name = reader.NameOf(leaf);
    return name == nullptr ? -1 : SlotOf(*name);
  });
}

void FormulaPlan::MakeSlots(const PlanReader& reader, const std::vector<std::size_t>& least_texts) {
  std::map<std::size_t, bool> takes_negative;
  for (const SlotEdit::Place& place : reader.Places()) {
    const auto [at, fresh] = takes_negative.try_emplace(place.name, true);
    at->second = at->second && reader.TakesNegative(place);
  }
  for (const auto& [name, negative] : takes_negative) {
    slots_.push_back({name, least_texts[name], negative});
    if (!IsFree(slots_.back())) close_slots_.push_back(slots_.size() - 1);
  }
  for (const Slot& slot : slots_)
    places_.push_back(slot.entry * sizeof(CMapValue::value_type) + offsetof(CMapValue::value_type, second));
  if (places_.size() % 2 != 0) places_.push_back(places_.back());
  values_.resize(places_.size());
}

int FormulaPlan::SlotOf(std::size_t name) const {
  const auto at =
      std::find_if(slots_.begin(), slots_.end(), [=](const Slot& slot) { return slot.entry == name; });
  return static_cast<int>(at - slots_.begin());
}

bool FormulaPlan::Work(const CMapValue& values, double& result, int& error) {
  const char* const first = values.empty() ? nullptr : reinterpret_cast<const char*>(&*values.begin());
  const auto place = [=, this](std::size_t i) { return reinterpret_cast<const double*>(first + places_[i]); };
  if (!AllReadPlainly(places_.size(), place, values_.data(), program_.Slots())) return false;
  if (!close_slots_.empty() && !AllFitClosely()) return false;
  result = program_.Work(error);
  return true;
}

bool FormulaPlan::AllFitClosely() const {
  return std::all_of(close_slots_.begin(), close_slots_.end(),
                     [this](std::size_t i) { return FitsClosely(slots_[i], values_[i]); });
}

bool FormulaPlan::FitsClosely(const Slot& slot, double value) {
  if (!slot.takes_negative && std::signbit(value)) return false;
  return slot.least_text <= 1 || ValueText(value).Plain().size() >= slot.least_text;
}

}  // namespace lorv
