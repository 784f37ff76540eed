#pragma once

#include <functional>
#include <type_traits>
#include <unordered_set>

#include "framework/collections/list.h"

namespace lorv {

// How a key is hashed and compared: a text by its units, whichever of its types it comes in.
template <class KEY>
struct MapKey {
  using View = const KEY&;
  static View ViewOf(const KEY& key) { return key; }
  static std::size_t Hash(View key) { return std::hash<KEY>()(key); }
};

template <>
struct MapKey<CString> {
  using View = TextView;
  static View ViewOf(const CString& key) { return key.View(); }
  static View ViewOf(LPCTSTR key) { return key == nullptr ? TextView() : TextView(key); }
  static std::size_t Hash(View key) { return std::hash<TextView>()(key); }
};

}  // namespace lorv

// A map from keys to values, with the framework's operations and names.
//
// Edges: a null text as key counts as the empty text. A null position raises CInvalidArgException by pointer.
// Result: walking from GetStartPosition gives the pairs in the order in which their keys first came in;
//   the pair just given may be removed on the way.
// Values stay where they are until removed. A map belongs to one thread at a time. The number given at
// construction and InitHashTable are taken for the framework's callers.
//
//   CMap<int, int, int, int> m;  m[3] = 7;  int v = 0;  m.Lookup(3, v)  gives TRUE, v is 7
template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE = const VALUE&>
class CMap : public CObject {
 public:
  using BASE_KEY = KEY;
  using BASE_ARG_KEY = ARG_KEY;
  using BASE_VALUE = VALUE;
  using BASE_ARG_VALUE = ARG_VALUE;

  struct CPair {
    const KEY key;
    VALUE value;
  };

  explicit CMap(int /*block_size*/ = 10) {}
  CMap(const CMap& other) : CObject(other) { AddAll(other); }
  CMap& operator=(const CMap& other);

  int GetCount() const { return pairs_.GetCount(); }
  int GetSize() const { return pairs_.GetCount(); }
  bool IsEmpty() const { return pairs_.IsEmpty(); }
  void InitHashTable(UINT size, BOOL /*allocate_now*/ = TRUE) { index_.reserve(size); }
  UINT GetHashTableSize() const { return static_cast<UINT>(index_.bucket_count()); }

  // FALSE for an unknown key, the value is then untouched.
  BOOL Lookup(ARG_KEY key, VALUE& value) const;
  // Null for an unknown key.
  CPair* PLookup(ARG_KEY key);
  const CPair* PLookup(ARG_KEY key) const;
  // The value of the key, VALUE() if it is new.
  VALUE& operator[](ARG_KEY key);
  void SetAt(ARG_KEY key, ARG_VALUE value) { (*this)[key] = value; }
  BOOL RemoveKey(ARG_KEY key);
  void RemoveAll();

  POSITION GetStartPosition() const { return pairs_.GetHeadPosition(); }
  void GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const;

 private:
  using Keys = lorv::MapKey<KEY>;
  using Node = lorv::ValueNode<CPair>;

