/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/table.h"

#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

using Align = Column::Align;

Table sample() {
  Table table({{"ID", Align::right}, {"TITLE", Align::left, true}, {"POSTER"}});
  table.add({"7", "short", "ann"});
  table.add({"1234", "a rather long title", "bob"});
  return table;
}

TEST(Table, AlignsColumns) {
  EXPECT_EQ(sample().text(0, true), "  ID  TITLE                POSTER\n"
                                    "   7  short                ann\n"
                                    "1234  a rather long title  bob\n");
}

TEST(Table, LeavesTheHeaderOut) {
  EXPECT_EQ(sample().text(0, false), "   7  short                ann\n"
                                     "1234  a rather long title  bob\n");
}

TEST(Table, CutsFlexibleColumnsToTheWidth) {
  EXPECT_EQ(sample().text(26, true), "  ID  TITLE         POSTER\n"
                                     "   7  short         ann\n"
                                     "1234  a rather lo…  bob\n");
}

TEST(Table, NoLineIsWiderThanTheTerminal) {
  EXPECT_EQ(sample().text(12, false), "   7  short…\n"
                                      "1234  a rat…\n");
}

TEST(Table, CountsCellsNotBytes) {
  Table table({{"A"}, {"B"}});
  table.add({"日本", "x"});
  table.add({"abc", "y"});
  EXPECT_EQ(table.text(0, false), "日本  x\nabc   y\n");
}

TEST(Table, NothingOfACellReachesTheTerminalUnchanged) {
  Table table({{"A"}});
  table.add({"x\033[2J\ny"});
  EXPECT_EQ(table.text(0, false), "x\uFFFD[2J y\n");
}

TEST(Table, WithoutRowsOnlyTheHeaderIsLeft) {
  EXPECT_EQ(Table({{"A"}, {"B"}}).text(80, true), "A  B\n");
  EXPECT_EQ(Table({{"A"}, {"B"}}).text(80, false), "");
}

}  // namespace
}  // namespace velkor::ctl
