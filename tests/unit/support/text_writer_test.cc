/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/text_writer.h"

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

TEST(TextWriter, WritesTextsAsTheyArePrinted) {
  TextWriter out;
  const OwnedString text(g_string_new_len("a\0b", 3));
  out.add_text(text.get());
  out.add_text(nullptr);
  EXPECT_EQ(take(out), "a(null)");
}

TEST(LineWriter, WritesOneElementALine) {
  TextWriter out;
  LineWriter lines(out);
  const OwnedString text(g_string_new("x]]>y"));
  lines.plain_line("<List>\n");
  lines.number_line({"Number", 1}, -7);
  lines.word_line({"Word"}, "a&b");
  lines.text_line({"Text", 3}, text.get());
  lines.text_line({"Text", 3}, nullptr);
  lines.cdata_line({"Cdata", 0}, "c<d");
  EXPECT_EQ(take(out), "<List>\n"
                       "\t<Number>-7</Number>\n"
                       "\t\t<Word>a&b</Word>\n"
                       "\t\t\t<Text><![CDATA[x]]>y]]></Text>\n"
                       "\t\t\t<Text><![CDATA[(null)]]></Text>\n"
                       "<Cdata><![CDATA[c<d]]></Cdata>\n");
}

TEST(LineWriter, CutsALineBehindItsIndentation) {
  TextWriter out;
  LineWriter lines(out, {.indent = true, .limit = 9});
  lines.word_line({"A", 1}, "xyz");
  lines.word_line({"A", 1}, "x");
  lines.plain_line("123456789\n");
  EXPECT_EQ(take(out), "\t\t<A>xyz</\t\t<A>x</A>\t123456789");
}

}  // namespace
}  // namespace velkor
