/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/remembered.h"

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

class RememberedTest : public ::testing::Test {
protected:
  test::TemporaryDirectory directory_;
  std::filesystem::path file_ = directory_.path() / "new" / "window.ini";
};

TEST_F(RememberedTest, IsReadAsItWasWritten) {
  Remembered remembered{.width = 900,
                        .height = 600,
                        .maximized = true,
                        .tree_width = 180,
                        .list_height = 240,
                        .sorting = {Column::poster, false}};
  remembered.column_widths[1] = 155;
  write_remembered(file_, remembered);
  EXPECT_EQ(read_remembered(file_), remembered);
}

TEST_F(RememberedTest, WithoutAFileTheDefaultsHold) {
  EXPECT_EQ(read_remembered(file_), Remembered());
}

TEST_F(RememberedTest, WhatMakesNoSenseIsPassedOver) {
  write_remembered(file_, {});
  test::write_file(file_, "[Window]\nwidth=5\nheight=999999\nmaximized=perhaps\ntree-width=150\n"
                          "[List]\nsort=size\ndescending=false\nwidth-title=-3\n");
  Remembered expected;
  expected.tree_width = 150;
  EXPECT_EQ(read_remembered(file_), expected);
}

TEST_F(RememberedTest, AFileThatIsNoneIsPassedOver) {
  write_remembered(file_, {});
  test::write_file(file_, "no key file\n");
  EXPECT_EQ(read_remembered(file_), Remembered());
}

}  // namespace
}  // namespace velkor::app
