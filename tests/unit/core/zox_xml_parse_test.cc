/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_xml_parse.h>

#include <string>

#include <gtest/gtest.h>

#include "support/owned.h"
#include "support/xml.h"

namespace velkor {
namespace {

class ZoxXmlParse : public testing::Test {
protected:
  /** The root of a small document. */
  xmlNode *root(const char *text) {
    document = xml::parse(text);
    return xmlDocGetRootElement(document.get());
  }
  gint32 integer(const char *text) {
    xmlNode *node = root(text);
    return zox_xml_parse_int(document.get(), node);
  }
  OwnedString string(const char *text) {
    xmlNode *node = root(text);
    return OwnedString(zox_xml_parse_string(document.get(), node));
  }
  gint32 attribute(const char *text, const char *name) {
    xmlNode *node = root(text);
    return zox_xml_parse_int_attr(document.get(), node, name);
  }

  xml::Document document;
};

TEST_F(ZoxXmlParse, IntegerIsTheNumberAtTheStart) {
  EXPECT_EQ(integer("<a>42</a>"), 42);
  EXPECT_EQ(integer("<a>\n -7 days</a>"), -7);
  EXPECT_EQ(integer("<a>+8</a>"), 8);
  EXPECT_EQ(integer("<a>1<![CDATA[2]]>&#51;<b>9</b></a>"), 123);
  EXPECT_EQ(integer("<a>x1</a>"), 0);
  EXPECT_EQ(integer("<a/>"), 0);
}

TEST_F(ZoxXmlParse, IntegerIsCutToItsLowBits) {
  EXPECT_EQ(integer("<a>4294967295</a>"), -1);
  EXPECT_EQ(integer("<a>4294967303</a>"), 7);
  EXPECT_EQ(integer("<a>-2147483648</a>"), G_MININT32);
}

TEST_F(ZoxXmlParse, StringJoinsTextAndCdata) {
  EXPECT_STREQ(string("<a>x<![CDATA[<y>]]>&amp;<b>no</b>z</a>")->str, "x<y>&z");
  EXPECT_STREQ(string("<a> </a>")->str, " ");
}

TEST_F(ZoxXmlParse, StringJoinsAnyNumberOfSections) {
  constexpr std::size_t count = 400000;
  std::string text = "<a>";
  for (std::size_t number = 0; number < count; ++number)
    text += "<![CDATA[]]]]><![CDATA[>]]>";
  const OwnedString joined = string((text + "</a>").c_str());
  EXPECT_EQ(joined->len, 3 * count);
  EXPECT_TRUE(g_str_has_prefix(joined->str, "]]>]]>"));
}

TEST_F(ZoxXmlParse, StringTakesEntitiesThatAreNotReplaced) {
  const std::string text = "<!DOCTYPE a [<!ENTITY e 'y'>]><a>x&e;z</a>";
  document.reset(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, 0));
  const OwnedString joined(
      zox_xml_parse_string(document.get(), xmlDocGetRootElement(document.get())));
  EXPECT_STREQ(joined->str, "xyz");
}

TEST_F(ZoxXmlParse, NoTextIsNotAnEmptyText) {
  EXPECT_EQ(string("<a/>"), nullptr);
  EXPECT_EQ(string("<a><b>x</b></a>"), nullptr);
  EXPECT_EQ(string("<a><!-- x --></a>"), nullptr);
  const OwnedString empty = string("<a><![CDATA[]]></a>");
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(empty->len, 0U);
}

TEST_F(ZoxXmlParse, AttributeIsReadLikeAnInteger) {
  EXPECT_EQ(attribute("<a Code=' 12x'/>", "Code"), 12);
  EXPECT_EQ(attribute("<a Code='4294967295'/>", "Code"), -1);
  EXPECT_EQ(attribute("<a code='3'/>", "Code"), 0);
  EXPECT_EQ(attribute("<a/>", "Code"), 0);
}

using ZoxXmlParseDeathTest = ZoxXmlParse;

TEST_F(ZoxXmlParseDeathTest, AttributeNeedsAName) {
  EXPECT_DEATH(attribute("<a/>", nullptr), "assertion failed: \\(attrName\\)");
}

}  // namespace
}  // namespace velkor
