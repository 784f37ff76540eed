#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Reads XML as it comes in, in blocks, without keeping it: memory is that of the longest mark or run of text.
namespace lorv::engine {

// The attributes of a mark, as they stand in it. Valid during the call that hands them out.
class XmlAttributes {
 public:
  explicit XmlAttributes(std::string_view raw) : rest_(raw) {}

  struct Attribute {
    std::string_view prefix;
    std::string_view name;   // without its prefix
    std::string_view value;  // entities not resolved
  };
  // The next one; false at the end.
  bool Next(Attribute& attribute);
  // The value of a name, without regard to prefixes; empty where it is not.
  std::string_view Value(std::string_view name) const;
  std::string_view PrefixedValue(std::string_view name) const;

 private:
  std::string_view Find(std::string_view name, bool prefixed) const;

  std::string_view rest_;
};

// What is reported of a document, in its order. Names come without their prefixes.
class XmlHandler {
 public:
  XmlHandler() = default;
  XmlHandler(const XmlHandler&) = delete;
  XmlHandler& operator=(const XmlHandler&) = delete;
  virtual ~XmlHandler() = default;

  virtual void Start(std::string_view name, XmlAttributes attributes) = 0;
  virtual void End(std::string_view name) = 0;
  // A piece of text; `raw` holds entities unless it is literal.
  virtual void Text(std::string_view raw, bool literal) = 0;
};

// Text is reported to the handler only while it wants it: that of a sheet between its marks is nobody's.
class XmlFeed {
 public:
  explicit XmlFeed(XmlHandler& handler) : handler_(handler) {}

  // Takes the next block; raises the engine's failure for what is no XML or is refused (document types,
  // closing marks of another name than what they close, marks beyond kMaxXmlToken, nesting beyond
  // kMaxXmlDepth, encodings other than UTF-8).
  void Feed(std::string_view block);
  void Finish();

 private:
  std::size_t Take(std::string_view from);
  std::size_t TakeSpecial(std::string_view mark);
  std::size_t TakeTag(std::string_view mark);
  void Open(std::string_view inside);
  void Close(std::string_view inside);

  XmlHandler& handler_;
  std::string kept_;
  // The names of the marks that are open, one behind the other, and where each begins.
  std::string open_names_;
  std::vector<std::size_t> open_;
  bool seen_root_ = false;
  bool begun_ = false;
};

// Text with its entities resolved and its line ends made one line feed each; UTF-8.
// Raises the engine's failure for an entity that is none of XML's own.
void AppendXmlText(std::string_view raw, bool literal, std::string& out);

}  // namespace lorv::engine
