#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "TEXPRESSCAL/language/name_word.h"
#include "containers/str_cmp.h"
#include "framework/text/cstring.h"

// Variable values by name, ordered by name; letter case does not count.
//
// Units: names hold at most 20 16-bit units, a longer one is cut.
// Edges: a key stored through the access operator is in capitals. A null name is the empty name.
// Result: as the standard map's operations of the same names. References and iterators hold until the next
//   insertion or removal.
// A plain value: copied whole, kept in one block. One thread at a time.
//
//   CMapValue m;  m[_T("h")] = 2.5;  MapValueToStr(m)  gives "H:2.5;"
class COMM_LORV_API CMapValue {
 public:
  using value_type = std::pair<CStrCmp, double>;
  using const_iterator = std::vector<value_type>::const_iterator;
  using iterator = std::vector<value_type>::iterator;

  CMapValue() = default;
  CMapValue(const CMapValue&) = default;
  CMapValue& operator=(const CMapValue&) = default;
  // A map that was moved from is empty, and is a map of other names from then on.
  CMapValue(CMapValue&& other) noexcept { *this = std::move(other); }
  CMapValue& operator=(CMapValue&& other) noexcept;
  ~CMapValue() = default;

  // The value of a name, 0 and newly stored if there was none.
  double& operator[](LPCTSTR name) { return *Place(name).first; }
  double& operator[](const CString& name) { return (*this)[name.GetString()]; }
  double& operator[](const CStrCmp& name) { return (*this)[static_cast<LPCTSTR>(name)]; }

  const_iterator begin() const { return entries_.begin(); }
  const_iterator end() const { return entries_.end(); }
  iterator begin() { return entries_.begin(); }
  iterator end() { return entries_.end(); }
  std::size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }
  void clear() {
    entries_.clear();
    layout_ = 0;
    words_.clear();
    next_ = others_ = odd_ = 0;
  }

  const_iterator find(const CStrCmp& name) const;
  iterator find(const CStrCmp& name);
  std::size_t count(const CStrCmp& name) const { return find(name) == end() ? 0 : 1; }
  std::size_t erase(const CStrCmp& name);
  // The place of a name's value, and whether it is new. A caller that has the name's word already passes it.
  std::pair<double*, bool> Place(LPCTSTR name) { return Place(name, lorv::WordOfName(name)); }
  std::pair<double*, bool> Place(LPCTSTR name, lorv::NameWord word);
  // Stores the key as it stands; true when it was new. A value already there stays.
  std::pair<iterator, bool> insert(const value_type& entry);

  // A number for this row of names: two maps of one layout have the same names in the same places, and a map
  // keeps its layout until a name comes or goes. Never 0.
  std::uint64_t Layout() const { return layout_ != 0 ? layout_ : NumberLayout(); }
  // The same, but 0 while the names have no number yet.
  std::uint64_t KnownLayout() const { return layout_; }

  // The entries, one behind the other in the order of the names; null if there are none.
  const value_type* Entries() const { return entries_.data(); }

  // The words of the names, entry by entry. A name that is not stored in capitals has none.
  const std::vector<lorv::NameWord>& Words() const { return words_; }
  // Whether a name without a word could be found in a text of capitals, digits, "_" and signs of ASCII even
  // so, not taking up a whole run of letters and digits of more than a word's length.
  bool HasOddNames() const { return odd_ != 0; }

 private:
  std::uint64_t NumberLayout() const;
  std::size_t LowerBound(const CStrCmp& name) const;
  std::size_t LowerBound(lorv::NameWord word);
  bool Holds(std::size_t at, const CStrCmp& name) const;
  std::pair<double*, bool> PlaceOther(LPCTSTR name);
  void Insert(std::size_t at, const CStrCmp& name, double value, lorv::NameWord word);

  std::vector<value_type> entries_;
  mutable std::uint64_t layout_ = 0;  // 0: not numbered since the names last changed
  std::vector<lorv::NameWord> words_;
  std::size_t next_ = 0;    // the entry that is expected to be placed next: callers keep to an order
  std::size_t others_ = 0;  // names without a word
  std::size_t odd_ = 0;
};

// A pair of texts: a name and what belongs to it. As text "strFirst:strSecond", in lists joined by ";".
struct CTwoStrValue {
  CString strFirst;
  CString strSecond;
};

// The text form of a value map: for each name in order the name, ":", the value with at most 5 decimals, ";".
//
//   an empty map gives ""
COMM_LORV_API CString MapValueToStr(const CMapValue& values);

// Empties the map and reads that form. A piece that is not exactly a name and a value is passed over.
//
// Result: the count of entries in the map.
//
//   StrValueToMap(_T("a:1;b;c:2:3;"), m)  gives 1 and the single key "A"
COMM_LORV_API int StrValueToMap(LPCTSTR text, CMapValue& values);

namespace lorv {

// A number as it stands in the text form of a map.
CString MapNumberText(double value);

}  // namespace lorv
