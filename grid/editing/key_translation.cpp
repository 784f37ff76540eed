#include "grid/editing/key_translation.h"

// What Return and Tab mean by the styles of a grid. The last row of a table that grows comes first: Return
// must add a row there whatever the style says, or typing a table would end at its last row.

namespace lorv {
namespace {

unsigned Styled(unsigned key, emReturnStyle style) {
  switch (style) {
    case emReturnRight:
      return kKeyRight;
    case emReturnDown:
      return kKeyDown;
    default:
      return key;
  }
}

}  // namespace

unsigned TranslatedKey(unsigned key, const KeySituation& now) {
  const bool goes_down = key == kKeyReturn || key == kKeyDown;
  const bool on_last = now.row >= 0 && now.row == now.row_count - 1;
  if (goes_down && now.adds_rows && !now.read_only && on_last) return kKeyDown;
  if (key == kKeyTab) return Styled(key, now.tab_style);
  if (key == kKeyReturn) return Styled(key, now.return_style);
  return key;
}

unsigned KeyOfDirection(int direction) {
  switch (direction) {
    case kUp:
      return kKeyUp;
    case kDown:
      return kKeyDown;
    case kToLeft:
      return kKeyLeft;
    case kToRight:
      return kKeyRight;
    default:
      return 0;
  }
}

}  // namespace lorv
