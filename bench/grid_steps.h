#pragma once

namespace lorv_bench {

// The clipboard, a sort and the history of a grid of that many rows and ten columns, in memory: each work the
// best of the rounds, an undo beside its step. False: something did not do its work.
bool StepsAndClipboard(int rows, int rounds);

}  // namespace lorv_bench
