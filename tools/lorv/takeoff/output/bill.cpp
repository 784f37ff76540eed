#include "tools/lorv/takeoff/output/bill.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tools/lorv/command/verb.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"
#include "tools/lorv/takeoff/output/line_rounding.h"
#include "tools/lorv/takeoff/output/storey_order.h"

// Adds the quantities of components up by their keys and makes the lines of the bill of them. Groups are
// found by numbers instead of texts, as this is done for every component; order, subtotals and rounding wait
// until the bill is asked for.

namespace lorv::tool {

std::size_t Bill::Names::IndexOf(std::string_view name) {
  const auto known = index.find(name);
  if (known != index.end()) return known->second;
  index.emplace(name, list.size());
  list.emplace_back(name);
  return list.size() - 1;
}

std::size_t Bill::GroupOf(const std::vector<std::string_view>& keys) {
  std::size_t chain = 0;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    // Two numbers of 32 bits: there are fewer names of a key, and fewer chains, than that.
    const std::uint64_t next = static_cast<std::uint64_t>(chain) << 32 | names_[i].IndexOf(keys[i]);
    // Numbers are given once over all keys, so none is that of keys at another place.
    chain = chained_.try_emplace(next, chained_.size() + 1).first->second;
  }
  const auto [known, fresh] = by_chain_.try_emplace(chain, groups_.size());
  if (!fresh) return known->second;
  std::vector<std::size_t> indexes;
  for (std::size_t i = 0; i < keys.size(); ++i) indexes.push_back(names_[i].IndexOf(keys[i]));
  groups_.push_back({std::move(indexes), std::vector<Line>(quantities_.List().size())});
  return known->second;
}

void Bill::Add(std::size_t group, std::size_t quantity, double value, double count) {
  // A row that stands for no component has no least value either.
  if (count == 0) return;
  Line& line = groups_[group].lines[quantity];
  // Wrong columns, such as the id of each component, would make a bill as long as the model.
  if (line.components == 0 && ++used_lines_ > kMaxBillLines) {
    throw BadInput(
        Say("more than {} totals: are the columns of the bill right?", {std::to_string(kMaxBillLines)}));
  }
  line.least = line.components == 0 ? value : std::min(line.least, value);
  line.most = line.components == 0 ? value : std::max(line.most, value);
  // The value is that of one component, its extremes too.
  line.components += count;
  line.total.Add(value * count);
}

// Storeys whose names give no height stand behind those that do.
std::vector<double> Bill::Ranks(std::size_t key) const {
  // Reported of names, not of groups: a name has one place in the whole bill.
  std::vector<double> ranks;
  for (const std::string& name : names_[key].list) {
    const std::optional<double> height = keys_[key].is_storey ? StoreyRank(name) : std::nullopt;
    ranks.push_back(height.value_or(std::numeric_limits<double>::max()));
  }
  return ranks;
}

Bill::Groups Bill::InOrder() const {
  std::vector<std::vector<double>> ranks;
  for (std::size_t key = 0; key < keys_.size(); ++key) ranks.push_back(Ranks(key));
  Groups order;
  for (const Group& group : groups_) order.push_back(&group);
  // Names without a rank, and all keys but storeys, keep the order in which they came, which is the model's.
  std::stable_sort(order.begin(), order.end(), [&](const Group* a, const Group* b) {
    for (std::size_t key = 0; key < keys_.size(); ++key) {
      const std::size_t left = a->keys[key], right = b->keys[key];
      if (left == right) continue;
      return ranks[key][left] == ranks[key][right] ? left < right : ranks[key][left] < ranks[key][right];
    }
    return false;
  });
  return order;
}

// Groups are in order already, so equal keys stand together.
std::vector<Bill::Groups> Bill::PartedBy(const Groups& groups, std::size_t key) const {
  std::vector<Groups> parts;
  for (const Group* group : groups) {
    if (parts.empty() || parts.back().back()->keys[key] != group->keys[key]) parts.emplace_back();
    parts.back().push_back(group);
  }
  return parts;
}

Bill::Line Bill::Joined(const Groups& groups, std::size_t quantity) {
  Line joined;
  for (const Group* group : groups) {
    const Line& line = group->lines[quantity];
    if (line.components == 0) continue;
    joined.least = joined.components == 0 ? line.least : std::min(joined.least, line.least);
    joined.most = joined.components == 0 ? line.most : std::max(joined.most, line.most);
    joined.components += line.components;
    // Totals of groups are sums of their own: what is left of their compensation is below what is shown.
    joined.total.Add(line.total.Value());
  }
  return joined;
}

// What cannot be shared out among its parts is rounded alone.
bool Bill::IsAdditive(std::size_t quantity) const {
  const Quantity& of = quantities_.List()[quantity];
  return !of.is_ratio && of.HowTotalled() == Totalling::kSum;
}

