#pragma once

#include <utility>

#include "framework/objects/exceptions.h"

namespace lorv {

// A link of a chain; the value stands in the class that derives from it.
struct ListNode {
  ListNode* previous = nullptr;
  ListNode* next = nullptr;
};

template <class T>
struct ValueNode : ListNode {
  template <class... Args>
  explicit ValueNode(Args&&... args) : value(std::forward<Args>(args)...) {}
  T value;
};

}  // namespace lorv

// A place in a list or map, valid until the element there is removed. Null: no place, the end.
using POSITION = lorv::ListNode*;

// A doubly linked list, with the framework's operations and names.
//
// Edges: a null position, and taking from an empty list, raise CInvalidArgException by pointer. InsertBefore
//   and InsertAfter of a null position add at the head and at the tail. FindIndex outside the list is null.
// Elements stay where they are: adding and removing others keeps positions and references valid. A list
// belongs to one thread at a time. The number given at construction is taken for the framework's callers.
//
//   CList<int, int> l;  l.AddTail(4);  for (POSITION p = l.GetHeadPosition(); p; ) sum += l.GetNext(p);
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList : public CObject {
 public:
  explicit CList(int /*block_size*/ = 10) {}
  CList(const CList& other) : CObject(other) { AddTail(&other); }
  CList& operator=(const CList& other);
  CList(CList&& other) noexcept { Swap(other); }
  CList& operator=(CList&& other) noexcept;
  ~CList() override { RemoveAll(); }

  int GetCount() const { return count_; }
  int GetSize() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }

  TYPE& GetHead() { return Value(head_); }
  const TYPE& GetHead() const { return Value(head_); }
  TYPE& GetTail() { return Value(tail_); }
  const TYPE& GetTail() const { return Value(tail_); }
  TYPE RemoveHead() { return Taken(head_); }
  TYPE RemoveTail() { return Taken(tail_); }

  POSITION AddHead(ARG_TYPE element) { return Link(nullptr, head_, element); }
  POSITION AddTail(ARG_TYPE element) { return Link(tail_, nullptr, element); }
  // Copies of all elements of another list, in their order; a null list adds nothing.
  void AddHead(const CList* other);
  void AddTail(const CList* other);
  void RemoveAll();

  POSITION GetHeadPosition() const { return head_; }
  POSITION GetTailPosition() const { return tail_; }
  // The element at the position, which moves on: null behind the last one.
  TYPE& GetNext(POSITION& position) { return Value(Step(position, &lorv::ListNode::next)); }
  const TYPE& GetNext(POSITION& position) const { return Value(Step(position, &lorv::ListNode::next)); }
  TYPE& GetPrev(POSITION& position) { return Value(Step(position, &lorv::ListNode::previous)); }
  const TYPE& GetPrev(POSITION& position) const { return Value(Step(position, &lorv::ListNode::previous)); }

  TYPE& GetAt(POSITION position) { return Value(position); }
  const TYPE& GetAt(POSITION position) const { return Value(position); }
  void SetAt(POSITION position, ARG_TYPE element) { Value(position) = element; }
  void RemoveAt(POSITION position);
  POSITION InsertBefore(POSITION position, ARG_TYPE element);
  POSITION InsertAfter(POSITION position, ARG_TYPE element);

  // The first equal element behind `start_after`, from the head on for null; null if there is none.
  POSITION Find(ARG_TYPE value, POSITION start_after = nullptr) const;
  POSITION FindIndex(int index) const;

 private:
  using Node = lorv::ValueNode<TYPE>;

  static TYPE& Value(POSITION position) {
    if (position == nullptr) AfxThrowInvalidArgException();
    return static_cast<Node*>(position)->value;
  }
  static POSITION Step(POSITION& position, POSITION lorv::ListNode::*direction) {
    if (position == nullptr) AfxThrowInvalidArgException();
    return std::exchange(position, position->*direction);
  }
  POSITION Link(POSITION previous, POSITION next, ARG_TYPE element);
  TYPE Taken(POSITION position);
  void Swap(CList& other) noexcept;

  POSITION head_ = nullptr;
  POSITION tail_ = nullptr;
  int count_ = 0;
};

template <class TYPE, class ARG_TYPE>
CList<TYPE, ARG_TYPE>& CList<TYPE, ARG_TYPE>::operator=(const CList& other) {
  if (this == &other) return *this;
  CList copy(other);
  Swap(copy);
  return *this;
}

template <class TYPE, class ARG_TYPE>
CList<TYPE, ARG_TYPE>& CList<TYPE, ARG_TYPE>::operator=(CList&& other) noexcept {
  Swap(other);
  return *this;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::Swap(CList& other) noexcept {
  std::swap(head_, other.head_);
  std::swap(tail_, other.tail_);
  std::swap(count_, other.count_);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Link(POSITION previous, POSITION next, ARG_TYPE element) {
  auto* node = new Node(element);
  node->previous = previous;
  node->next = next;
  (previous == nullptr ? head_ : previous->next) = node;
  (next == nullptr ? tail_ : next->previous) = node;
  ++count_;
  return node;
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddHead(const CList* other) {
  const CList copy = other == nullptr ? CList() : *other;
  for (POSITION at = copy.tail_; at != nullptr;) AddHead(copy.GetPrev(at));
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::AddTail(const CList* other) {
  if (other == nullptr) return;
  // The count is taken first: a list may be added to itself.
  POSITION at = other->head_;
  for (int left = other->count_; left > 0; --left) AddTail(Value(Step(at, &lorv::ListNode::next)));
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAll() {
  while (head_ != nullptr) RemoveAt(head_);
}

template <class TYPE, class ARG_TYPE>
void CList<TYPE, ARG_TYPE>::RemoveAt(POSITION position) {
  if (position == nullptr) AfxThrowInvalidArgException();
  (position->previous == nullptr ? head_ : position->previous->next) = position->next;
  (position->next == nullptr ? tail_ : position->next->previous) = position->previous;
  --count_;
  delete static_cast<Node*>(position);
}

template <class TYPE, class ARG_TYPE>
TYPE CList<TYPE, ARG_TYPE>::Taken(POSITION position) {
  TYPE value = std::move(Value(position));
  RemoveAt(position);
  return value;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertBefore(POSITION position, ARG_TYPE element) {
  return position == nullptr ? AddHead(element) : Link(position->previous, position, element);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::InsertAfter(POSITION position, ARG_TYPE element) {
  return position == nullptr ? AddTail(element) : Link(position, position->next, element);
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::Find(ARG_TYPE value, POSITION start_after) const {
  POSITION at = start_after == nullptr ? head_ : start_after->next;
  while (at != nullptr && !(Value(at) == value)) at = at->next;
  return at;
}

template <class TYPE, class ARG_TYPE>
POSITION CList<TYPE, ARG_TYPE>::FindIndex(int index) const {
  if (index < 0 || index >= count_) return nullptr;
  POSITION at = head_;
  while (index-- > 0) at = at->next;
  return at;
}

class CPtrList : public CList<void*, void*> {
 public:
  using CList::CList;
};

class CObList : public CList<CObject*, CObject*> {
 public:
  using CList::CList;
};

class CStringList : public CList<CString, const CString&> {
 public:
  using CList::CList;
};
