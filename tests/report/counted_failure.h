#pragma once

#include "framework/objects/exceptions.h"

namespace lorv::test {

// A failure that counts its deletions.
class CountedFailure : public CException {
 public:
  CountedFailure(int& deleted, LPCTSTR text) : deleted_(deleted), text_(text) {}
  ~CountedFailure() override { ++deleted_; }
  CountedFailure(const CountedFailure&) = delete;
  CountedFailure& operator=(const CountedFailure&) = delete;

 protected:
  CString ErrorText() const override { return text_; }

 private:
  int& deleted_;
  CString text_;
};

}  // namespace lorv::test
