/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/shown_text.h"

#include <gtest/gtest.h>

namespace velkor::app {
namespace {

TEST(ShownText, ALineHasNoControlCharacters) {
  EXPECT_EQ(shown_line("a\nb\tc\r\x1b[1m"), "a b c  [1m");
  EXPECT_EQ(shown_line("Moeë & <to>"), "Moeë & <to>");
  EXPECT_EQ(shown_line(""), "");
}

TEST(ShownText, LinesKeepTheirEnds) {
  EXPECT_EQ(shown_lines("a\r\nb\n\tc\rd\a"), "a\nb\n\tc d ");
}

TEST(ShownText, WhatIsNoUtf8BecomesIt) {
  EXPECT_EQ(shown_line("caf\xe9"), "caf\xef\xbf\xbd");
  EXPECT_EQ(shown_lines("\xff\n"), "\xef\xbf\xbd\n");
}

}  // namespace
}  // namespace velkor::app
