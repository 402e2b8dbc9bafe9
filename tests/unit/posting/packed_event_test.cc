/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "posting/packed_event.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include <gtest/gtest.h>

#include "posting/event_record.h"
#include "support/slist.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

using test::describe;
using test::describe_basic;
using test::full_event;
using test::zox;

void expect_whole(const GString *text) {
  if (text == nullptr)
    return;
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(text) % alignof(GString), 0U);
  EXPECT_EQ(text->allocated_len, text->len + 1);
  EXPECT_EQ(text->str[text->len], '\0');
}

TEST(PackedEventTest, EqualsItsSource) {
  const OwnedEvent event = full_event();
  EXPECT_EQ(describe(*pack(*event)), describe(*event));
}

TEST(PackedEventTest, EqualsARecordWithoutAnything) {
  EXPECT_EQ(describe(*pack(fresh_event)), describe(fresh_event));
}

TEST(PackedEventTest, OutlivesItsSource) {
  OwnedEvent event = full_event();
  const std::string expected = describe(*event);
  const PackedEvent packed = pack(*event);
  event.reset();
  EXPECT_EQ(describe(*packed), expected);
}

TEST(PackedEventTest, CanBePackedAgain) {
  const PackedEvent packed = pack(*full_event());
  EXPECT_EQ(describe(*pack(*packed)), describe(*packed));
}

TEST(PackedEventTest, TextsAreWholeGStrings) {
  for (std::size_t length = 0; length < 20; ++length) {
    const OwnedEvent event = full_event();
    replace_string(event->title, zox(std::string(length, 'x')).release());
    const PackedEvent packed = pack(*event);
    for (const auto member : text_members)
      expect_whole((*packed).*member);
    for (const auto member : list_members) {
      for (const GString *item : Items<const GString>((*packed).*member))
        expect_whole(item);
    }
    EXPECT_EQ(std::strlen(packed->title->str), length);
  }
}

TEST(PackedEventTest, WithoutDetailsIsWhatTheCacheFileKeeps) {
  OwnedEvent expected = full_event();
  const std::string kept = describe_basic(*expected);
  const PackedEvent bare = without_details(*pack(*expected));
  EXPECT_EQ(describe_basic(*bare), kept);
  EXPECT_EQ(bare->des, nullptr);
  EXPECT_EQ(bare->mp3Tracks, nullptr);
  EXPECT_EQ(bare->forum, nullptr);
  EXPECT_EQ(bare->watcherHit, fresh_event.watcherHit);
}

TEST(PackedEventTest, KnowsWhetherItHasDetails) {
  const OwnedEvent event = test::basic_event(7);
  EXPECT_TRUE(is_without_details(*pack(*event)));
  for (const auto member :
       {&ZoxEvent::fType, &ZoxEvent::files, &ZoxEvent::fStart, &ZoxEvent::parType, &ZoxEvent::pars,
        &ZoxEvent::blockSize, &ZoxEvent::view, &ZoxEvent::kudos, &ZoxEvent::locked,
        &ZoxEvent::watchlistUpdated, &ZoxEvent::watcherHit}) {
    const OwnedEvent detailed(zox_event_duplicate(event.get()));
    ++((*detailed).*member);
    const PackedEvent packed = pack(*detailed);
    EXPECT_EQ(is_without_details(*packed),
              describe(*without_details(*packed)) == describe(*packed));
  }
  EXPECT_FALSE(is_without_details(*pack(*full_event())));
}

TEST(PackedEventTest, KeepsZeroBytesWithinAText) {
  const OwnedEvent event(zox_event_new());
  event->title = zox(std::string_view("a\0b", 3)).release();
  const PackedEvent packed = pack(*event);
  ASSERT_EQ(packed->title->len, 3U);
  EXPECT_EQ(std::memcmp(packed->title->str, "a\0b", 4), 0);
}

}  // namespace
}  // namespace velkor
