#pragma once

#include <span>
#include <string>
#include <string_view>

namespace lorv::tool {

// A column that the tool knows by name, with all its names in small letters; the first English and the first
// Chinese one are those of the manual.
struct KnownColumn {
  int role;
  std::span<const std::string_view> names;
};

enum ComponentRole { kClassOf, kNameOf, kStoreyOf, kTypeOf, kTagOf, kIdOf, kCountOf, kComponentRoles };
enum RuleRole {
  kKindOf,
  kSelectorOf,
  kQuantityOf,
  kUnitOf,
  kFormulaOf,
  kConditionOf,
  kMissingOf,
  kDecimalsOf,
  kFactorOf,
  kCompareOf,
  kGroupOf,
  kTotalOf,
  kNoteOf,
  kRuleRoles
};

std::span<const KnownColumn> ComponentColumns();
std::span<const KnownColumn> RuleColumns();

// The role of a header, -1 if none of `columns` has that name.
int RoleOf(std::span<const KnownColumn> columns, std::string_view header);

// "class (类别), name (名称), ..."
std::string NamesForUser(std::span<const KnownColumn> columns);

}  // namespace lorv::tool
