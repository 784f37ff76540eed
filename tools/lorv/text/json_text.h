#pragma once

#include <string>
#include <string_view>

namespace lorv::tool {

// Writes one JSON value, piece by piece, with line ends and indents so that a person can read it too.
//
//   JsonText j;  j.Open('{');  j.Key("a").Number(1.5);  j.Close('}');  j.Text()  gives "{\n  \"a\": 1.5\n}\n"
class JsonText {
 public:
  // '{' or '['; each is closed by its partner.
  void Open(char bracket);
  void Close(char bracket);
  JsonText& Key(std::string_view key);
  void String(std::string_view utf8);
  // NaN and infinities become null: JSON has no other word for them.
  void Number(double value);
  void Number(long long value);
  void Bool(bool value);
  void Null();
  std::string Text() const { return text_ + "\n"; }

 private:
  void BeforeValue();
  void NewLine();
  void Quoted(std::string_view utf8);

  std::string text_;
  int depth_ = 0;
  bool first_ = true;  // nothing stands in the open bracket yet
  bool after_key_ = false;
};

// The shortest digits that give the same number again.
//
//   ShortestReal(0.1)  gives "0.1"
std::string ShortestReal(double value);

// At most 15 significant digits, in which 0.1+0.2 is 0.3; never "-0".
std::string PlainReal(double value);

}  // namespace lorv::tool
