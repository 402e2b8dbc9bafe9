/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "posting/shared_parts.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "posting/event_record.h"
#include "posting/packed_event.h"
#include "support/slist.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

std::string joined(const GSList *list) {
  std::string text;
  for (const GString *item : Items<const GString>(list))
    text.append(item->str, item->len).append(";");
  return text;
}

TEST(SharedPartsTest, HoldsEqualTextsOnce) {
  SharedParts parts;
  const GString *text = parts.text("Pietje");
  EXPECT_EQ(parts.text(std::string("Pietje")), text);
  EXPECT_NE(parts.text("pietje"), text);
  EXPECT_EQ(std::string(text->str, text->len), "Pietje");
  EXPECT_EQ(text->str[text->len], '\0');
}

TEST(SharedPartsTest, TellsTextsWithZeroBytesApart) {
  SharedParts parts;
  const GString *text = parts.text(std::string_view("a\0b", 3));
  EXPECT_NE(parts.text(std::string_view("a\0c", 3)), text);
  EXPECT_EQ(parts.text(std::string_view("a\0b", 3)), text);
  EXPECT_EQ(text->len, 3U);
}

TEST(SharedPartsTest, HoldsEqualListsOnce) {
  SharedParts parts;
  const GSList *list = parts.list("11|alt.binaries.a|");
  EXPECT_EQ(parts.list(std::string("11|alt.binaries.a|")), list);
  EXPECT_NE(parts.list("12|alt.binaries.b|"), list);
  EXPECT_EQ(joined(list), "11;alt.binaries.a;");
}

TEST(SharedPartsTest, HasNoListOfNothing) {
  SharedParts parts;
  EXPECT_EQ(parts.list(""), nullptr);
}

TEST(SharedPartsTest, RecordsPointToTheSameParts) {
  SharedParts parts;
  ZoxEvent draft = fresh_event;
  draft.poster = parts.text("Pietje");
  draft.groups = parts.list("1|2|");
  const PackedEvent first = pack(draft, parts.memory());
  draft.groups = parts.list("1|2|");
  const PackedEvent second = pack(draft, parts.memory());
  EXPECT_EQ(first->poster, second->poster);
  EXPECT_EQ(first->groups, second->groups);
}

TEST(SharedPartsTest, PartsLiveAsLongAsARecordThatPointsToThem) {
  auto parts = std::make_unique<SharedParts>();
  ZoxEvent draft = fresh_event;
  draft.poster = parts->text("Pietje");
  draft.tags = parts->list("3|4|");
  PackedEvent first = pack(draft, parts->memory());
  const PackedEvent second = pack(*first, parts->memory());
  parts.reset();
  first.reset();
  EXPECT_STREQ(second->poster->str, "Pietje");
  EXPECT_EQ(joined(second->tags), "3;4;");
}

TEST(SharedPartsTest, AnOrdinaryPackedRecordSharesNothing) {
  SharedParts parts;
  ZoxEvent draft = fresh_event;
  draft.poster = parts.text("Pietje");
  const PackedEvent record = pack(draft);
  EXPECT_NE(record->poster, draft.poster);
  EXPECT_STREQ(record->poster->str, "Pietje");
}

}  // namespace
}  // namespace velkor
