#pragma once

#include <algorithm>
#include <utility>
#include <vector>

// The array that every collection of the suite rests on: a standard vector with a fixed growth rule and a
// virtual table, so that the sorted arrays can put themselves in place of the plain one.
//
// Units: indices count elements from 0.
// Edges: an index outside the array is the caller's fault, as with the standard vector. An element may be a
//   reference into the array that it is added to.
// Result: no operation fails but for lack of memory; the array is then as it was before the call. Elements
// are held by value. An array belongs to one thread at a time.
//
//   OxArray<int, OxVector<int>> a;  a.Add(7);  a.size()  gives 1, a.capacity() 4

// Vectors of arrays end their elements by their own type, which clang cannot see: it would warn every user
// that the destructor is not virtual. It says nothing of classes from system headers.
#ifdef __clang__
#pragma clang system_header
#endif

template <class T>
class OxVector : public std::vector<T> {
 public:
  using std::vector<T>::vector;
};

template <class T, class V>
class OxArray : public V {
 public:
  OxArray() = default;
  OxArray(const OxArray&) = default;
  OxArray(OxArray&&) noexcept = default;
  OxArray& operator=(const OxArray&) = default;
  OxArray& operator=(OxArray&&) noexcept = default;

  // Replaces the contents by a copy of another array's; a missing array counts as empty.
  virtual OxArray& Assign(const OxArray* other) {
    Grow();
    if (other == nullptr) {
      this->clear();
    } else if (other != this) {
      static_cast<V&>(*this) = *other;
    }
    return *this;
  }

  // Puts a copy at the end and gives a reference to it.
  virtual T& Add(const T& element) {
    if (this->size() < this->capacity()) {
      this->push_back(element);
    } else {
      // The element may live in the storage that growing frees.
      T copy(element);
      Grow();
      this->push_back(std::move(copy));
    }
    return this->back();
  }

  virtual OxArray& Assign(const OxArray& other) { return Assign(&other); }
  virtual T& Append(const T& element) { return Add(element); }
  virtual T& Append(T&& element) { return Add(element); }

  // Makes room for one more element: 1 when the capacity was raised, else 0. The step is half the capacity
  // and at least 4, so capacities go 4, 8, 12, 18, 27 ...
  virtual int Grow() {
    const auto size = this->size();
    const auto capacity = this->capacity();
    if (size < capacity) return 0;
    this->reserve(size + std::max(kSmallestStep, capacity / 2));
    return 1;
  }

 private:
  static constexpr typename V::size_type kSmallestStep = 4;
};
