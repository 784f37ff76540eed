#pragma once

#include "framework/values/variant.h"

// A set of records that a grid copies its rows from: fields with names, and one record that is the present
// one.
//
// Fields count from 0. A field that does not exist has an empty name and an empty value, and so has every
// field at the end. At the end MoveNext does nothing; MoveFirst of a set without records stays there. The set
// is its maker's; it lives during the call that it is handed to. One thread at a time.
class COMM_LORV_API CERecordset {
 public:
  CERecordset() = default;
  CERecordset(const CERecordset&) = delete;
  CERecordset& operator=(const CERecordset&) = delete;
  virtual ~CERecordset() = default;

  virtual int GetFieldCount() const = 0;
  virtual CString GetFieldName(int field) const = 0;
  // True behind the last record, and in a set without any.
  virtual bool IsEOF() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  virtual _variant_t GetFieldValue(int field) const = 0;
};
