#pragma once

#include <map>
#include <utility>
#include <vector>

#include "tests/reference/reference_text.h"

// The operations that rewrite formula texts, on whole texts instead of buffers.
namespace lorv::reference {

using ValueMap = std::map<Text, double, FoldedLess>;
using TextMap = std::map<Text, Text, FoldedLess>;
using Pair = std::pair<Text, Text>;

int ReplExprWithValue(Text& text, const Text& name, const Text& value, bool all);

// What a value puts into a formula.
Text ValueText(double value);
void ReplExprWithOneValue(Text& text, const Text& name, double value);

// Keys of the table are cut to 20 units by the caller.
bool ReplaceExprWithExpr(Text& text, const TextMap& table, bool bracket, bool multiply);
bool ReplaceExprWithExpr(Text& text, const std::vector<Pair>& pairs, bool bracket, bool multiply);
bool ReplaceExprWithExpr(Text& text, const Text& pairs, bool bracket, bool multiply);

bool SplitMidBracketKey(Text& text, std::vector<Text>& names, std::vector<Pair>& found);

// Pieces between separators; an empty last piece is none.
std::vector<Text> Pieces(const Text& text, TCHAR separator);

Text MapValueToStr(const ValueMap& map);
int StrValueToMap(const Text& text, ValueMap& map);

}  // namespace lorv::reference
