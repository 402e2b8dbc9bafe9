/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a document looks up for many postings is what the tables say of each. */
#include "display/lookups.h"

#include <limits>
#include <random>
#include <string>

#include <gmock/gmock.h>

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "display_fixture.h"
#include "tests/support/log_capture.h"
#include "tests/support/sandbox.h"

namespace {

using namespace velkor;
using namespace velkor::test;

class LookupsTest : public DisplayTest {
protected:
  static std::string date_of(gint64 seconds) {
    const OwnedText date(zox_string_date(seconds));
    return date ? date.get() : "";
  }

  const ShownTag &tag(const char *code, gint32 category) {
    const OwnedString text(g_string_new(code));
    return lookups.tag(*text, category);
  }

  DisplayLookups lookups;
};

TEST_F(LookupsTest, DatesAreThoseOfTheStringModule) {
  std::mt19937_64 random(12);
  for (int round = 0; round < 2000; ++round) {
    const auto seconds = static_cast<gint64>(random() % 8'000'000'000) - 4'000'000'000;
    EXPECT_EQ(lookups.date(seconds), date_of(seconds)) << seconds;
  }
}

TEST_F(LookupsTest, DatesFollowTheZoneOfTheDocument) {
  EXPECT_EQ(lookups.date(0), "01-01 (01:00)");
  const EnvironmentVariable zone("TZ", "UTC-5");
  EXPECT_EQ(DisplayLookups().date(0), "01-01 (05:00)");
}

TEST_F(LookupsTest, NoDateIsWarnedOf) {
  const LogCapture log;
  EXPECT_EQ(lookups.date(std::numeric_limits<gint64>::max()), "");
  EXPECT_EQ(log.warnings().size(), 1U);
}

TEST_F(LookupsTest, TagsAreThoseOfTheirCategory) {
  for (int round = 0; round < 2; ++round) {
    for (const gint32 category : {-1, 0, 1, 2, 3, 4}) {
      for (const char *code : {"a0", "a1", "b10", "d27", "d99", "a", "", "abcd", "abcde", "A0"}) {
        const OwnedString text(g_string_new(code));
        const ZoxTag *found = zox_tag_find(text.get(), category);
        const ShownTag &shown = tag(code, category);
        EXPECT_STREQ(shown.group, found == nullptr ? nullptr : found->group->name->str) << code;
        EXPECT_THAT(shown.row, testing::HasSubstr(found == nullptr ? code : found->name->str));
      }
    }
  }
}

TEST_F(LookupsTest, NewsgroupsAreFoundHoweverManyThereAre) {
  for (guint32 id = 100; id < 200; ++id)
    add_group(id, ("alt.binaries.groep" + std::to_string(id)).c_str());
  for (guint32 id = 199; id >= 100; --id)
    EXPECT_EQ(lookups.newsgroup(id).name, "a.b.groep" + std::to_string(id));
  EXPECT_FALSE(lookups.newsgroup(200).known);
  EXPECT_TRUE(lookups.newsgroup(17).known);
}

}  // namespace
