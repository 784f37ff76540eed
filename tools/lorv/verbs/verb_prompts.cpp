#include <algorithm>
#include <memory>
#include <ostream>

#include "framework/text/cstring.h"
#include "prompts/prompts.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/json_text.h"

// The verb `prompts`: the suite's vocabulary in both languages, table by table. Programmers look texts up
// here, and translators take whole tables.

namespace lorv::tool {
namespace {

// A table by a name for the command line, over the library's lookup.
struct NamedTable {
  const char* name;
  const char* function;
  int rows;
  LPCTSTR (*at)(int position);
};

// Each lookup takes an enumeration of its own, which counts from 0 as the rows of a table do.
template <class Key, LPCTSTR (*lookup)(Key)>
LPCTSTR At(int position) {
  return lookup(static_cast<Key>(position));
}

constexpr NamedTable kTables[] = {
    {"steel", "CStInf::GetErrInf", 91, At<CStInf::ErrPompt, CStInf::GetErrInf>},
    {"classes", "CObjClassInf::GetInf", 112, At<CObjClassInf::ErrPompt, CObjClassInf::GetInf>},
    {"words", "PublicInf::GetPubInf", 13, At<PublicInf::PublicPropt, PublicInf::GetPubInf>},
    {"failures", "PublicInf::GetErrInf", 5, At<PublicInf::ErrorPropt, PublicInf::GetErrInf>},
    {"shapes", "PublicInf::GetShapeInf", 6, At<PublicInf::Shape, PublicInf::GetShapeInf>},
    {"points", "PublicInf::GetPtInf", 9, At<PublicInf::PointPrompt, PublicInf::GetPtInf>},
    {"drawing", "TCompDrawInf::GetInf", 34, At<TCompDrawInf::DrawInformation, TCompDrawInf::GetInf>},
    {"switches", "SwicthInfo::GetSwitchInf", 10, At<SwicthInfo::ShowSwitch, SwicthInfo::GetSwitchInf>},
};

struct PromptArguments {
  std::string table;
  std::string item;
  bool english = false;
  bool json = false;
};

constexpr const char* kHelp =
    "Without TABLE: lists the tables. With TABLE: its rows, each with its number, its Chinese and its "
    "English text,\n"
    "tabs between. With ITEM, a row's number or its Chinese text: that item in Chinese, with --english in "
    "English.\n"
    "\n"
    "Examples:\n"
    "  lorv prompts\n"
    "  lorv prompts shapes\n"
    "  lorv prompts classes 墙 --english       Wall\n"
    "  lorv prompts classes 106               砼结构\n"
    "\n"
    "Line ends and tabs inside a text are printed as \\n and \\t. Exit code 1: the table has no such text.";

// One text on one line.
std::string OneLine(LPCTSTR text) {
  CString line(text);
  line.Replace(_T("\n"), _T("\\n"));
  line.Replace(_T("\t"), _T("\\t"));
  return line.ToUtf8();
}

std::string TextAt(const NamedTable& table, int row, LanguageType language) {
  // The language is one for the whole library: it goes back to what programs find at their start.
  SetLanguageType(language);
  std::string text = OneLine(table.at(row));
  SetLanguageType(LANGUAGE_CHINESE);
  return text;
}

int ListRowsAsJson(const NamedTable& table, Console& console) {
  JsonText json;
  json.Open('[');
  for (int row = 0; row < table.rows; ++row) {
    json.Open('{');
    json.Key("row").Number(static_cast<long long>(row));
    json.Key("chinese").String(TextAt(table, row, LANGUAGE_CHINESE));
    json.Key("english").String(TextAt(table, row, LANGUAGE_ENGLISH));
    json.Close('}');
  }
  json.Close(']');
  console.out << json.Text();
  return kFine;
}

int ListTablesAsJson(Console& console) {
  JsonText json;
  json.Open('[');
  for (const NamedTable& table : kTables) {
    json.Open('{');
    json.Key("table").String(table.name);
    json.Key("rows").Number(static_cast<long long>(table.rows));
    json.Key("function").String(table.function);
    json.Close('}');
  }
  json.Close(']');
  console.out << json.Text();
  return kFine;
}

int ListRows(const NamedTable& table, Console& console) {
  for (int row = 0; row < table.rows; ++row) {
    console.out << row << "\t" << TextAt(table, row, LANGUAGE_CHINESE) << "\t"
                << TextAt(table, row, LANGUAGE_ENGLISH) << "\n";
  }
  return kFine;
}

int ListTables(Console& console) {
  for (const NamedTable& table : kTables) {
    console.out << table.name << "\t" << table.rows << "\t" << table.function << "\n";
  }
  return kFine;
}

// The first row that has a text, as the library finds it; -1 for none.
int RowOf(const NamedTable& table, const std::string& chinese) {
  for (int row = 0; row < table.rows; ++row) {
    if (TextAt(table, row, LANGUAGE_CHINESE) == chinese) return row;
  }
  return -1;
}

int LookUp(const NamedTable& table, const PromptArguments& arguments, Console& console) {
  const std::string& item = arguments.item;
  int row = -1;
  // Digits alone are the number of a row, even where a text reads so.
  if (std::all_of(item.begin(), item.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    // Six digits are more than any table has rows; still more of them may be no int.
    row = item.size() < 6 ? std::stoi(item) : table.rows;
    if (row >= table.rows) {
      throw BadInput(Say("the table has the rows 0 to {}, not {}", {std::to_string(table.rows - 1), item}));
    }
  } else {
    row = RowOf(table, item);
  }
  if (row < 0) {
    console.err << "lorv: " << Say("the table has no \"{}\"", {item}) << "\n";
    return kResultFailed;
  }
  const std::string text = TextAt(table, row, arguments.english ? LANGUAGE_ENGLISH : LANGUAGE_CHINESE);
  if (!arguments.json) {
    console.out << text << "\n";
    return kFine;
  }
  JsonText json;
  json.Open('{');
  json.Key("row").Number(static_cast<long long>(row));
  json.Key("text").String(text);
  json.Close('}');
  console.out << json.Text();
  return kFine;
}

int Prompts(const PromptArguments& arguments, Console& console) {
  if (arguments.table.empty()) return arguments.json ? ListTablesAsJson(console) : ListTables(console);
  const NamedTable* table =
      std::find_if(std::begin(kTables), std::end(kTables),
                   [&](const NamedTable& named) { return arguments.table == named.name; });
  if (table == std::end(kTables)) {
    throw BadInput(Say("there is no table \"{}\"; `lorv prompts` lists them", {arguments.table}));
  }
  if (!arguments.item.empty()) return LookUp(*table, arguments, console);
  return arguments.json ? ListRowsAsJson(*table, console) : ListRows(*table, console);
}

}  // namespace

Work DeclarePrompts(VerbSyntax& syntax) {
  auto arguments = std::make_shared<PromptArguments>();
  syntax.Value("TABLE", arguments->table, "which table");
  syntax.Value("ITEM", arguments->item, "a row's number, or its Chinese text");
  syntax.Flag("--english", arguments->english, "the item in English");
  syntax.Flag("-j,--json", arguments->json, "print it as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return Prompts(*arguments, console); };
}

}  // namespace lorv::tool
