#pragma once

// The fixed limits of failure reports.
namespace lorv {

// Units of the message of a report, its terminator included: a longer text is cut at one less.
constexpr int kFailureMessageRoom = 260;

// Units of a module's path, its terminator included.
constexpr int kModulePathRoom = 260;

}  // namespace lorv
