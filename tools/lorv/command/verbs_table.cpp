#include "tools/lorv/command/verbs_table.h"

// The verbs in the order of the help. Each stands in a file of its own, which only this table knows of; so a
// new one is a file and a line here.

namespace lorv::tool {

// Formulas
Work DeclareCalc(VerbSyntax& syntax);
Work DeclareCheck(VerbSyntax& syntax);
Work DeclareVars(VerbSyntax& syntax);
Work DeclareFunctions(VerbSyntax& syntax);
Work DeclareRewrite(VerbSyntax& syntax);
Work DeclareSimplify(VerbSyntax& syntax);
Work DeclareClean(VerbSyntax& syntax);

// Take-off
Work DeclareWork(VerbSyntax& syntax);

// Spreadsheets
Work DeclareSheet(VerbSyntax& syntax);

// Images
Work DeclareImage(VerbSyntax& syntax);

// Text and names
Work DeclareMatch(VerbSyntax& syntax);
Work DeclareName(VerbSyntax& syntax);
Work DeclarePrompts(VerbSyntax& syntax);
Work DeclareLog(VerbSyntax& syntax);

// Archives and files
Work DeclarePack(VerbSyntax& syntax);
Work DeclareUnpack(VerbSyntax& syntax);
Work DeclareList(VerbSyntax& syntax);
Work DeclareTest(VerbSyntax& syntax);
Work DeclareSqueeze(VerbSyntax& syntax);
Work DeclareExpand(VerbSyntax& syntax);

// The tool itself
Work DeclareCompletion(VerbSyntax& syntax);
Work DeclareManual(VerbSyntax& syntax);

const std::vector<VerbGroup>& AllVerbs() {
  static const std::vector<VerbGroup> groups = {
      {"Formulas",
       {
           {"calc", "work one formula", DeclareCalc, true},
           {"check", "say whether a formula can be calculated", DeclareCheck, true},
           {"vars", "list the names in a formula", DeclareVars, true},
           {"functions", "list the functions that a formula may call", DeclareFunctions},
           {"rewrite", "replace names in a formula, cut annotations off", DeclareRewrite, true},
           {"simplify", "shorten a formula", DeclareSimplify, true},
           {"clean", "cut dead terms out of a formula that was built", DeclareClean, true},
       }},

      {"Take-off",
       {
           {"work", "work the quantities of a table of components", DeclareWork},
       }},

      {"Spreadsheets",
       {
           {"sheet", "list a workbook, its sheets to tables and tables to it", DeclareSheet},
       }},

      {"Images",
       {
           {"image", "say what an image holds, write a frame of it as PNG", DeclareImage},
       }},

      {"Text and names",
       {
           {"match", "rank stored texts against what was typed", DeclareMatch},
           {"name", "check a name, clean it, propose a free one", DeclareName},
           {"prompts", "the suite's vocabulary in Chinese and English", DeclarePrompts},
           {"log", "write messages to a text file of the suite", DeclareLog},
       }},

      {"Archives and files",
       {
           {"pack", "files and folders into a ZIP archive", DeclarePack},
           {"unpack", "a ZIP archive into files", DeclareUnpack},
           {"list", "what is in a ZIP archive", DeclareList},
           {"test", "whether a ZIP archive is whole", DeclareTest},
           {"squeeze", "a file into the LZARI form", DeclareSqueeze},
           {"expand", "a file out of the LZARI form", DeclareExpand},
       }},

      {"The tool itself",
       {
           {"completion", "a script that completes command lines in bash, zsh or fish", DeclareCompletion},
           {"manual", "the manual page", DeclareManual},
       }},
  };
  return groups;
}

}  // namespace lorv::tool
