#include "platform/models/transfer/html_format.h"

#include <charconv>
#include <cstddef>
#include <optional>

// The clipboard's form of HTML: a header with byte offsets, then the page. Writers of other programs get the
// offsets wrong, so where they do not fit the marks in the text count.

namespace lorv {
namespace {

constexpr std::string_view kStart = "<!--StartFragment-->";
constexpr std::string_view kEnd = "<!--EndFragment-->";
constexpr std::string_view kBefore = "<html><body>\r\n";
constexpr std::string_view kBehind = "\r\n</body></html>";
// Fixed, so that the header's length does not depend on the numbers in it.
constexpr std::size_t kDigits = 10;

std::string Field(std::string_view name, std::size_t value) {
  std::string digits = std::to_string(value);
  digits.insert(0, kDigits - digits.size(), '0');
  return std::string(name) + ":" + digits + "\r\n";
}

std::string Header(std::size_t html, std::size_t start, std::size_t end, std::size_t html_end) {
  return "Version:0.9\r\n" + Field("StartHTML", html) + Field("EndHTML", html_end) +
         Field("StartFragment", start) + Field("EndFragment", end);
}

std::optional<std::size_t> FieldOf(std::string_view data, std::string_view name) {
  const std::size_t at = data.find(name);
  if (at == std::string_view::npos) return std::nullopt;
  const char* const first = data.data() + at + name.size();
  std::size_t value = 0;
  const auto read = std::from_chars(first, data.data() + data.size(), value);
  return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

std::string_view BetweenMarks(std::string_view data) {
  const std::size_t start = data.find(kStart);
  if (start == std::string_view::npos) return {};
  const std::size_t from = start + kStart.size();
  const std::size_t end = data.find(kEnd, from);
  return end == std::string_view::npos ? std::string_view() : data.substr(from, end - from);
}

}  // namespace

std::string ToHtmlFormat(std::string_view fragment) {
  // Every header is as long as this one.
  const std::size_t html = Header(0, 0, 0, 0).size();
  const std::size_t start = html + kBefore.size() + kStart.size();
  const std::size_t end = start + fragment.size();
  const std::size_t html_end = end + kEnd.size() + kBehind.size();
  std::string data = Header(html, start, end, html_end);
  for (const std::string_view part : {kBefore, kStart, fragment, kEnd, kBehind}) data += part;
  return data;
}

std::string FragmentOfHtmlFormat(std::string_view data) {
  const auto start = FieldOf(data, "StartFragment:");
  const auto end = FieldOf(data, "EndFragment:");
  const bool fits = start && end && *start <= *end && *end <= data.size();
  return std::string(fits ? data.substr(*start, *end - *start) : BetweenMarks(data));
}

}  // namespace lorv
