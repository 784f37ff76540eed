#pragma once

#include "image/decode/jpeg/jpeg_picture.h"

// Steps of the decoder on eight numbers at a time, where the processor can. Each gives exactly what the plain
// step gives; what it cannot do it leaves to that one.
namespace lorv::jpeg {

// False, and nothing is written, for numbers that do not fit in 16 bits on the way: only damaged and hostile
// pictures have them.
bool TransformByVectors(const Block& block, const Quantities& quantities, unsigned char* out,
                        std::size_t stride);

// Pixels of brightness and two differences from the left on. Gives how many were put; the rest, fewer than
// eight of them unless there are no vectors, is left.
int PutBrightnessByVectors(const unsigned char* brightness, const unsigned char* blueness,
                           const unsigned char* redness, std::uint32_t* to, int count);

}  // namespace lorv::jpeg
