/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_event.h>

#include <gtest/gtest.h>

#include <velkor/zox_string.h>

#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

using test::describe;
using test::full_event;

TEST(ZoxEventTest, NewRecordKnowsNothing) {
  const OwnedEvent event(zox_event_new());
  EXPECT_EQ(describe(*event), R"(postId=-1
stamp=0
updated=0
status=-5
fName=none
title=none
groups=none
poster=none
link=none
cat=-1
sCat=-1
tags=none
tag=none
rating=0
ann=none
des=none
sig=none
fType=0
files=0
fStart=0
img=none
forum=none
parType=0
pars=0
blockSize=0
view=0
kudos=0
mp3Tracks=none
locked=0
reason=none
watchlistUpdated=0
watcherHit=0
)");
}

TEST(ZoxEventTest, DuplicateEqualsItsSource) {
  const OwnedEvent event = full_event();
  const OwnedEvent copy(zox_event_duplicate(event.get()));
  EXPECT_EQ(describe(*copy), describe(*event));
  EXPECT_EQ(copy->watchlistUpdated, 1);
  EXPECT_EQ(copy->watcherHit, 1);
}

TEST(ZoxEventTest, DuplicateSharesNothing) {
  OwnedEvent event = full_event();
  const std::string before = describe(*event);
  const OwnedEvent copy(zox_event_duplicate(event.get()));
  EXPECT_NE(copy->title, event->title);
  EXPECT_NE(copy->groups, event->groups);
  EXPECT_NE(copy->forum, event->forum);
  g_string_assign(event->title, "anders");
  g_string_assign(static_cast<GString *>(event->tags->data), "z9");
  g_string_assign(static_cast<GString *>(event->mp3Tracks->data), "anders");
  event.reset();
  EXPECT_EQ(describe(*copy), before);
}

TEST(ZoxEventTest, AbsentTextStaysAbsent) {
  const OwnedEvent event(zox_event_new());
  const OwnedEvent copy(zox_event_duplicate(event.get()));
  EXPECT_EQ(copy->title, nullptr);
  EXPECT_EQ(copy->groups, nullptr);
  EXPECT_EQ(copy->mp3Tracks, nullptr);
  EXPECT_EQ(copy->forum, nullptr);
}

TEST(ZoxEventTest, EmptyTextStaysEmpty) {
  const OwnedEvent event(zox_event_new());
  event->title = zox_string_new("");
  const OwnedEvent copy(zox_event_duplicate(event.get()));
  ASSERT_NE(copy->title, nullptr);
  EXPECT_EQ(copy->title->len, 0U);
}

TEST(ZoxEventDeathTest, FreeingNothingIsAnError) {
  EXPECT_DEATH(zox_event_free(nullptr), "zox_event_free.*assertion failed: \\(event\\)");
}

TEST(ZoxEventDeathTest, TracksAreNeverAbsent) {
  ZoxEvent *event = zox_event_new();
  event->mp3Tracks = g_slist_append(nullptr, nullptr);
  EXPECT_DEATH(zox_event_free(event), "assertion failed: \\(track\\)");
  g_slist_free(event->mp3Tracks);
  event->mp3Tracks = nullptr;
  zox_event_free(event);
}

}  // namespace
}  // namespace velkor
