#include "spreadsheet/cells/cell_address.h"

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
