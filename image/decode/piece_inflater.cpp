#include "image/decode/piece_inflater.h"

// The pieces are only read: without this zlib's interface would want them as changeable.
#define ZLIB_CONST
#include <zlib.h>

namespace lorv {

struct PieceInflater::State {
  z_stream stream = {};
  std::size_t filled = 0;  // of the row that is being filled
  bool ready = false;
};

PieceInflater::PieceInflater(RowSink& sink) : state_(new State), sink_(sink) {
  state_->ready = inflateInit(&state_->stream) == Z_OK;
}

PieceInflater::~PieceInflater() {
  inflateEnd(&state_->stream);
  delete state_;
}

bool PieceInflater::Add(std::string_view piece) {
  State& state = *state_;
  state.stream.next_in = reinterpret_cast<const Bytef*>(piece.data());
  state.stream.avail_in = static_cast<uInt>(piece.size());
  // Straight into the sink's row: what a stream claims to unpack to never needs memory of its own.
  std::span<unsigned char> room = sink_.Room();
  while (state.ready && state.stream.avail_in > 0 && !room.empty()) {
    state.stream.next_out = room.data() + state.filled;
    state.stream.avail_out = static_cast<uInt>(room.size() - state.filled);
    const int result = inflate(&state.stream, Z_NO_FLUSH);
    state.filled = room.size() - state.stream.avail_out;
    if (state.filled == room.size()) {
      if (!sink_.TakeRow()) return false;
      state.filled = 0;
      room = sink_.Room();
    }
    // The end of the stream with rows still missing is seen by IsComplete; it is no damage of its own.
    if (result == Z_STREAM_END) break;
    if (result != Z_OK) return false;
  }
  return state.ready;
}

bool PieceInflater::IsComplete() const {
  return sink_.Room().empty();
}

}  // namespace lorv
