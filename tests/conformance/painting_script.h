#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/conformance/behaviour_driver.h"

// How windows are painted, alike on all kinds of desktop: what is out of date and when it is asked for,
// painting inside painting, handlers that throw, scrolling, copies, clips.
namespace lorv_test {

// Plays the script; the trace, a line without blanks a step, then a line an event.
std::vector<std::string> PlayPainting(BehaviourDriver& driver);

// Plays it and fails unless the trace is the kept one, from which no kind of desktop differs.
void ExpectKeptPainting(BehaviourDriver& driver);

}  // namespace lorv_test
