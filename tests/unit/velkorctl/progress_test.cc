/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/progress.h"

#include <gtest/gtest.h>

#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

TEST(ShowBytes, ChoosesTheUnit) {
  EXPECT_EQ(show_bytes(0), "0 B");
  EXPECT_EQ(show_bytes(999), "999 B");
  EXPECT_EQ(show_bytes(1000), "1.0 kB");
  EXPECT_EQ(show_bytes(1449), "1.4 kB");
  EXPECT_EQ(show_bytes(999949), "999.9 kB");
  EXPECT_EQ(show_bytes(999950), "1.0 MB");
  EXPECT_EQ(show_bytes(1'400'000'000), "1.4 GB");
}

TEST(ProgressLine, AsksBeforeTheFirstDump) {
  EXPECT_EQ(progress_line({}, 40), "[...................] asking what is new");
}

TEST(ProgressLine, CountsWholeDumpsAndThePartOfTheOneUnderWay) {
  ProgressState state;
  state.dumps = 4;
  state.dump = 3;
  state.received = 500;
  state.expected = 1000;
  state.total = 2000;
  EXPECT_EQ(progress_line(state, 40), "[#############........] dump 3/4  2.5 kB");
}

TEST(ProgressLine, ADumpOfUnknownLengthCountsWhenItIsWhole) {
  ProgressState state;
  state.dumps = 2;
  state.dump = 2;
  state.received = 500;
  EXPECT_EQ(progress_line(state, 27), "[####.....] dump 2/2  500 B");
}

TEST(ProgressLine, ShowsTheRateOnceItIsKnown) {
  ProgressState state;
  state.dumps = 1;
  state.dump = 1;
  state.rate = 123456;
  EXPECT_NE(progress_line(state, 80).find("123.5 kB/s"), std::string::npos);
}

TEST(ProgressLine, NeverOutgrowsTheTerminal) {
  ProgressState state;
  state.dumps = 100;
  state.dump = 100;
  state.received = 1'000'000'000;
  state.expected = 1;
  for (int width = 0; width < 100; ++width)
    EXPECT_LE(display_width(progress_line(state, width)), width);
}

}  // namespace
}  // namespace velkor::ctl
