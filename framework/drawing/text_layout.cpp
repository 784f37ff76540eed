#include "framework/drawing/text_layout.h"

#include <algorithm>

// The lines of DrawText: parted, broken, shortened and placed from the extents that a canvas gives. It draws
// nothing and keeps nothing, so measuring (DT_CALCRECT) and drawing can never differ.

namespace lorv {
namespace {

// From the radicals upwards; a line may be broken before and behind each of these characters.
constexpr TCHAR kFirstIdeograph = 0x2E80;
constexpr int kTabCharacters = 8;

// Whether the two units are the halves of one character, which must not be parted.
bool IsPair(TCHAR first, TCHAR second) {
  return first >= 0xD800 && first <= 0xDBFF && second >= 0xDC00 && second <= 0xDFFF;
}

int UnitsOfFirst(const CString& text, int from) {
  return IsPair(text.GetAt(from), text.GetAt(from + 1)) ? 2 : 1;
}

class Layout {
 public:
  Layout(const Canvas& canvas, const RECT& rect, UINT flags)
      : canvas_(canvas), rect_(rect), flags_(flags), metrics_(canvas.Metrics()) {}

  PlacedText Run(TextView text);

 private:
  bool Has(UINT flag) const { return (flags_ & flag) == flag; }
  int Width(TextView text) const { return canvas_.Extent(text).cx; }
  int Room() const { return rect_.right - rect_.left; }
  void AddParagraph(TextView text);
  void AddBroken(const PlacedLine& line);
  int FittingUnits(const CString& text, int from) const;
  int BreakAt(const CString& text, int from, int fitting) const;
  PlacedLine Unmarked(TextView text) const;
  void AppendTab(CString& text) const;
  void Shorten();
  int Longest(const CString& text, int room) const;
  void PlaceLines();

