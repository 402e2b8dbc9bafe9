/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/suggestion.h"

#include <gtest/gtest.h>

namespace velkor::ctl {
namespace {

const std::vector<std::string> known{"list", "listen", "update", "username"};

TEST(Suggestion, IsTheNearestWord) {
  EXPECT_EQ(suggestion("lst", known), "; did you mean list?");
  EXPECT_EQ(suggestion("lits", known), "; did you mean list?");
  EXPECT_EQ(suggestion("listten", known), "; did you mean listen?");
  EXPECT_EQ(suggestion("UserName", known), "; did you mean username?");
}

TEST(Suggestion, IsNoneForAWordOfItsOwn) {
  EXPECT_EQ(suggestion("frobnicate", known), "");
  EXPECT_EQ(suggestion("x", known), "");
  EXPECT_EQ(suggestion("", known), "");
  EXPECT_EQ(suggestion("list", {}), "");
}

}  // namespace
}  // namespace velkor::ctl
