#pragma once

#include "spreadsheet/workbook_file.h"
#include "tools/lorv/takeoff/output/bill.h"

namespace lorv::tool {

// Adds the bill to a workbook as its first sheet: titles, the lines with their subtotals, then the totals of
// the whole building. Lines fold away under the subtotal that sums them up. Totals are numbers as they are
// shown, so that lines add up.
void AddBillSheet(const Bill& bill, WorkbookFile& book);

}  // namespace lorv::tool
