/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/xml.h"

#include <cstdarg>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor {
namespace {

void stay_silent(void *, const char *, ...) {}

/** Keeps libxml2's diagnoses off the test's output. */
class XmlParse : public testing::Test {
protected:
  XmlParse() { xmlSetGenericErrorFunc(nullptr, stay_silent); }
  ~XmlParse() override { xmlSetGenericErrorFunc(nullptr, nullptr); }

  static std::string text_of_root(const std::string &text) {
    const auto document = xml::parse(text);
    if (!document)
      return "unusable";
    const xml::Chars content(
        xmlNodeListGetString(document.get(), xmlDocGetRootElement(document.get())->children, 1));
    return content ? xml::chars(content.get()) : "";
  }
};

TEST_F(XmlParse, RefusesWhatIsNotWellFormed) {
  EXPECT_EQ(xml::parse("<a>"), nullptr);
  EXPECT_EQ(xml::parse(""), nullptr);
  EXPECT_EQ(xml::parse("text"), nullptr);
}

TEST_F(XmlParse, ReplacesEntities) {
  EXPECT_EQ(text_of_root("<a>&amp;&#65;</a>"), "&A");
  EXPECT_EQ(text_of_root("<!DOCTYPE a [<!ENTITY e 'text'>]><a>&e;</a>"), "text");
}

TEST_F(XmlParse, NeverOpensAFile) {
  const test::TemporaryDirectory directory;
  const std::string path = directory.path() / "secret.txt";
  test::write_file(path, "secret");
  const std::string text = "<!DOCTYPE a [<!ENTITY e SYSTEM 'file://" + path + "'>]><a>x&e;y</a>";
  EXPECT_EQ(text_of_root(text).find("secret"), std::string::npos);
  const std::string subset = "<!DOCTYPE a SYSTEM 'file://" + path + "'><a>x</a>";
  EXPECT_EQ(text_of_root(subset), "x");
}

TEST_F(XmlParse, RefusesEntitiesThatGrowWithoutBound) {
  std::string text = "<!DOCTYPE a [<!ENTITY e0 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa'>";
  for (int level = 1; level < 12; ++level) {
    text += "<!ENTITY e" + std::to_string(level) + " '";
    for (int copy = 0; copy < 10; ++copy)
      text += "&e" + std::to_string(level - 1) + ";";
    text += "'>";
  }
  EXPECT_EQ(text_of_root(text + "]><a>&e11;</a>"), "unusable");
}

/** What libxml2 said last on this thread. */
std::string said;

[[gnu::format(printf, 2, 3)]] void remember(void *, const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const OwnedText text(g_strdup_vprintf(format, arguments));
  va_end(arguments);
  said = text.get();
}

std::string repeated(std::string_view piece, int count) {
  std::string text;
  for (int number = 0; number < count; ++number)
    text += piece;
  return text;
}

/** `count` elements or attributes, each of another name. */
std::string many_names(int count, std::string_view before, std::string_view behind) {
  std::string text;
  for (int number = 0; number < count; ++number)
    text.append(before).append("n").append(std::to_string(number)).append(behind);
  return text;
}

class XmlBounds : public XmlParse {
protected:
  XmlBounds() {
    xmlSetGenericErrorFunc(nullptr, remember);
    said.clear();
  }
};

TEST_F(XmlBounds, TakesNodesUpToTheBound) {
  const std::string text = "<a><b c='1'/><![CDATA[d]]><!--e--><?f g?></a>";
  EXPECT_NE(xml::parse(text, 6), nullptr);
  EXPECT_EQ(said, "");
  EXPECT_EQ(xml::parse(text, 5), nullptr);
  EXPECT_EQ(said, "Document of too many nodes\n");
}

TEST_F(XmlBounds, CountsNoTexts) {
  EXPECT_EQ(text_of_root("<a>" + repeated("x&amp;y&lt;\n", 300000) + "</a>").size(), 1500000U);
}

TEST_F(XmlBounds, RefusesAMillionEmptyElements) {
  EXPECT_NE(xml::parse("<a>" + repeated("<b/>", 999999) + "</a>"), nullptr);
  EXPECT_EQ(xml::parse("<a>" + repeated("<b/>", 1000000) + "</a>"), nullptr);
  EXPECT_EQ(said, "Document of too many nodes\n");
}

TEST_F(XmlBounds, CountsWhatEntitiesHold) {
  const std::string declared = "<!DOCTYPE a [<!ENTITY e '<b c=\"\"/><b/>'>]><a>";
  EXPECT_NE(xml::parse(declared + repeated("&e;", 8) + "</a>", 1000), nullptr);
  EXPECT_EQ(xml::parse(declared + repeated("&e;", 9) + "</a>", 1000), nullptr);
  EXPECT_EQ(said, "Document of too many nodes\n");
}

TEST_F(XmlBounds, CountsUsesOfAnEntityWithoutNodes) {
  const std::string declared = "<!DOCTYPE a [<!ENTITY e 'x'>]><a>";
  EXPECT_EQ(text_of_root(declared + repeated("&e;", 5000) + "</a>").size(), 5000U);
  EXPECT_EQ(text_of_root(declared + repeated("&e;", 15000) + "</a>"), "unusable");
}

TEST_F(XmlBounds, RefusesTooManyNames) {
  EXPECT_NE(xml::parse("<a>" + many_names(9000, "<", "/>") + "</a>"), nullptr);
  EXPECT_EQ(said, "");
  EXPECT_EQ(xml::parse("<a>" + many_names(12000, "<", "/>") + "</a>"), nullptr);
  EXPECT_EQ(xml::parse("<a" + many_names(12000, " ", "=''") + "/>"), nullptr);
  EXPECT_EQ(xml::parse("<a" + many_names(12000, " xmlns:", "='u'") + "/>"), nullptr);
  EXPECT_EQ(xml::parse("<!DOCTYPE a [" + many_names(12000, "<!ENTITY ", " ''>") + "]><a/>"),
            nullptr);
}

TEST_F(XmlBounds, SaysThatThereAreTooManyNames) {
  const std::string text = "<a>" + many_names(12000, "<", "/>") + "</a>";
  xml::Source source(text);
  xmlSAXHandler handler = xml::closed_handler();
  const xml::Parser parser = source.make_parser(handler);
  EXPECT_FALSE(source.held_back());
  xmlParseDocument(parser.get());
  const xml::Document document(parser->myDoc);
  parser->myDoc = nullptr;
  EXPECT_TRUE(source.held_back());
  EXPECT_EQ(parser->wellFormed, 0);
}

TEST_F(XmlBounds, TextsAreNoNames) {
  std::string text = "<a>";
  for (int number = 0; number < 40000; ++number)
    text += "<b>" + std::to_string(number % 20000) + "</b>";
  EXPECT_NE(xml::parse(text + "</a>"), nullptr);
}

TEST_F(XmlBounds, RefusesAFarTooLongListOfDeclarations) {
  const auto declaring = [](int count) {
    return "<!DOCTYPE a [<!ELEMENT a (a" + repeated(",a", count) + ")>]><a/>";
  };
  EXPECT_NE(xml::parse(declaring(400000)), nullptr);
  EXPECT_EQ(xml::parse(declaring(600000)), nullptr);
}

TEST_F(XmlBounds, SectionsAreNotJoined) {
  const xml::Document document = xml::parse("<a>" + repeated("<![CDATA[x]]>", 500000) + "</a>");
  ASSERT_NE(document, nullptr);
  const xmlNode *root = xmlDocGetRootElement(document.get());
  // To join one to those before it would copy them all.
  EXPECT_EQ(xmlChildElementCount(const_cast<xmlNode *>(root)), 0U);
  EXPECT_STREQ(xml::chars(root->children->content), "x");
  EXPECT_STREQ(xml::chars(root->last->content), "x");
}

TEST_F(XmlParse, RecoversWhatCanBeRead) {
  const xml::Document document = xml::recover("<a><b>1</b><b>&niets; 2</b><b>3</a>");
  ASSERT_NE(document, nullptr);
  int count = 0;
  for (const xmlNode *child : xml::Siblings(xmlDocGetRootElement(document.get())->children))
    count += xml::is_named_exactly(child, "b") ? 1 : 0;
  EXPECT_EQ(count, 3);
  EXPECT_EQ(xml::recover(""), nullptr);
  EXPECT_EQ(xml::recover("<a>" + repeated("<b/>", 1000000)), nullptr);
}

TEST_F(XmlParse, OnlyElementsHaveAName) {
  const xml::Document document = xml::parse("<a><Kind/><?Kind iets?><!-- Kind -->Kind</a>");
  int named = 0;
  for (const xmlNode *child : xml::Siblings(xmlDocGetRootElement(document.get())->children))
    named += xml::is_named(child, "kIND") ? 1 : 0;
  EXPECT_EQ(named, 1);
}

/** The name of the root, or null's stand-in, behind what is said on standard error. */
std::string checked_root(const char *text) {
  const xml::Document document = xml::parse(text);
  testing::internal::CaptureStderr();
  const xmlNode *root = xml::root_named(document, "Wortel", "lees");
  return testing::internal::GetCapturedStderr() +
         (root == nullptr ? "-" : std::string(xml::name_of(root)));
}

using XmlRoot = XmlParse;

TEST_F(XmlRoot, IsNamedRegardlessOfCase) {
  EXPECT_EQ(checked_root("<Wortel/>"), "Wortel");
  EXPECT_EQ(checked_root("<wORTEL/>"), "wORTEL");
}

TEST_F(XmlRoot, MissingDocumentIsReported) {
  EXPECT_EQ(checked_root(""), "lees(): empty document!\n-");
}

TEST_F(XmlRoot, AnotherRootIsReported) {
  EXPECT_EQ(checked_root("<Ander><Wortel/></Ander>"),
            "lees(): document of the wrong type, root node != Wortel-");
}

TEST(XmlStorable, TellsWhatADocumentCanHold) {
  for (const char *text : {"", "a\t\n\r~", "\u00e9\ufffd\U0001ffff"})
    EXPECT_TRUE(xml::is_storable(text)) << text;
  for (const char *text : {"\1", "a\x1f", "\ufffe", "\u00e9\uffff", "\xe9", "\xed\xa0\x80"})
    EXPECT_FALSE(xml::is_storable(text)) << text;
  EXPECT_FALSE(xml::is_storable(std::string_view("a\0b", 3)));
}

TEST(XmlStorable, KeepsWhatADocumentCanHold) {
  EXPECT_EQ(xml::storable(""), "");
  const std::string_view text = "a\t\n\r <&>]]> \u00e9\u20ac\U0001f600\ufffd";
  EXPECT_EQ(xml::storable(text), text);
}

TEST(XmlStorable, LeavesOutWhatNoDocumentCanHold) {
  EXPECT_EQ(xml::storable("a\1b\x1f"
                          "c\uffff"
                          "d\ufffe."),
            "abcd.");
  EXPECT_EQ(xml::storable(std::string_view("\b", 1)), "");
}

TEST(XmlStorable, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(xml::storable("caf\xe9!"), "caf\ufffd!");
  const std::string document = "<a>" + xml::storable("\xff\1\xc3") + "</a>";
  EXPECT_NE(xml::parse(document), nullptr);
}

TEST(XmlCdata, EndsASectionWithinTheMark) {
  EXPECT_EQ(xml::cdata(""), "<![CDATA[]]>");
  EXPECT_EQ(xml::cdata("a]]>b]]"), "<![CDATA[a]]]]><![CDATA[>b]]]]>");
  EXPECT_EQ(xml::cdata("]]>]]>"), "<![CDATA[]]]]><![CDATA[>]]]]><![CDATA[>]]>");
}

TEST(XmlCdata, CanBeReadBackHoweverLongItIs) {
  for (const std::string_view piece : {"\u00e9", "\u20ac", "\U0001f600", "]]>"}) {
    std::string text = "a";  // characters stand across the border of eight million bytes
    text += repeated(piece, static_cast<int>(piece == "]]>" ? 300000 : 8'100'000 / piece.size()));
    const xml::Document document = xml::parse("<a>" + xml::cdata(text) + "</a>");
    ASSERT_NE(document, nullptr) << piece;
    std::string read;
    for (const xmlNode *section : xml::Siblings(xmlDocGetRootElement(document.get())->children))
      read += xml::chars(section->content);
    EXPECT_TRUE(read == text) << piece;
  }
}

/** The root as it is written. */
std::string written(const xml::Document &document) {
  const std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>> buffer(xmlBufferCreate());
  xmlNodeDump(buffer.get(), document.get(), xmlDocGetRootElement(document.get()), 0, 0);
  return xml::chars(xmlBufferContent(buffer.get()));
}

TEST(XmlTree, GrowsByElements) {
  const xml::Document document = xml::new_document("Root");
  EXPECT_EQ(written(document), "<Root/>");
  xmlNode *element = xml::add_element(xmlDocGetRootElement(document.get()), "Item");
  xml::add_text(element, "Text", "a<b&c");
  xml::add_text(element, "Nothing", nullptr);
  xml::add_number(element, "Number", std::numeric_limits<gint32>::min());
  xml::add_cdata(element, "Cdata", std::string_view("a<b&c").substr(0, 4));
  EXPECT_EQ(written(document), "<Root><Item><Text>a&lt;b&amp;c</Text><Nothing/>"
                               "<Number>-2147483648</Number><Cdata><![CDATA[a<b&]]></Cdata>"
                               "</Item></Root>");
}

TEST(XmlTree, GrowsWithoutADocument) {
  const xml::Node element(xmlNewNode(nullptr, xml::chars("Item")));
  xml::add_cdata(element.get(), "Cdata", "text");
  EXPECT_STREQ(xml::chars(element->children->children->content), "text");
}

TEST(XmlIsNamed, LetterCaseCountsOnRequest) {
  const xml::Document document = xml::new_document("Root");
  const xmlNode *root = xmlDocGetRootElement(document.get());
  EXPECT_TRUE(xml::is_named(root, "rOOT"));
  EXPECT_FALSE(xml::is_named(root, "Roo"));
  EXPECT_TRUE(xml::is_named_exactly(root, "Root"));
  EXPECT_FALSE(xml::is_named_exactly(root, "rOOT"));
}

}  // namespace
}  // namespace velkor
