#pragma once

#include <iosfwd>

#include "tools/lorv/takeoff/output/bill.h"

namespace lorv::tool {

// For people: the groups with their subtotals, then the totals of the whole building.
void PrintBill(const Bill& bill, std::ostream& out);

// The columns of the printed bill, as people read them: the first key, quantity, unit, the other keys,
// components, total. Of a row the cells under them.
std::vector<std::string> BillTitles(const Bill& bill);
std::vector<std::string> BillCells(const Bill& bill, const BillRow& row);

// For programs: the keys, quantity, unit, components, total with all its digits, the total as it is shown,
// and what kind of row it is (line, subtotal, total).
void WriteBill(const Bill& bill, OutputFile& file);
void WriteBill(const Bill& bill, JsonText& json);

}  // namespace lorv::tool
