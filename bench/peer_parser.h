#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace lorv::bench {

// The peer in the formula benchmarks, muParser, set up to understand the same texts as the library's engine:
// a parser object that is kept, with the functions of the texts defined and every name bound to a slot.
class PeerParser {
 public:
  PeerParser();
  ~PeerParser();

  // The place where the parser reads the value of a name; made at the first call for it.
  double& Slot(const std::string& name);

  // Parses and evaluates one text.
  double Evaluate(const std::string& text);
  // Evaluates the last text again, as it was compiled then.
  double Again();

  // The values of a name for the rows of EvaluateRows, one a row; they stay the caller's.
  void Column(const std::string& name, double* values);
  // Evaluates one text for many rows.
  void EvaluateRows(const std::string& text, double* results, std::size_t rows);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace lorv::bench
