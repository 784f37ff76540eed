#pragma once

#include "tools/lorv/verb.h"

// The declaring functions of the verbs for archives and squeezed files.
namespace lorv::tool {

Work DeclarePack(CLI::App& app);
Work DeclareUnpack(CLI::App& app);
Work DeclareList(CLI::App& app);
Work DeclareTest(CLI::App& app);
Work DeclareSqueeze(CLI::App& app);
Work DeclareExpand(CLI::App& app);

}  // namespace lorv::tool
