#pragma once

#include <optional>

#include "framework/values/variant.h"
#include "spreadsheet/automation/direct_sheet.h"
#include "spreadsheet/servers/engine/book/book.h"

// How a cell of the engine takes a value and gives it.
namespace lorv::engine {

// Day 0 of the system that counts from 1904, in the other one.
constexpr double kDaysTo1904 = 1462;

// The format that a date takes in a cell without one.
constexpr LPCTSTR kPlainDate = _T("yyyy/m/d");

// What every server holds to, whatever keeps its cells:
// A value that is no text, truth value or error as a sheet's number; a date by the workbook's first day.
// Raises the engine's failure for what is not finite, COleException for a value of another kind.
double NumberOf(const VARIANT& value, bool dates_of_1904);
// A sheet's number under the format of a date as a date from 1899-12-30 on; none outside the calendar, where
// it stays a number.
std::optional<double> DateOf(double number, bool dates_of_1904);
// Raises the engine's failure for a text that no cell has room for.
void CheckText(TextView text);

// Texts stay texts, whatever they look like. Dates are counted by the workbook's own system.
// Raises the engine's failure for a text that is too long and a number that is none; COleException for a
//   value of another kind.
void PutCellValue(Book& book, Sheet& sheet, long row, long column, const VARIANT& value);

// What a cell holds: a number under the format of a date is a date. The text is the pool's.
SheetCell LookAt(const Book& book, const Cell& cell);
// The same as a value; money is a number like any other, so that nothing of it is lost. An empty value for a
// cell without one.
_variant_t CellValue(const Book& book, const Sheet& sheet, long row, long column);

const CellStyle& StyleOf(const Book& book, const Sheet& sheet, long row, long column);
void PutStyle(Book& book, Sheet& sheet, long row, long column, const CellStyle& style);

}  // namespace lorv::engine
