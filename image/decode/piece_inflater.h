#pragma once

#include <string>
#include <string_view>

namespace lorv {

// Unpacks a zlib stream that lies in several pieces, to exactly `size` bytes. False when it is damaged or
// gives fewer; what comes behind them is not looked at.
class PieceInflater {
 public:
  explicit PieceInflater(std::size_t size);
  PieceInflater(const PieceInflater&) = delete;
  PieceInflater& operator=(const PieceInflater&) = delete;
  ~PieceInflater();

  // False when the stream is damaged.
  bool Add(std::string_view piece);
  bool IsComplete() const;
  const std::string& Bytes() const { return bytes_; }

 private:
  struct State;
  State* state_;
  std::string bytes_;
};

}  // namespace lorv
