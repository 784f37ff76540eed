#include "module/modeless.h"

// Whether the user may work in other windows just now. A count and no flag, as several dialogs may forbid it
// at a time; allowing it once too often outweighs the next prohibition.

namespace lorv {
namespace {

int forbidden = 0;

}  // namespace

void EnableModeless(bool enable) {
  forbidden += enable ? -1 : 1;
}

bool IsModeless() {
  return forbidden <= 0;
}

}  // namespace lorv
