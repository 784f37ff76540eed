#pragma once

#include <optional>
#include <string_view>

namespace lorv::tool {

// Where a storey lies in its building, from the lowest: foundations, basements (B2, -1, 地下1层), numbered
// storeys (1F, 2层, 第三层, Level 3, 首层), roofs (屋面, RF). Nothing for a name that gives no height.
//
//   StoreyRank("B1") < StoreyRank("首层") < StoreyRank("12F") < StoreyRank("屋面")
std::optional<double> StoreyRank(std::string_view name);

}  // namespace lorv::tool
