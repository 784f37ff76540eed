#include "image/decode/piece_inflater.h"

#include <zlib.h>

#include <algorithm>

namespace lorv {

struct PieceInflater::State {
  z_stream stream = {};
  std::size_t size = 0;
  std::size_t done = 0;
  bool ready = false;
};

PieceInflater::PieceInflater(std::size_t size) : state_(new State) {
  state_->size = size;
  state_->ready = inflateInit(&state_->stream) == Z_OK;
}

PieceInflater::~PieceInflater() {
  inflateEnd(&state_->stream);
  delete state_;
}

bool PieceInflater::Add(std::string_view piece) {
  constexpr std::size_t kGrowth = std::size_t{1} << 20;
  State& state = *state_;
  std::string input(piece);
  state.stream.next_in = reinterpret_cast<Bytef*>(input.data());
  state.stream.avail_in = static_cast<uInt>(input.size());
  // Memory grows with what really comes, not with what is claimed.
  while (state.ready && state.stream.avail_in > 0 && state.done < state.size) {
    if (bytes_.size() == state.done) bytes_.resize(std::min(state.size, std::max(2 * state.done, kGrowth)));
    state.stream.next_out = reinterpret_cast<Bytef*>(bytes_.data() + state.done);
    state.stream.avail_out = static_cast<uInt>(bytes_.size() - state.done);
    const int result = inflate(&state.stream, Z_NO_FLUSH);
    state.done = bytes_.size() - state.stream.avail_out;
    if (result == Z_STREAM_END) break;
    if (result != Z_OK) return false;
  }
  return state.ready;
}

bool PieceInflater::IsComplete() const {
  return state_->done == state_->size;
}

}  // namespace lorv
