/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/english.h"

#include <string>

#include <gtest/gtest.h>

#include <velkor/zox_codes.h>

#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

class English : public ::testing::Test {
protected:
  ~English() override { set_english_added(false); }
};

/** Of the results that are no success, one has an English sentence or its own is English. */
TEST_F(English, EveryResultIsExplainedOnce) {
  set_english_added(true);
  for (int number = ZOX_RESULT_UNKNOWN_ERROR; number <= ZOX_RESULT_NO_PROFILE; ++number) {
    const auto code = static_cast<ZoxErrorCode>(number);
    const std::string own = sentence_of(code, nullptr);
    const bool is_english =
        code == ZOX_RESULT_NOT_CONNECTED || own.starts_with("the ") || own.starts_with("you ");
    EXPECT_EQ(*english_of(code) == '\0', is_english) << own;
  }
}

TEST_F(English, FollowsTheSentenceOnlyWhereItIsAdded) {
  EXPECT_EQ(explained(ZOX_RESULT_BANNED, nullptr), "Je bent verbannen van de ZOX server");
  set_english_added(true);
  EXPECT_EQ(explained(ZOX_RESULT_BANNED, nullptr),
            "Je bent verbannen van de ZOX server [you are banned from the server]");
  EXPECT_EQ(explained(ZOX_RESULT_NOT_CONNECTED, nullptr), "Connection refused");
}

}  // namespace
}  // namespace velkor::ctl
