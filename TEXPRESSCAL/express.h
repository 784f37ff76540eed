#pragma once

// The formula engine: include this for all of it.

#include "TEXPRESSCAL/calculator.h"      // CAdExpCalculate: formulas with named values
#include "TEXPRESSCAL/diagnose.h"        // what is wrong with a formula, and where
#include "TEXPRESSCAL/expression.h"      // CExpression: parse and work one formula; ReplaceStr
#include "TEXPRESSCAL/function_table.h"  // CDtaFunction: the built-in functions
#include "TEXPRESSCAL/keyword_set.h"     // TDefsetVars: names that a formula may use
#include "TEXPRESSCAL/map_value.h"       // CMapValue, CTwoStrValue and their text forms
#include "TEXPRESSCAL/text_rewriting.h"  // names replaced by values and formulas