std::optional<double> Bill::TotalOf(const Groups& groups, std::size_t quantity) const {
  const Quantity& of = quantities_.List()[quantity];
  if (of.is_ratio) {
    std::vector<std::optional<double>> totals;
    // Of the parts' totals and not of their ratios, so a subtotal's ratio is that of what it sums up.
    for (std::size_t i = 0; i < quantities_.List().size(); ++i) {
      totals.push_back(quantities_.List()[i].is_ratio ? std::nullopt : TotalOf(groups, i));
    }
    return quantities_.Ratio(quantity, totals);
  }
  const Line line = Joined(groups, quantity);
  if (line.components == 0) return std::nullopt;
  switch (of.HowTotalled()) {
    case Totalling::kAverage:
      return line.total.Value() / line.components;
    case Totalling::kLeast:
      return line.least;
    case Totalling::kMost:
      return line.most;
    default:
      return line.total.Value();
  }
}

bool Bill::Has(const Groups& groups, std::size_t quantity) const {
  return TotalOf(groups, quantity).has_value();
}

BillRow Bill::RowOf(const Groups& groups, std::size_t quantity, std::size_t depth,
                    const std::optional<long long>& steps) const {
  const Quantity& of = quantities_.List()[quantity];
  BillRow row;
  row.depth = depth;
  row.quantity = quantity;
  for (std::size_t key = 0; key < keys_.size(); ++key) {
    row.keys.push_back(key < depth ? names_[key].list[groups.front()->keys[key]] : std::string());
  }
  row.components = of.is_ratio ? 0 : Joined(groups, quantity).components;
  row.total = TotalOf(groups, quantity).value_or(0);
  row.shown = steps ? ShownSteps(*steps, of.Decimals()) : Shown(row.total, of.Decimals());
  return row;
}

// How the parts of a sum are shown so that they make up what is shown of it.
std::vector<std::optional<long long>> Bill::Steps(const std::vector<Groups>& parts, std::size_t quantity,
                                                  const std::optional<long long>& total) const {
  std::vector<std::optional<long long>> steps(parts.size());
  if (!total || !IsAdditive(quantity)) return steps;
  std::vector<double> values;
  // Storeys first take their shares of the class, then what is below them of theirs.
  values.reserve(parts.size());
  for (const Groups& part : parts) values.push_back(TotalOf(part, quantity).value_or(0));
  const auto shares = SharedOut(values, quantities_.List()[quantity].Decimals(), *total);
  if (!shares) return steps;
  for (std::size_t i = 0; i < parts.size(); ++i) steps[i] = (*shares)[i];
  return steps;
}

void Bill::AddRows(const Groups& groups, std::size_t depth, std::size_t quantity,
                   const std::optional<long long>& steps, std::vector<BillRow>& rows) const {
  if (depth == keys_.size()) {
    rows.push_back(RowOf(groups, quantity, depth, steps));
    return;
  }
  std::vector<Groups> parts = PartedBy(groups, depth);
  // A storey without this quantity has no line, and takes no share.
  std::erase_if(parts, [&](const Groups& part) { return !Has(part, quantity); });
  const auto shares = Steps(parts, quantity, steps);
  for (std::size_t i = 0; i < parts.size(); ++i) AddRows(parts[i], depth + 1, quantity, shares[i], rows);
  // The only part is its own subtotal.
  if (parts.size() < 2) return;
  rows.push_back(RowOf(groups, quantity, depth, steps));
  rows.back().kind = BillRow::kSubtotal;
}

std::vector<BillRow> Bill::Rows() const {
  const Groups all = InOrder();
  const std::size_t count = quantities_.List().size();
  const std::vector<Groups> parts = all.empty() ? std::vector<Groups>() : PartedBy(all, 0);
  std::vector<BillRow> rows, totals;
  std::vector<std::vector<std::optional<long long>>> shares(count);
  for (std::size_t quantity = 0; quantity < count; ++quantity) {
    if (!Has(all, quantity)) continue;
    const double total = TotalOf(all, quantity).value_or(0);
    std::optional<long long> steps;
    // From the building down: its total is rounded first, and all parts have to make it up.
    if (IsAdditive(quantity)) steps = InSteps(total, quantities_.List()[quantity].Decimals());
    shares[quantity] = Steps(parts, quantity, steps);
    totals.push_back(RowOf(all, quantity, 0, steps));
    totals.back().kind = BillRow::kTotal;
  }
  for (std::size_t part = 0; part < parts.size(); ++part) {
    for (std::size_t quantity = 0; quantity < count; ++quantity) {
      if (Has(parts[part], quantity)) AddRows(parts[part], 1, quantity, shares[quantity][part], rows);
    }
  }
  rows.insert(rows.end(), totals.begin(), totals.end());
  return rows;
}

bool Bill::IsAdjusted(const std::vector<BillRow>& rows, const Quantities& quantities) {
  return std::any_of(rows.begin(), rows.end(), [&](const BillRow& row) {
    return row.shown != Shown(row.total, quantities.List()[row.quantity].Decimals());
  });
}

}  // namespace lorv::tool
