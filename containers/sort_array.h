#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

#include "containers/ox_array.h"
#include "framework/native/native_types.h"

// Sorted arrays with binary insertion, and sorted arrays that are searched by a key of another type.
//
// Units: indices count elements from 0; "not found" is -1.
// Edges: searches rely on every insertion having gone through AddSorted. Add and Append on a sorted array put
//   the element at the end without sorting, and from then on searches may miss.
// Result: comparisons are negative, zero or positive. Of elements that compare equal the first stays.
// One thread at a time.
//
//   TSortArray<int, SortCompare<int, int, __int64>, OxArray<int, OxVector<int>>> a;
//   a.AddSorted(7);  a.AddSorted(3)  gives 0

// Three-way comparison of an A with a B as their difference. Integers are subtracted in 32 bits, so two that
// lie further apart than that range compare wrongly. Pointers give their distance in elements: they are
// ordered by address, so a keyed array of texts overrides its comparisons.
template <class A, class B, class R>
struct SortCompare {
  R operator()(A a, B b) const {
    if constexpr (std::is_pointer_v<A>) {
      const auto bytes = static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(a) -
                                                    reinterpret_cast<std::uintptr_t>(b));
      return static_cast<R>(bytes / static_cast<std::intptr_t>(sizeof(*a)));
    } else {
      const auto difference = static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b);
      return static_cast<R>(static_cast<std::int32_t>(difference));
    }
  }
};

#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Winconsistent-missing-override"
#endif
// NOLINTBEGIN(modernize-use-override): a keyed array applies this class to itself, so the same lines declare
// in the one case and override in the other.
template <class A, class T, class C>
class BaseSort : public A {
 public:
  // Inserts unless an equal element exists; the index of the element, or of the equal one.
  virtual int AddSorted(const T& element) {
    int position = -1;
    if (FindPosition(element, position)) return position;
    const int count = static_cast<int>(this->size());
    if (position >= 0 && position < count) {
      InsertAt(position, element);
      return position;
    }
    this->Add(element);
    return count;
  }

  virtual __int64 Compare(const T& a, const T& b) const { return C()(a, b); }

  // Inserts before the index and gives a reference to the new element. The order is the caller's care.
  virtual T& InsertAt(int index, const T& element) { return Insert(index, T(element)); }
  virtual T& InsertAt(int index, T&& element) { return Insert(index, std::move(element)); }

  // Reserves nothing here and gives 0; BaseArray gives it a body. A keyed array applies this class a second
  // time and so never reserves through this entry.
  virtual int ReserveEmpty(int) { return 0; }

  using A::Append;
  T& Append(const T& element) override { return this->Add(element); }

  // True and the index of an equal element; or false and the index to insert at, where -1 or the element
  // count mean the end.
  bool FindPosition(const T& key, int& position) const {
    position = -1;
    const int count = static_cast<int>(this->size());
    int lo = 0;
    int hi = count;
    int mid = 0;
    __int64 order = 0;
    do {
      mid = (lo + hi) / 2;
      if (lo > hi || mid >= count) return false;
      order = Compare(key, At(mid));
      if (order == 0) {
        position = mid;
        return true;
      }
      if (order < 0) {
        hi = mid - 1;
        position = mid;
      } else {
        lo = mid + 1;
      }
      if (lo > hi) return false;
    } while (hi - lo >= kLinearBelow);
    return WalkTo(key, order > 0 ? mid : lo, hi < count ? hi + 1 : hi, position);
  }

 protected:
  const T& At(int index) const { return (*this)[static_cast<typename A::size_type>(index)]; }

 private:
  // The last few elements are walked: cheaper than halving.
  static constexpr int kLinearBelow = 3;

  bool WalkTo(const T& key, int first, int end, int& position) const {
    for (position = first; position < end; ++position) {
      const __int64 order = Compare(key, At(position));
      if (order == 0) return true;
      if (order < 0) break;
    }
    return false;
  }

  // By value: the element may live in the storage that growing frees.
  T& Insert(int index, T element) {
    this->Grow();
    return *this->insert(this->begin() + index, std::move(element));
  }
};
// NOLINTEND(modernize-use-override)
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

template <class A, class T, class C>
class BaseArray : public BaseSort<A, T, C> {
 public:
  // Reserves room for `count` elements in an empty array and gives 1; 0 when the array holds anything.
  int ReserveEmpty(int count) override {
    if (!this->empty()) return 0;
    this->reserve(static_cast<typename A::size_type>(count < 0 ? 0 : count));
    return 1;
  }
};

template <class T, class C, class A>
class TSortArray : public BaseArray<A, T, C> {};

template <class S, class T, class K, class C>
class BaseKeySort : public BaseSort<S, T, C> {
 public:
  // Through the key of the first element, which converts to its key.
  __int64 Compare(const T& a, const T& b) const override {
    const K key = a;
    return CompareKey(&key, b);
  }

  virtual __int64 CompareKey(const K* key, const T& element) const { return C()(*key, element); }

  // The index of the element with this key, or -1.
  int FindKey(const K& key) const {
    const int count = static_cast<int>(this->size());
    int lo = 0;
    int hi = count;
    while (count != 0) {
      const int mid = (lo + hi) / 2;
      if (lo > hi || mid >= count) break;
      const __int64 order = CompareKey(&key, this->At(mid));
      if (order == 0) return mid;
      if (order < 0) {
        hi = mid - 1;
      } else {
        lo = mid + 1;
      }
    }
    return -1;
  }
};

template <class T, class K, class C, class A>
class TKeyArray : public BaseKeySort<TSortArray<T, C, A>, T, K, C> {};
