#pragma once

#include <iosfwd>

#include "tools/lorv/takeoff/output/bill.h"

namespace lorv::tool {

// For people: the groups with their subtotals, then the totals of the whole building.
void PrintBill(const Bill& bill, std::ostream& out);

// For programs: the keys, quantity, unit, components, total with all its digits, the total as it is shown,
// and what kind of row it is (line, subtotal, total).
void WriteBill(const Bill& bill, OutputFile& file);
void WriteBill(const Bill& bill, JsonText& json);

}  // namespace lorv::tool
