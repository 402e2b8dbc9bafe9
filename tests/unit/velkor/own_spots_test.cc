/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/own_spots.h"

#include <memory>

#include <gtest/gtest.h>
#include <velkor/zox_myzox.h>

#include "support/owned.h"

namespace velkor::app {
namespace {

using OwnedOverview = std::unique_ptr<GSList, ReleaseWith<zox_myzox_free>>;

OwnedOverview overview_of(const std::vector<std::pair<gint32, gint64>> &posts) {
  GSList *list = nullptr;
  for (const auto &[id, stamp] : posts) {
    auto *post = g_new0(ZoxMyzoxPost, 1);
    post->postId = id;
    post->stamp = stamp;
    list = g_slist_append(list, post);
  }
  return OwnedOverview(list);
}

TEST(OwnSpots, AreTheNewestFirst) {
  const OwnedOverview overview = overview_of({{1, 50}, {2, 70}, {3, 60}, {4, 70}});
  std::vector<std::int32_t> ids;
  for (const OwnSpot &spot : own_spots_of(overview.get()))
    ids.push_back(spot.id);
  EXPECT_EQ(ids, (std::vector<std::int32_t>{4, 2, 3, 1}));
  EXPECT_TRUE(own_spots_of(nullptr).empty());
}

TEST(OwnSpots, AreToldInWordsOnOneLine) {
  const OwnedOverview overview = overview_of({{7, 50}});
  auto &post = *static_cast<ZoxMyzoxPost *>(overview->data);
  post.title = g_string_new("Haven\nen zee");
  post.status = static_cast<guint32>(-1);
  post.kudos = 3;
  post.forum = 2;
  post.canEdit = 1;
  EXPECT_EQ(own_spots_of(overview.get()), (std::vector<OwnSpot>{{.id = 7,
                                                                 .title = "Haven en zee",
                                                                 .status = "Spot",
                                                                 .category = "Beeld/DivX",
                                                                 .stamp = 50,
                                                                 .kudos = 3,
                                                                 .reactions = 2,
                                                                 .can_edit = true}}));
}

TEST(OwnSpots, HaveACategoryWithoutASubCategoryOfThatNumber) {
  const OwnedOverview overview = overview_of({{7, 50}});
  static_cast<ZoxMyzoxPost *>(overview->data)->sCat = 9999;
  EXPECT_EQ(own_spots_of(overview.get()).at(0).category, "Beeld");
}

}  // namespace
}  // namespace velkor::app
