#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/objects/exceptions.h"
#include "tests/support/print.h"

namespace lorv::engine {
namespace {

// Writes down what is reported of a document.
class Report : public XmlHandler {
 public:
  void Start(std::string_view name, XmlAttributes /*attributes*/) override {
    text += "<" + std::string(name);
  }
  void End(std::string_view name) override { text += ">" + std::string(name); }
  void Text(std::string_view raw, bool /*literal*/) override { text += "=" + std::string(raw); }

  std::string text;
};

constexpr const char* kInvalid = "工作簿文件已损坏：其中的XML无效。";

// What is reported of a document that comes in blocks of a size; the refusal where it is refused.
std::string Read(const std::string& document, std::size_t block) {
  Report reported;
  XmlFeed feed(reported);
  try {
    for (std::size_t at = 0; at < document.size(); at += block) {
      feed.Feed(std::string_view(document).substr(at, block));
    }
    feed.Finish();
    return reported.text;
  } catch (COleDispatchException* failure) {
    std::string text = test::Utf8(failure->m_strDescription);
    failure->Delete();
    return text;
  }
}

// The same in every cut.
std::string Read(const std::string& document) {
  std::string whole = Read(document, document.size());
  for (std::size_t block = 1; block < document.size(); ++block) {
    EXPECT_EQ(Read(document, block), whole) << document << " in blocks of " << block;
  }
  return whole;
}

TEST(XmlFeed, MarksAndTextsInTheirOrder) {
  EXPECT_EQ(Read("<a><b>x</b><c/>y</a>"), "<a<b=x>b<c>c=y>a");
  EXPECT_EQ(Read("<x:a><b x='1'>&amp;</b ></x:a\n>"), "<a<b=&amp;>b>a");
  EXPECT_EQ(Read("<?x?><!-- </b> --><a><![CDATA[</b>]]></a>"), "<a=</b>>a");
}

TEST(XmlFeed, AClosingMarkOfAnotherNameIsRefused) {
  for (const char* const document :
       {"<a></b>", "<a><b></a></b>", "<a><b></c></a>", "<ab></a>", "<a></ab>", "<a><b></ab></a>",
        "<a><bc></c></a>", "<a><b/></b></a>", "<x:a></a>", "<a></x:a>", "<x:a></y:a>", "<a></A>", "<a></>",
        "<a></ a>", "<a></a b>", "</a>", "<a></a></a>", "<a><b></b>", "<a><b></a>"}) {
    EXPECT_EQ(Read(document), kInvalid) << document;
  }
}

TEST(XmlFeed, NamesOfOpenMarksHaveALimitTogether) {
  const auto nested = [](std::size_t length) {
    const std::string name(length / 4, 'n');
    const std::string last = name + std::string(length % 4, 'n');
    return "<" + name + "><" + name + "><" + name + "><" + last + "/></" + name + "></" + name + "></" +
           name + ">";
  };
  EXPECT_EQ(Read(nested(65536), 4096).substr(0, 2), "<n");
  EXPECT_EQ(Read(nested(65537), 4096), kInvalid);
  // Closed ones no longer count.
  std::string many = "<a>";
  const std::string name(1000, 'n');
  for (int i = 0; i < 100; ++i) many += "<" + name + "></" + name + ">";
  EXPECT_NE(Read(many + "</a>", 4096), kInvalid);
}

TEST(XmlFeed, NestingHasALimit) {
  const auto nested = [](int depth) {
    std::string open;
    std::string close;
    for (int i = 0; i < depth; ++i) {
      open += "<a>";
      close += "</a>";
    }
    return open + close;
  };
  EXPECT_NE(Read(nested(256), 100), kInvalid);
  EXPECT_EQ(Read(nested(257), 100), kInvalid);
}

}  // namespace
}  // namespace lorv::engine