  const Canvas& canvas_;
  const RECT& rect_;
  UINT flags_;
  TEXTMETRIC metrics_;
  PlacedText done_;
};

PlacedText Layout::Run(TextView text) {
  if (Has(DT_SINGLELINE)) {
    done_.lines.push_back(Unmarked(text));
  } else {
    std::size_t start = 0;
    for (std::size_t end = 0; start <= text.size(); start = end + 1) {
      end = std::min(text.find_first_of(_T("\r\n"), start), text.size());
      // A line end at the text's end begins no further line, but an empty text is one line.
      if (end == text.size() && start == end && start != 0) break;
      AddParagraph(text.substr(start, end - start));
      if (text.substr(end, 2) == _T("\r\n")) ++end;
    }
  }
  Shorten();
  PlaceLines();
  return std::move(done_);
}

void Layout::AddParagraph(TextView text) {
  // Marks are taken out before measuring, as "&" has no width on the screen.
  const PlacedLine line = Unmarked(text);
  if (Has(DT_WORDBREAK) && Width(line.text.View()) > Room())
    AddBroken(line);
  else
    done_.lines.push_back(line);
}

void Layout::AddBroken(const PlacedLine& line) {
  const int length = line.text.GetLength();
  for (int from = 0; from < length;) {
    const int end = BreakAt(line.text, from, FittingUnits(line.text, from));
    PlacedLine part;
    part.text = line.text.Mid(from, end - from);
    if (line.mark >= from && line.mark < end) part.mark = line.mark - from;
    if (end < length) part.text.TrimRight(_T(' '));
    done_.lines.push_back(std::move(part));
    from = end;
  }
}

// How many units from a position on fit, at least the first character.
int Layout::FittingUnits(const CString& text, int from) const {
  return std::max(UnitsOfFirst(text, from), Longest(text.Mid(from), Room()));
}

// The longest beginning that is no wider than the room.
int Layout::Longest(const CString& text, int room) const {
  int fits = 0;
  int over = text.GetLength() + 1;
  // By halving, since each extent is a call into the peer: a long cell costs ten calls and not one a
  // character.
  while (over - fits > 1) {
    const int middle = fits + (over - fits) / 2;
    (Width(text.View().substr(0, static_cast<std::size_t>(middle))) <= room ? fits : over) = middle;
  }
  return IsPair(text.GetAt(fits - 1), text.GetAt(fits)) ? fits - 1 : fits;
}

int Layout::BreakAt(const CString& text, int from, int fitting) const {
  const int length = text.GetLength();
  int end = from + fitting;
  while (end < length && text.GetAt(end) == _T(' ')) ++end;  // blanks hang over the edge
  if (end >= length) return length;
  const auto breaks = [&](int at) {
    return text.GetAt(at - 1) == _T(' ') || text.GetAt(at - 1) >= kFirstIdeograph ||
           text.GetAt(at) >= kFirstIdeograph;
  };
  for (int at = end; at > from; --at)
    if (breaks(at)) return at;
  if (Has(DT_EDITCONTROL)) return end;
  // A word wider than the rectangle stays whole and runs over the edge.
  while (end < length && !breaks(end)) ++end;
  return end;
}

PlacedLine Layout::Unmarked(TextView text) const {
  PlacedLine line;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool prefix = text[i] == _T('&') && !Has(DT_NOPREFIX);
    // A lone "&" at the end is not shown.
    if (prefix && ++i == text.size()) break;
    if (prefix && text[i] != _T('&') && !Has(DT_HIDEPREFIX)) line.mark = line.text.GetLength();
    if (text[i] == _T('\t') && Has(DT_EXPANDTABS))
      AppendTab(line.text);
    else
      line.text.AppendChar(text[i]);
  }
  return line;
}

// Blanks up to the next stop, as a run of text has no gaps of its own.
void Layout::AppendTab(CString& text) const {
  const int blank = std::max(1, Width(_T(" ")));
  const int stop = std::max(1, kTabCharacters * static_cast<int>(metrics_.tmAveCharWidth));
  const int width = Width(text.View());
  const int target = (width / stop + 1) * stop;
  for (int at = width; at + blank <= target || at == width; at += blank) text.AppendChar(_T(' '));
}

void Layout::Shorten() {
  if (done_.lines.empty() || (flags_ & (DT_END_ELLIPSIS | DT_WORD_ELLIPSIS | DT_PATH_ELLIPSIS)) == 0) return;
  for (PlacedLine& line : done_.lines) {
    if (Width(line.text.View()) <= Room()) continue;
    // DT_WORD_ELLIPSIS shortens every line that is too wide, the other two the last one only.
    if (!Has(DT_WORD_ELLIPSIS) && &line != &done_.lines.back()) continue;
    const int room = Room() - Width(_T("..."));
    const int tail = Has(DT_PATH_ELLIPSIS) ? line.text.ReverseFind(_T('\\')) : -1;
    const CString end = tail > 0 ? line.text.Mid(tail) : CString();
    // At least one character stays before the dots, or all shortened cells of a column would look alike.
    const int least = end.IsEmpty() ? UnitsOfFirst(line.text, 0) : 0;
    const int keep = std::max(Longest(line.text, room - Width(end.View())), least);
    line.text = line.text.Left(keep) + _T("...") + end;
    if (line.mark >= keep) line.mark = -1;
  }
}

void Layout::PlaceLines() {
  const int height = metrics_.tmHeight + (Has(DT_EXTERNALLEADING) ? metrics_.tmExternalLeading : 0);
  const int total = height * static_cast<int>(done_.lines.size());
  int y = rect_.top;
  // Several lines always begin at the top: the system passes over these two flags then.
  if (Has(DT_SINGLELINE) && Has(DT_BOTTOM)) y = rect_.bottom - total;
  if (Has(DT_SINGLELINE) && Has(DT_VCENTER)) y = rect_.top + (rect_.bottom - rect_.top - total) / 2;
  done_.bounds = {rect_.left, y, rect_.left, y + total};
  for (PlacedLine& line : done_.lines) {
    const int width = Width(line.text.View());
    int x = rect_.left;
    if (Has(DT_CENTER)) x += (Room() - width) / 2;
    if (Has(DT_RIGHT)) x = rect_.right - width;
    line.at = {x, y};
    y += height;
    done_.bounds.left = std::min<LONG>(done_.bounds.left, x);
    done_.bounds.right = std::max<LONG>(done_.bounds.right, x + width);
  }
}

}  // namespace

PlacedText LayOutText(const Canvas& canvas, TextView text, const RECT& rect, UINT flags) {
  return Layout(canvas, rect, flags).Run(text);
}

}  // namespace lorv
