/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/labels.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velkor::app {
namespace {

using ::testing::ElementsAre;

TEST(LabelsTest, FindsRowsByAPartOfAName) {
  Labels labels;
  const Labels::Number drama = labels.add_name("Drama");
  const Labels::Number comedy = labels.add_name("Komedie");
  labels.begin_row();
  labels.add(drama);
  labels.add(comedy);
  labels.begin_row();
  labels.begin_row();
  labels.add(comedy);
  const std::vector<bool> holding = labels.holding("DRA");
  EXPECT_THAT(holding, ElementsAre(true, false));
  EXPECT_TRUE(labels.has_one_of(0, holding));
  EXPECT_FALSE(labels.has_one_of(1, holding));
  EXPECT_FALSE(labels.has_one_of(2, holding));
  EXPECT_TRUE(labels.has_one_of(2, labels.holding("m")));
  EXPECT_FALSE(labels.has_one_of(3, holding));
}

TEST(LabelsTest, NamesBeyondTheLastNumberShareIt) {
  Labels labels;
  for (int number = 0; number < 65535; ++number)
    labels.add_name(std::to_string(number));
  const Labels::Number last = labels.add_name("last");
  EXPECT_EQ(last, 65535);
  EXPECT_EQ(labels.add_name("one more"), last);
}

}  // namespace
}  // namespace velkor::app
