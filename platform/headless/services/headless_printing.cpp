#include "platform/headless/services/headless_printing.h"

// A printer that notes what it was asked, and pages that can be looked at like windows.

namespace lorv {
namespace {

class RecordedJob : public PrintJob {
 public:
  explicit RecordedJob(HeadlessPrinting& printing) : printing_(printing) {}
  // Noted, so that a test sees a job that was given up without End.
  ~RecordedJob() override { Note(_T("gone")); }

  bool Begin(LPCTSTR document, const PageWays& ways) override {
    Note(_T("begin %s mapping %d font %s %d align %u"), document, ways.mapping, ways.face,
         ways.tenths_of_points, ways.align);
    return printing_.begins;
  }

  SIZE Extent(LPCTSTR text) override {
    Note(_T("extent %s"), text);
    return {CString(text).GetLength() * 100, printing_.line_height};
  }

  void Text(int x, int y, LPCTSTR text) override { Note(_T("text %d %d %s"), x, y, text); }
  bool BeginPages(LPCTSTR document) override {
    Note(_T("begin pages %s"), document);
    return printing_.begins;
  }

  std::shared_ptr<Canvas> NextPage() override {
    constexpr SIZE kPaper = {794, 1123};  // A4 at 96 dots per inch
    printing_.pages.push_back(std::make_shared<HeadlessSurface>(kPaper));
    Note(_T("page %d"), static_cast<int>(printing_.pages.size()));
    return std::make_shared<HeadlessCanvas>(printing_.pages.back(), CRect(CPoint(0, 0), kPaper));
  }

  void End() override { Note(_T("end")); }

 private:
  template <class... Args>
  void Note(LPCTSTR format, const Args&... args) {
    CString note;
    note.Format(format, args...);
    printing_.asked.push_back(note);
  }

  HeadlessPrinting& printing_;
};

}  // namespace

std::unique_ptr<PrintJob> HeadlessPrinting::Ask(HWND owner, DWORD flags) {
  CString note;
  note.Format(_T("ask %u"), flags);
  asked.push_back(note);
  owners.push_back(owner);
  if (!agrees) return nullptr;
  return std::make_unique<RecordedJob>(*this);
}

}  // namespace lorv
