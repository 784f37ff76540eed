#pragma once

// The formula engine: include this for all of it.

#include "TEXPRESSCAL/calculate_rows.h"  // lorv::CalculateRows: one formula over many rows of values
#include "TEXPRESSCAL/calculator.h"      // CAdExpCalculate: formulas with named values
#include "TEXPRESSCAL/diagnose.h"        // lorv::DiagnoseFormula: what is wrong with a formula, and where
#include "TEXPRESSCAL/exact_formula.h"   // lorv::ExactFormula: values with all their digits
#include "TEXPRESSCAL/expression.h"      // CExpression: parse and work one formula; ReplaceStr
#include "TEXPRESSCAL/formula_words.h"   // lorv::NamesOf: the names of a formula, in any language
#include "TEXPRESSCAL/function_table.h"  // CDtaFunction: the built-in functions
#include "TEXPRESSCAL/keyword_set.h"     // TDefsetVars: names that a formula may use
#include "TEXPRESSCAL/map_value.h"       // CMapValue, CTwoStrValue and their text forms
#include "TEXPRESSCAL/optimize_expression.h"  // COptimizeExpression: the suite's simplifier
#include "TEXPRESSCAL/simplify_safely.h"      // lorv::SimplifySafely: shorter, with the same value
#include "TEXPRESSCAL/text_rewriting.h"       // names replaced by values and formulas
