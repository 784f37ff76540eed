#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "framework/objects/exceptions.h"

// An array of values that grows, with the framework's operations and names.
//
// Units: indices count elements from 0.
// Edges: an index outside the array, a negative size and a negative count raise CInvalidArgException by
//   pointer, and the array is as it was. SetAtGrow and InsertAt behind the end fill the gap with T(). An
//   argument may be an element of the array itself.
// Elements are held by value; a reference or GetData is valid until the array next changes its size. An
// array belongs to one thread at a time.
//
//   CArray<int> a;  a.SetAtGrow(2, 7);  a.GetSize()  gives 3, a[0] is 0
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
 public:
  int GetSize() const { return static_cast<int>(data_.size()); }
  int GetCount() const { return GetSize(); }
  bool IsEmpty() const { return data_.empty(); }
  // The last index, -1 for an empty array.
  int GetUpperBound() const { return GetSize() - 1; }

  // `grow_by` is taken for the framework's callers; room grows by itself.
  void SetSize(int size, int grow_by = -1);
  void FreeExtra() { data_.shrink_to_fit(); }
  void RemoveAll() { data_.clear(); }

  const TYPE& GetAt(int index) const { return data_[Checked(index)]; }
  TYPE& ElementAt(int index) { return data_[Checked(index)]; }
  const TYPE& ElementAt(int index) const { return data_[Checked(index)]; }
  void SetAt(int index, ARG_TYPE element) { data_[Checked(index)] = element; }
  TYPE& operator[](int index) { return ElementAt(index); }
  const TYPE& operator[](int index) const { return GetAt(index); }

  TYPE* GetData() { return data_.data(); }
  const TYPE* GetData() const { return data_.data(); }

  // The index of the new element.
  int Add(ARG_TYPE element);
  // The index of the first element added. An array can be appended to itself.
  int Append(const CArray& other);
  void Copy(const CArray& other) { data_ = other.data_; }

  void SetAtGrow(int index, ARG_TYPE element);
  void InsertAt(int index, ARG_TYPE element, int count = 1);
  void InsertAt(int index, const CArray* other);
  void RemoveAt(int index, int count = 1);

  TYPE* begin() { return GetData(); }
  TYPE* end() { return GetData() + GetSize(); }
  const TYPE* begin() const { return GetData(); }
  const TYPE* end() const { return GetData() + GetSize(); }

 private:
  std::size_t Checked(int index) const {
    if (index < 0 || index >= GetSize()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
  }
  auto At(int index) { return data_.begin() + index; }

  std::vector<TYPE> data_;
};

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetSize(int size, int /*grow_by*/) {
  if (size < 0) AfxThrowInvalidArgException();
  data_.resize(static_cast<std::size_t>(size));
}

template <class TYPE, class ARG_TYPE>
int CArray<TYPE, ARG_TYPE>::Add(ARG_TYPE element) {
  data_.push_back(element);
  return GetUpperBound();
}

template <class TYPE, class ARG_TYPE>
int CArray<TYPE, ARG_TYPE>::Append(const CArray& other) {
  const int first = GetSize();
  const std::size_t count = other.data_.size();
  data_.reserve(data_.size() + count);
  for (std::size_t i = 0; i < count; ++i) data_.push_back(other.data_[i]);
  return first;
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::SetAtGrow(int index, ARG_TYPE element) {
  if (index < 0) AfxThrowInvalidArgException();
  TYPE copy(element);
  if (index >= GetSize()) SetSize(index + 1);
  data_[static_cast<std::size_t>(index)] = std::move(copy);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(int index, ARG_TYPE element, int count) {
  if (index < 0 || count <= 0) AfxThrowInvalidArgException();
  const TYPE copy(element);
  if (index > GetSize()) SetSize(index);
  data_.insert(At(index), static_cast<std::size_t>(count), copy);
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::InsertAt(int index, const CArray* other) {
  if (index < 0 || other == nullptr) AfxThrowInvalidArgException();
  const std::vector<TYPE> copy(other->data_);
  if (copy.empty()) return;
  if (index > GetSize()) SetSize(index);
  data_.insert(At(index), copy.begin(), copy.end());
}

template <class TYPE, class ARG_TYPE>
void CArray<TYPE, ARG_TYPE>::RemoveAt(int index, int count) {
  if (index < 0 || count < 0 || index > GetSize() || count > GetSize() - index) AfxThrowInvalidArgException();
  data_.erase(At(index), At(index + count));
}
