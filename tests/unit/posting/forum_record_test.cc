/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <gtest/gtest.h>

#include <velkor/zox_events_forum.h>
#include <velkor/zox_string.h>

namespace {

TEST(ForumRecordTest, NewForumIsEmpty) {
  ZoxForum *forum = zox_events_forum_new();
  EXPECT_EQ(forum->reactions, nullptr);
  EXPECT_EQ(forum->stamp, 0);
  zox_events_forum_free(forum);
}

TEST(ForumRecordTest, NewReactionIsEmpty) {
  ZoxReactie *reactie = zox_events_forum_reactie_new();
  EXPECT_EQ(reactie->messId, 0U);
  EXPECT_EQ(reactie->author, nullptr);
  EXPECT_EQ(reactie->body, nullptr);
  EXPECT_EQ(reactie->stamp, 0);
  EXPECT_EQ(reactie->edit, 0);
  EXPECT_EQ(reactie->kudos, 0U);
  EXPECT_EQ(reactie->reply, 0U);
  EXPECT_EQ(reactie->avatar, nullptr);
  zox_events_forum_reactie_free(reactie);
}

TEST(ForumRecordTest, HighestLengthCountsAuthorAndBody) {
  ZoxReactie *reactie = zox_events_forum_reactie_new();
  EXPECT_EQ(zox_events_forum_get_highest_length(reactie), 0U);
  reactie->avatar = zox_string_new("een heel lang adres van een avatar");
  EXPECT_EQ(zox_events_forum_get_highest_length(reactie), 0U);
  reactie->author = zox_string_new("jan");
  EXPECT_EQ(zox_events_forum_get_highest_length(reactie), 3U);
  reactie->body = zox_string_new("één");  // bytes, not characters
  EXPECT_EQ(zox_events_forum_get_highest_length(reactie), 5U);
  zox_events_forum_reactie_free(reactie);
}

TEST(ForumRecordDeathTest, NullIsAnError) {
  EXPECT_DEATH(zox_events_forum_free(nullptr), "assertion failed: \\(forum\\)");
  EXPECT_DEATH(zox_events_forum_get_highest_length(nullptr), "assertion failed: \\(reactie\\)");
}

}  // namespace
