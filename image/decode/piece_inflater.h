#pragma once

#include <span>
#include <string_view>

namespace lorv {

// Takes the bytes that a stream unpacks to, one row after another, so that they need not all be held.
class RowSink {
 public:
  RowSink() = default;
  RowSink(const RowSink&) = delete;
  RowSink& operator=(const RowSink&) = delete;
  virtual ~RowSink() = default;

  // Where the next row goes; empty when all have come. The same room until TakeRow.
  virtual std::span<unsigned char> Room() = 0;
  // The room is full. False for a row that is none: the stream is damaged.
  virtual bool TakeRow() = 0;
};

// Unpacks a zlib stream that comes in several pieces into the rows of a sink, which must outlive it. Bytes
// behind the last row are not looked at.
class PieceInflater {
 public:
  explicit PieceInflater(RowSink& sink);
  PieceInflater(const PieceInflater&) = delete;
  PieceInflater& operator=(const PieceInflater&) = delete;
  ~PieceInflater();

  // False when the stream is damaged, by its own sum or by what the sink says.
  bool Add(std::string_view piece);
  bool IsComplete() const;

 private:
  struct State;
  State* state_;
  RowSink& sink_;
};

}  // namespace lorv
