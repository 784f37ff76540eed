#pragma once

#include <memory>

namespace CLI {
class FormatterBase;
}

namespace lorv::tool {

// How --help is laid out: the groups of verbs in our order, a verb's own arguments only, columns that stand
// under one another where texts are Chinese, titles in the language that is spoken.
std::shared_ptr<CLI::FormatterBase> HelpLayout();

}  // namespace lorv::tool
