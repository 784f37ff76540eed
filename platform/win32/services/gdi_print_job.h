#pragma once

#include <memory>

#include "framework/native/native_types.h"
#include "platform/ports/printing.h"

namespace lorv {

// A job on a device context of the system: that of a printer, or of a metafile. The context becomes the
// job's, which deletes it at its end unless it is to leave it.
class GdiPrintJob : public PrintJob {
 public:
  enum class Ending { kDelete, kLeave };
  explicit GdiPrintJob(HDC context, Ending ending = Ending::kDelete) : context_(context), ending_(ending) {}
  ~GdiPrintJob() override;

  bool Begin(LPCTSTR document, const PageWays& ways) override;
  SIZE Extent(LPCTSTR text) override;
  void Text(int x, int y, LPCTSTR text) override;
  bool BeginPages(LPCTSTR document) override;
  std::shared_ptr<Canvas> NextPage() override;
  void End() override;

 private:
  class Page;

  bool IsMetafile() const { return GetObjectType(context_) == OBJ_ENHMETADC; }
  bool BeginDocument(LPCTSTR name);
  void EndThisPage();
  void UseWays(const PageWays& ways);

  HDC context_;
  Ending ending_;
  HFONT font_ = nullptr;
  HGDIOBJ former_ = nullptr;
  bool begun_ = false;
  int pages_ = 0;
  // The context as long as the page under way is drawn on; each canvas has one of its own.
  std::shared_ptr<HDC> page_;
};

}  // namespace lorv
