#pragma once

#include <QMimeData>
#include <memory>

#include "framework/ports/drop_port.h"

// Content as Qt hands it around, on the clipboard and in a drag.
namespace lorv {

std::unique_ptr<QMimeData> ToMime(const TransferData& data);

// Qt's text with line ends of CR LF.
CString TextOfMime(const QString& text);

// What Qt holds, during a call.
class MimeContent : public DragContent {
 public:
  explicit MimeContent(const QMimeData* data) : data_(data) {}
  bool HasText() const override { return data_ != nullptr && data_->hasText(); }
  CString Text() const override;
  bool Has(const CString& format) const override;
  std::vector<BYTE> Bytes(const CString& format) const override;

 private:
  const QMimeData* data_;
};

}  // namespace lorv
