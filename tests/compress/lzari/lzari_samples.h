#pragma once

#include <string>
#include <vector>

#include "compress/AdRar.h"

namespace lorv::test {

// One input and what is said of it when a check fails.
struct Sample {
  std::string name;
  std::string bytes;
};

// Texts, tables, runs, noise and the lengths where the window, the longest match or a byte begins.
std::vector<Sample> LzariSamples();

// The real project files among the data; none where there is no data.
std::vector<Sample> RealSamples();

// Bytes that look like nothing, the same for each seed.
std::string Noise(std::size_t length, unsigned seed, int alphabet = 256);

// The buffer forms on texts, silenced: the codec prints its progress on standard output.
std::string Packed(const std::string& plain);
std::string Unpacked(const std::string& stream, bool exact);
// True if exact decoding ends in the int 1.
bool IsRefused(const std::string& stream);

}  // namespace lorv::test
