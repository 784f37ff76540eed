#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/takeoff/evaluate/exact_sum.h"
#include "tools/lorv/takeoff/evaluate/quantities.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {

// By what a bill parts its totals: a column of the components.
struct BillKey {
  std::string title;       // as the files have it
  bool is_storey = false;  // goes from the foundation up
};

// A line of a bill.
struct BillRow {
  enum Kind {
    kLine,      // of one group
    kSubtotal,  // of the groups above it that share its first keys
    kTotal      // of the whole building
  };
  Kind kind = kLine;
  std::size_t depth = 0;          // how many keys it has; those of a subtotal are fewer
  std::vector<std::string> keys;  // as many as the bill has
  std::size_t quantity = 0;
  double components = 0;
  double total = 0;
  std::string shown;  // rounded so that lines add up
};

// The totals of a take-off by the keys of its groups, class and storey for example, and by quantity. What is
// given by keys stands in the order in which it came, storeys from below.
class Bill {
 public:
  Bill(const Quantities& quantities, std::vector<BillKey> keys)
      : quantities_(quantities), keys_(std::move(keys)), names_(keys_.size()) {}

  // The group of a component with these keys, for Add. Throws BadInput beyond kMaxBillLines totals.
  std::size_t GroupOf(const std::vector<std::string_view>& keys);
  // Adds `count` components with `value` each.
  void Add(std::size_t group, std::size_t quantity, double value, double count);

  // All lines in their order, subtotals behind what they sum up, the totals of the building last.
  std::vector<BillRow> Rows() const;
  // Whether any line is shown otherwise than it would be rounded alone.
  static bool IsAdjusted(const std::vector<BillRow>& rows, const Quantities& quantities);

  const Quantities& OfQuantities() const { return quantities_; }
  const std::vector<BillKey>& Keys() const { return keys_; }

 private:
  struct Line {
    double components = 0;
    Sum total;
    double least = 0;
    double most = 0;
  };
  struct Group {
    std::vector<std::size_t> keys;
    std::vector<Line> lines;  // by quantity
  };
  // Lets a name be looked up without a string made of it.
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };
  struct Names {
    std::vector<std::string> list;
    std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>> index;
    std::size_t IndexOf(std::string_view name);
  };
  using Groups = std::vector<const Group*>;

  Groups InOrder() const;
  std::vector<double> Ranks(std::size_t key) const;
  std::vector<Groups> PartedBy(const Groups& groups, std::size_t key) const;
  static Line Joined(const Groups& groups, std::size_t quantity);
  bool Has(const Groups& groups, std::size_t quantity) const;
  std::optional<double> TotalOf(const Groups& groups, std::size_t quantity) const;
  bool IsAdditive(std::size_t quantity) const;
  std::string ShownOf(const Groups& groups, std::size_t quantity,
                      const std::optional<long long>& steps) const;
  std::vector<std::optional<long long>> Steps(const std::vector<Groups>& parts, std::size_t quantity,
                                              const std::optional<long long>& total) const;
  BillRow RowOf(const Groups& groups, std::size_t quantity, std::size_t depth,
                const std::optional<long long>& steps) const;
  void AddRows(const Groups& groups, std::size_t depth, std::size_t quantity,
               const std::optional<long long>& steps, std::vector<BillRow>& rows) const;

  const Quantities& quantities_;
  std::vector<BillKey> keys_;
  std::vector<Names> names_;
  std::vector<Group> groups_;
  // From the number of what the keys before make up, and the next key's, to theirs together.
  std::unordered_map<std::uint64_t, std::size_t> chained_;
  std::unordered_map<std::size_t, std::size_t> by_chain_;
  std::size_t used_lines_ = 0;
};

}  // namespace lorv::tool
