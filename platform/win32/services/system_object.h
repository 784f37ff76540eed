#pragma once

#include <atomic>
#include <utility>
#include <vector>

#include "framework/native/native_types.h"

namespace lorv {

// An object that the system counts, under one interface beside IUnknown. It begins with one reference, its
// maker's, and is deleted with the last one.
template <class Interface>
class CountedObject : public Interface {
 public:
  CountedObject() = default;
  CountedObject(const CountedObject&) = delete;
  CountedObject& operator=(const CountedObject&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++count_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const long left = --count_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** answer) override {
    if (answer == nullptr) return E_POINTER;
    *answer = nullptr;
    if (!Answers(wanted)) return E_NOINTERFACE;
    *answer = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }

 protected:
  virtual ~CountedObject() = default;
  virtual bool Answers(REFIID wanted) const {
    return IsEqualIID(wanted, IID_IUnknown) || IsEqualIID(wanted, __uuidof(Interface));
  }

 private:
  std::atomic<long> count_{1};
};

// A reference that is given back at the end.
template <class Interface>
class CountedReference {
 public:
  CountedReference() = default;
  // The reference becomes the object's.
  explicit CountedReference(Interface* given) : pointer_(given) {}
  CountedReference(const CountedReference&) = delete;
  CountedReference& operator=(const CountedReference&) = delete;
  ~CountedReference() { Keep(nullptr); }
  Interface* Get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  // One more reference to it, for the one of before.
  void Share(Interface* other) {
    if (other != nullptr) other->AddRef();
    Keep(other);
  }

 private:
  void Keep(Interface* next) {
    if (pointer_ != nullptr) pointer_->Release();
    pointer_ = next;
  }

  Interface* pointer_ = nullptr;
};

// A list that the system walks through: `Fill` makes what it wants of each of our things.
template <class Enumerator, class Given, class Thing, void (*Fill)(const Thing&, Given&)>
class CountedList : public CountedObject<Enumerator> {
 public:
  explicit CountedList(std::vector<Thing> things, std::size_t at = 0) : things_(std::move(things)), at_(at) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, Given* room, ULONG* got) override {
    if (room == nullptr) return E_POINTER;
    ULONG count = 0;
    for (; count < wanted && at_ < things_.size(); ++count) Fill(things_[at_++], room[count]);
    if (got != nullptr) *got = count;
    return count == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    const bool enough = things_.size() - at_ >= count;
    at_ = enough ? at_ + count : things_.size();
    return enough ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    at_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(Enumerator** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = new CountedList(things_, at_);
    return S_OK;
  }

 private:
  std::vector<Thing> things_;
  std::size_t at_;
};

}  // namespace lorv
