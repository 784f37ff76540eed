#include "framework/windows/menu_template.h"

#include <cstdint>

// The two forms differ in widths and alignment; both are little-endian sequences in which the last entry of a
// menu carries a mark, and the entries of a submenu follow it at once.

namespace lorv {
namespace {

constexpr UINT kLastEntry = 0x80;
constexpr UINT kOpensShort = 0x10;
constexpr UINT kOpensLong = 0x01;
constexpr UINT kShortFlags = MF_GRAYED | MF_DISABLED | MF_CHECKED | MF_MENUBREAK | MF_MENUBARBREAK;
constexpr UINT kLongSeparator = 0x800;
constexpr std::size_t kMark = 4;  // bytes before the count of what stands in front of the entries

class TemplateReader {
 public:
  explicit TemplateReader(std::string_view bytes) : bytes_(bytes) {}

  std::optional<MenuModel> Read() {
    const UINT version = Number(2);
    const UINT skipped = Number(2);
    at_ = kMark + skipped;
    MenuModel menu;
    if (version > 1) return std::nullopt;
    const bool done = version == 0 ? ReadShort(menu, 0) : ReadLong(menu, 0);
    return done ? std::optional(std::move(menu)) : std::nullopt;
  }

 private:
  UINT Number(std::size_t size) {
    UINT number = 0;
    // Bytes that are not there read as 0 and are remembered: who reads looks at `cut_` once an entry.
    if (size > bytes_.size() || at_ > bytes_.size() - size) {
      cut_ = true;
      return 0;
    }
    for (std::size_t i = size; i-- > 0;) number = number << 8U | static_cast<unsigned char>(bytes_[at_ + i]);
    at_ += size;
    return number;
  }

  CString Text() {
    CString text;
    for (UINT unit = Number(2); unit != 0 && !cut_; unit = Number(2)) text += static_cast<TCHAR>(unit);
    return text;
  }

  // Entries of the long form begin at a multiple of four bytes.
  void Align() { at_ = (at_ + 3) / 4 * 4; }

  bool ReadShort(MenuModel& menu, int depth) {
    for (UINT options = 0; (options & kLastEntry) == 0;) {
      options = Number(2);
      MenuEntry entry;
      const bool opens = (options & kOpensShort) != 0;
      if (!opens) entry.id = Number(2);
      entry.text = Text();
      entry.flags = options & kShortFlags;
      // The short form has no mark for a separator: it is an entry with neither number nor text.
      if (!opens && entry.id == 0 && entry.text.IsEmpty()) entry.flags |= MF_SEPARATOR;
      if (cut_ || (opens && !ReadBelow(entry, depth, &TemplateReader::ReadShort))) return false;
      menu.entries.push_back(std::move(entry));
    }
    return true;
  }

  bool ReadLong(MenuModel& menu, int depth) {
    for (UINT marks = 0; (marks & kLastEntry) == 0;) {
      Align();
      const UINT type = Number(4);
      const UINT state = Number(4);
      MenuEntry entry;
      entry.id = Number(4);
      marks = Number(2);
      entry.text = Text();
      entry.flags = (type & (MF_MENUBREAK | MF_MENUBARBREAK)) | (state & kShortFlags);
      const bool opens = (marks & kOpensLong) != 0;
      if (!opens && (type & kLongSeparator) != 0) entry.flags |= MF_SEPARATOR;
      if (opens) {
        entry.id = 0;
        Align();
        static_cast<void>(Number(4));  // the page of help
      }
      if (cut_ || (opens && !ReadBelow(entry, depth, &TemplateReader::ReadLong))) return false;
      menu.entries.push_back(std::move(entry));
    }
    return true;
  }

  bool ReadBelow(MenuEntry& entry, int depth, bool (TemplateReader::*read)(MenuModel&, int)) {
    auto below = std::make_shared<MenuModel>();
    // The depth comes from the resource and must not exhaust the stack.
    if (depth + 1 >= kMaxMenuDepth || !(this->*read)(*below, depth + 1)) return false;
    entry.submenu = std::move(below);
    return true;
  }

  std::string_view bytes_;
  std::size_t at_ = 0;
  bool cut_ = false;
};

}  // namespace

std::optional<MenuModel> ParseMenuTemplate(std::string_view bytes) {
  return TemplateReader(bytes).Read();
}

}  // namespace lorv
