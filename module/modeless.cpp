#include "module/modeless.h"

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
