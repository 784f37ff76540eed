#include "spreadsheet/cells/cell_address.h"

// The letters and number by which the exchange names a corner to a program. The letters come lowest digit
// first, so that only columns up to 25 have the name that the sheet itself gives them; documents of the suite
// rely on the others, too, and they stay as they are.

namespace lorv {

CString CornerAddress(int row, int column) {
  constexpr int kLetters = 26;
  CString address;
  do {
    address += static_cast<TCHAR>(_T('A') + column % kLetters);
    column /= kLetters;
  } while (column != 0);
  address.AppendFormat(_T("%d"), static_cast<__int64>(row) + 1);
  return address;
}

}  // namespace lorv
