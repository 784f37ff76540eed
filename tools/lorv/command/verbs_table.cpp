#include "tools/lorv/command/verbs_table.h"

namespace lorv::tool {

// Formulas
Work DeclareCalc(CLI::App& app);
Work DeclareCheck(CLI::App& app);
Work DeclareVars(CLI::App& app);
Work DeclareFunctions(CLI::App& app);
Work DeclareRewrite(CLI::App& app);
Work DeclareSimplify(CLI::App& app);
Work DeclareClean(CLI::App& app);

// Take-off
Work DeclareWork(CLI::App& app);

// Spreadsheets
Work DeclareSheet(CLI::App& app);

// Images
Work DeclareImage(CLI::App& app);

// Text and names
Work DeclareMatch(CLI::App& app);
Work DeclareName(CLI::App& app);
Work DeclarePrompts(CLI::App& app);
Work DeclareLog(CLI::App& app);

// Archives and files
Work DeclarePack(CLI::App& app);
Work DeclareUnpack(CLI::App& app);
Work DeclareList(CLI::App& app);
Work DeclareTest(CLI::App& app);
Work DeclareSqueeze(CLI::App& app);
Work DeclareExpand(CLI::App& app);

// The tool itself
Work DeclareCompletion(CLI::App& app);
Work DeclareManual(CLI::App& app);

const std::vector<VerbGroup>& AllVerbs() {
  static const std::vector<VerbGroup> groups = {
      {"Formulas",
       {
           {"calc", "work one formula", DeclareCalc, true},
           {"check", "tell whether a formula can be worked", DeclareCheck, true},
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
           {"image", "tell what an image holds, write a frame of it as PNG", DeclareImage},
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