  static typename Keys::View KeyOf(POSITION at) { return Keys::ViewOf(static_cast<Node*>(at)->value.key); }
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(POSITION at) const { return Keys::Hash(KeyOf(at)); }
    std::size_t operator()(typename Keys::View key) const { return Keys::Hash(key); }
  };
  struct Equal {
    using is_transparent = void;
    bool operator()(POSITION a, POSITION b) const { return KeyOf(a) == KeyOf(b); }
    bool operator()(typename Keys::View a, POSITION b) const { return a == KeyOf(b); }
    bool operator()(POSITION a, typename Keys::View b) const { return KeyOf(a) == b; }
  };
  using Pairs = CList<CPair, const CPair&>;

  auto Find(ARG_KEY key) const { return index_.find(Keys::ViewOf(key)); }
  void AddAll(const CMap& other);

  Pairs pairs_;
  std::unordered_set<POSITION, Hash, Equal> index_;
};

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator=(const CMap& other) -> CMap& {
  if (this == &other) return *this;
  RemoveAll();
  AddAll(other);
  return *this;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::AddAll(const CMap& other) {
  for (POSITION at = other.GetStartPosition(); at != nullptr;) {
    index_.insert(pairs_.AddTail(other.pairs_.GetNext(at)));
  }
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::Lookup(ARG_KEY key, VALUE& value) const {
  const CPair* pair = PLookup(key);
  if (pair == nullptr) return FALSE;
  value = pair->value;
  return TRUE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::PLookup(ARG_KEY key) -> CPair* {
  const auto found = Find(key);
  return found == index_.end() ? nullptr : &pairs_.GetAt(*found);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
auto CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::PLookup(ARG_KEY key) const -> const CPair* {
  const auto found = Find(key);
  return found == index_.end() ? nullptr : &pairs_.GetAt(*found);
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
VALUE& CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::operator[](ARG_KEY key) {
  if (CPair* pair = PLookup(key)) return pair->value;
  const POSITION fresh = pairs_.AddTail(CPair{KEY(key), VALUE()});
  index_.insert(fresh);
  return pairs_.GetAt(fresh).value;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
BOOL CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveKey(ARG_KEY key) {
  const auto found = Find(key);
  if (found == index_.end()) return FALSE;
  const POSITION at = *found;
  index_.erase(found);
  pairs_.RemoveAt(at);
  return TRUE;
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::RemoveAll() {
  index_.clear();
  pairs_.RemoveAll();
}

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE>
void CMap<KEY, ARG_KEY, VALUE, ARG_VALUE>::GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const {
  const CPair& pair = pairs_.GetNext(position);
  key = pair.key;
  value = pair.value;
}

class CMapStringToOb : public CMap<CString, LPCTSTR, CObject*, CObject*> {
 public:
  using CMap::CMap;
};

class CMapStringToPtr : public CMap<CString, LPCTSTR, void*, void*> {
 public:
  using CMap::CMap;
};

class CMapStringToString : public CMap<CString, LPCTSTR, CString, const CString&> {
 public:
  using CMap::CMap;
};

class CMapPtrToPtr : public CMap<void*, void*, void*, void*> {
 public:
  using CMap::CMap;
};

// A map of pointers seen as a map of pointers to one class. The objects stay their owner's.
//
//   CTypedPtrMap<CMapStringToOb, CString, CThing*> things;  things.SetAt(_T("H"), &thing);
template <class BASE_CLASS, class KEY, class VALUE>
class CTypedPtrMap : public BASE_CLASS {
  using ArgKey = typename BASE_CLASS::BASE_ARG_KEY;
  using Base = typename BASE_CLASS::BASE_VALUE;

 public:
  using BASE_CLASS::BASE_CLASS;

  // Stands for the value of a key on either side of "=".
  class Slot {
   public:
    explicit Slot(Base& value) : value_(value) {}
    operator VALUE() const { return static_cast<VALUE>(value_); }  // NOLINT(google-explicit-constructor)
    VALUE operator->() const { return static_cast<VALUE>(value_); }
    Slot& operator=(VALUE value) {
      value_ = value;
      return *this;
    }

   private:
    Base& value_;
  };

  BOOL Lookup(ArgKey key, VALUE& value) const {
    const auto* pair = BASE_CLASS::PLookup(key);
    if (pair == nullptr) return FALSE;
    value = static_cast<VALUE>(pair->value);
    return TRUE;
  }
  Slot operator[](ArgKey key) { return Slot(BASE_CLASS::operator[](key)); }
  void SetAt(ArgKey key, VALUE value) { BASE_CLASS::SetAt(key, value); }

  void GetNextAssoc(POSITION& position, KEY& key, VALUE& value) const {
    typename BASE_CLASS::BASE_KEY found{};
    Base base{};
    BASE_CLASS::GetNextAssoc(position, found, base);
    key = found;
    value = static_cast<VALUE>(base);
  }
};
