#include "tools/lorv/takeoff/bill.h"

#include <cmath>
#include <ostream>

#include "framework/text/number_text.h"
#include "tools/lorv/csv/csv_writer.h"
#include "tools/lorv/takeoff/takeoff_limits.h"
#include "tools/lorv/text/column_text.h"
#include "tools/lorv/verb.h"

namespace lorv::tool {
namespace {

// Never "-0.000": a sum of nothing has no sign.
std::string Shown(double value, int decimals) {
  const std::string text = RealToText(value, 'f', decimals);
  const bool zero = text.find_first_not_of("-0.") == std::string::npos;
  return zero ? RealToText(0, 'f', decimals) : text;
}

}  // namespace

void Sum::Add(double value) {
  const double sum = sum_ + value;
  lost_ += std::fabs(sum_) >= std::fabs(value) ? (sum_ - sum) + value : (value - sum) + sum_;
  sum_ = sum;
}

Quantities::Quantities(const RuleSet& rules) {
  for (const Rule& rule : rules.rules) {
    if (rule.kind != RuleKind::kQuantity) {
      of_rule_.push_back(-1);
      continue;
    }
    std::size_t at = 0;
    while (at < list_.size() && (list_[at].name != rule.name || list_[at].unit != rule.unit)) ++at;
    if (at == list_.size()) list_.push_back({rule.name, rule.unit, rule.decimals});
    of_rule_.push_back(static_cast<int>(at));
  }
}

std::size_t Bill::Names::IndexOf(std::string_view name) {
  const auto known = index.find(name);
  if (known != index.end()) return known->second;
  index.emplace(name, list.size());
  list.emplace_back(name);
  return list.size() - 1;
}

void Bill::Add(std::string_view class_name, std::string_view storey, int quantity, double value,
               double count) {
  const Key key{classes_.IndexOf(class_name), quantity, storeys_.IndexOf(storey)};
  const auto [line, fresh] =
      lines_.try_emplace(key, Line{key.class_index, quantity, key.storey_index, 0, {}});
  if (fresh && lines_.size() > kMaxBillLines) {
    throw BadInput("more than " + std::to_string(kMaxBillLines) +
                   " totals: is the storey or the class column right?");
  }
  line->second.components += count;
  line->second.total.Add(value * count);
}

Bill::Lines::const_iterator Bill::PrintQuantity(Lines::const_iterator at, bool class_begins,
                                                TextTable& table) const {
  const Line& first = at->second;
  const Quantity& quantity = QuantityOf(first);
  std::string class_name = class_begins ? classes_.list[first.class_index] : "";
  std::string name = quantity.name, unit = quantity.unit;
  Sum total;
  double components = 0;
  int storeys = 0;
  for (; at != lines_.end() && at->first.class_index == first.class_index &&
         at->first.quantity == first.quantity;
       ++at, ++storeys) {
    const Line& line = at->second;
    table.Add({class_name, name, unit, storeys_.list[line.storey_index], PlainReal(line.components),
               Shown(line.total.Value(), quantity.decimals)});
    total.Add(line.total.Value());
    components += line.components;
    class_name = name = unit = "";
  }
  if (storeys > 1) {
    table.Add({"", "", "", "all", PlainReal(components), Shown(total.Value(), quantity.decimals)});
  }
  return at;
}

void Bill::PrintBuilding(std::ostream& out) const {
  using Side = TextTable::Side;
  TextTable table({{"Whole building"}, {"Unit"}, {"Components", Side::kRight}, {"Total", Side::kRight}});
  std::vector<Sum> totals(quantities_.List().size());
  std::vector<double> components(totals.size());
  for (const auto& [key, line] : lines_) {
    totals[static_cast<std::size_t>(line.quantity)].Add(line.total.Value());
    components[static_cast<std::size_t>(line.quantity)] += line.components;
  }
  for (std::size_t i = 0; i < totals.size(); ++i) {
    const Quantity& quantity = quantities_.List()[i];
    if (components[i] == 0) continue;
    table.Add({quantity.name, quantity.unit, PlainReal(components[i]),
               Shown(totals[i].Value(), quantity.decimals)});
  }
  table.Print(out);
}

void Bill::Print(std::ostream& out) const {
  using Side = TextTable::Side;
  TextTable table(
      {{"Class"}, {"Quantity"}, {"Unit"}, {"Storey"}, {"Components", Side::kRight}, {"Total", Side::kRight}});
  for (auto at = lines_.begin(); at != lines_.end();) {
    const bool begins = at == lines_.begin() || std::prev(at)->second.class_index != at->second.class_index;
    if (begins && at != lines_.begin()) table.AddLine();
    at = PrintQuantity(at, begins, table);
  }
  table.Print(out);
  out << "\n";
  PrintBuilding(out);
}

void Bill::Write(OutputFile& file) const {
  CsvLine row;
  row.Add("class").Add("quantity").Add("unit").Add("storey").Add("components").Add("total");
  file.Write(row.Take());
  for (const auto& [key, line] : lines_) {
    const Quantity& quantity = QuantityOf(line);
    row.Add(classes_.list[line.class_index]).Add(quantity.name).Add(quantity.unit);
    row.Add(storeys_.list[line.storey_index])
        .Add(PlainReal(line.components))
        .Add(PlainReal(line.total.Value()));
    file.Write(row.Take());
  }
}

void Bill::Write(JsonText& json) const {
  json.Key("bill").Open('[');
  for (const auto& [key, line] : lines_) {
    const Quantity& quantity = QuantityOf(line);
    json.Open('{');
    json.Key("class").String(classes_.list[line.class_index]);
    json.Key("quantity").String(quantity.name);
    json.Key("unit").String(quantity.unit);
    json.Key("storey").String(storeys_.list[line.storey_index]);
    json.Key("components").Number(line.components);
    json.Key("total").Number(line.total.Value());
    json.Close('}');
  }
  json.Close(']');
}

}  // namespace lorv::tool
