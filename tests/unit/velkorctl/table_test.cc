/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/table.h"

#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

using Align = Column::Align;

Table sample() {
  Table table({{"ID", Align::right, false, 2},
               {"KIND", Align::left, false, 3},
               {"TITLE", Align::left, true},
               {"POSTER", Align::left, true}});
  table.add({{"7"}, {"spot"}, {"short"}, {"ann"}});
  table.add({{"1234"}, {"ready"}, {"a rather long title"}, {"bob"}});
  return table;
}

std::string text(const Table &table, int width, bool header) {
  return table.text({.width = width}, header);
}

TEST(Table, AlignsColumns) {
  EXPECT_EQ(text(sample(), 0, true), "  ID  KIND   TITLE                POSTER\n"
                                     "   7  spot   short                ann\n"
                                     "1234  ready  a rather long title  bob\n");
}

TEST(Table, LeavesTheHeaderOut) {
  EXPECT_EQ(text(sample(), 0, false), "   7  spot   short                ann\n"
                                      "1234  ready  a rather long title  bob\n");
}

TEST(Table, CutsFlexibleColumnsToTheWidth) {
  EXPECT_EQ(text(sample(), 33, true), "  ID  KIND   TITLE         POSTER\n"
                                      "   7  spot   short         ann\n"
                                      "1234  ready  a rather lo…  bob\n");
}

TEST(Table, LeavesTheLeastImportantColumnsOutFirst) {
  EXPECT_EQ(text(sample(), 27, false), "   7  short             ann\n"
                                       "1234  a rather long t…  bob\n");
  EXPECT_EQ(text(sample(), 18, false), "short          ann\n"
                                       "a rather lon…  bob\n");
}

TEST(Table, TheMostImportantColumnsStayHoweverNarrowTheTerminal) {
  EXPECT_EQ(text(sample(), 9, false), "sho…  ann\n"
                                      "a r…  bob\n");
  EXPECT_EQ(text(sample(), 4, false), "…  …\n…  …\n");
  EXPECT_EQ(text(sample(), 1, false), "…\n…\n");
}

TEST(Table, CountsCellsNotBytes) {
  Table table({{"A"}, {"B"}});
  table.add({{"日本"}, {"x"}});
  table.add({{"abc"}, {"y"}});
  EXPECT_EQ(text(table, 0, false), "日本  x\nabc   y\n");
}

TEST(Table, NothingOfACellReachesTheTerminalUnchanged) {
  Table table({{"A"}});
  table.add({{"x\033[2J\ny"}});
  EXPECT_EQ(text(table, 0, false), "x\uFFFD[2J y\n");
}

TEST(Table, WithoutRowsOnlyTheHeaderIsLeft) {
  EXPECT_EQ(text(Table({{"A"}, {"B"}}), 80, true), "A  B\n");
  EXPECT_EQ(text(Table({{"A"}, {"B"}}), 80, false), "");
}

TEST(Table, ColoursAndLinksDoNotChangeTheAlignment) {
  Table table({{.title = "A", .style = Style::good}, {.title = "B"}});
  table.add({{"x", "https://example.org/"}, {"y"}});
  table.add({{"long", "javascript:x"}, {"z"}});
  EXPECT_EQ(table.text({.width = 80, .colour = true, .links = true}, false),
            "\033]8;;https://example.org/\033\\\033[32mx\033[0m\033]8;;\033\\     y\n"
            "\033[32mlong\033[0m  z\n");
}

TEST(Table, ALineAloneIsNotPadded) {
  const Table table = sample();
  EXPECT_EQ(table.header_line({}), "ID  KIND  TITLE  POSTER\n");
  EXPECT_EQ(table.unpadded_line({{"7"}, {""}, {"a\033b"}, {""}}, {}), "7    a\uFFFDb\n");
}

}  // namespace
}  // namespace velkor::ctl
