/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/text_writer.h"

#include <cstring>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "support/text.h"

namespace velkor {
namespace {

std::string take(TextWriter &writer) {
  const OwnedString text(writer.release());
  EXPECT_EQ(text->str[text->len], '\0');
  return std::string(view_of(text.get()));
}

TEST(TextWriter, GrowsAsNeeded) {
  TextWriter out;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    out.add("abc");
    out.add_number(i);
    expected += "abc" + std::to_string(i);
  }
  out.add_number(std::numeric_limits<gint64>::min());
  EXPECT_EQ(take(out), expected + "-9223372036854775808");
}

TEST(TextWriter, WritesSeveralPartsAtOnce) {
  TextWriter out;
  std::string expected;
  for (int i = 0; i < 2000; ++i) {
    out.add_all("een", std::string(static_cast<std::size_t>(i % 7), 'x'), std::string_view(), "!");
    expected += "een" + std::string(static_cast<std::size_t>(i % 7), 'x') + "!";
  }
  EXPECT_EQ(take(out), expected);
}

TEST(TextWriter, KeepsWhatWasPutAndNotItsPadding) {
  TextWriter out;
  for (int i = 0; i < 3000; ++i) {
    out.put(8, [](char *place) {
      std::memcpy(place, "ab------", 8);
      return place + 2;
    });
  }
  const std::string text = take(out);
  EXPECT_EQ(text.size(), 6000U);
  EXPECT_EQ(text.find('-'), std::string::npos);
}

TEST(LineWriter, WritesOneElementALine) {
  TextWriter out;
  LineWriter lines(out);
  lines.plain_line("<List>\n");
  lines.number_line({"Number", 1}, -7);
  lines.word_line({"Word"}, "a&b");
  lines.cdata_line({"Text", 3}, "x]]>y");
  lines.cdata_line({"Cdata", 0}, "c<d");
  EXPECT_EQ(take(out), "<List>\n"
                       "\t<Number>-7</Number>\n"
                       "\t\t<Word>a&b</Word>\n"
                       "\t\t\t<Text><![CDATA[x]]>y]]></Text>\n"
                       "<Cdata><![CDATA[c<d]]></Cdata>\n");
}

TEST(LineWriter, CutsALine) {
  TextWriter out;
  LineWriter lines(out, {.limit = 9});
  lines.word_line({"A", 1}, "xyz");
  lines.word_line({"A", 1}, "x");
  lines.plain_line("123456789\n");
  EXPECT_EQ(take(out), "\t<A>xyz</\t<A>x</A>123456789");
}

}  // namespace
}  // namespace velkor
