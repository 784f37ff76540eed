#pragma once

#include <string>
#include <vector>

#include "tests/conformance/behaviour_driver.h"

// What a dialog hears of an edit and of a Return press, event by event, on every kind of desktop.
namespace lorv_test {

std::vector<std::string> PlayBridge(BehaviourDriver& driver);
std::vector<std::string> KeptBridgeTrace();

}  // namespace lorv_test
