#include "tools/lorv/takeoff/input/column_names.h"

#include <algorithm>

#include "tools/lorv/text/folded_text.h"

// The titles by which columns of components and rules are known. Models come from several exporters and
// people write rules in two languages, so each column has all titles met so far; the tables hold them folded,
// as letter case never counts.

namespace lorv::tool {
namespace {

using Name = std::string_view;

constexpr Name kClass[] = {"class", "类别", "构件类别", "构件类型"};
constexpr Name kName[] = {"name", "名称", "构件名称"};
constexpr Name kStorey[] = {"storey", "楼层", "story", "floor", "level", "层"};
constexpr Name kType[] = {"type", "类型", "规格"};
constexpr Name kTag[] = {"tag", "标记", "mark"};
constexpr Name kId[] = {"id", "编号", "globalid", "guid"};
constexpr Name kCount[] = {"count", "件数", "个数"};

constexpr KnownColumn kComponents[] = {{kClassOf, kClass}, {kNameOf, kName}, {kStoreyOf, kStorey},
                                       {kTypeOf, kType},   {kTagOf, kTag},   {kIdOf, kId},
                                       {kCountOf, kCount}};

constexpr Name kKind[] = {"kind", "种类"};
constexpr Name kSelector[] = {"class", "类别", "构件类别"};
constexpr Name kQuantity[] = {"name", "名称", "quantity", "工程量", "项目"};
constexpr Name kUnit[] = {"unit", "单位"};
constexpr Name kFormula[] = {"formula", "公式", "计算式"};
constexpr Name kCondition[] = {"condition", "条件"};
constexpr Name kMissing[] = {"missing", "缺值"};
constexpr Name kDecimalPlaces[] = {"decimals", "小数位"};
constexpr Name kFactor[] = {"factor", "系数"};
constexpr Name kCompare[] = {"compare", "对照"};
constexpr Name kGroup[] = {"group", "组"};
constexpr Name kTotal[] = {"total", "合计", "统计"};
constexpr Name kNote[] = {"note", "说明", "remark", "备注"};

constexpr KnownColumn kRules[] = {{kKindOf, kKind},         {kSelectorOf, kSelector},
                                  {kQuantityOf, kQuantity}, {kUnitOf, kUnit},
                                  {kFormulaOf, kFormula},   {kConditionOf, kCondition},
                                  {kMissingOf, kMissing},   {kDecimalsOf, kDecimalPlaces},
                                  {kFactorOf, kFactor},     {kCompareOf, kCompare},
                                  {kGroupOf, kGroup},       {kTotalOf, kTotal},
                                  {kNoteOf, kNote}};

}  // namespace

std::span<const KnownColumn> ComponentColumns() {
  return kComponents;
}

std::span<const KnownColumn> RuleColumns() {
  return kRules;
}

int RoleOf(std::span<const KnownColumn> columns, std::string_view header) {
  const std::string folded = Folded(header);
  for (const KnownColumn& column : columns) {
    if (std::find(column.names.begin(), column.names.end(), folded) != column.names.end()) return column.role;
  }
  return -1;
}

std::string NamesForUser(std::span<const KnownColumn> columns) {
  std::string text;
  for (const KnownColumn& column : columns) {
    if (!text.empty()) text += ", ";
    text += std::string(column.names[0]) + " (" + std::string(column.names[1]) + ")";
  }
  return text;
}

}  // namespace lorv::tool
