/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/forum.h"

#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velkor::app {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

std::vector<std::pair<std::uint32_t, int>>
threads(const std::vector<std::pair<std::uint32_t, std::uint32_t>> &ids_and_answered) {
  std::vector<Reaction> reactions;
  for (const auto &[id, answers] : ids_and_answered)
    reactions.push_back({.id = id, .answers = answers});
  std::vector<std::pair<std::uint32_t, int>> result;
  for (const Reaction &reaction : threaded(std::move(reactions)))
    result.emplace_back(reaction.id, reaction.depth);
  return result;
}

TEST(Forum, AnswersStandUnderWhatTheyAnswer) {
  EXPECT_THAT(threads({{1, 0}, {2, 0}, {3, 1}, {4, 3}, {5, 1}, {6, 2}}),
              ElementsAre(Pair(1, 0), Pair(3, 1), Pair(4, 2), Pair(5, 1), Pair(2, 0), Pair(6, 1)));
}

TEST(Forum, WithoutAnswersTheOrderStays) {
  EXPECT_THAT(threads({{3, 0}, {1, 0}, {2, 0}}), ElementsAre(Pair(3, 0), Pair(1, 0), Pair(2, 0)));
}

TEST(Forum, AnAnswerToWhatIsNotThereBeginsAThread) {
  EXPECT_THAT(threads({{1, 99}, {2, 1}}), ElementsAre(Pair(1, 0), Pair(2, 1)));
}

TEST(Forum, AnAnswerToItselfOrToALaterOneBeginsAThread) {
  EXPECT_THAT(threads({{1, 2}, {2, 2}, {3, 0}}), ElementsAre(Pair(1, 0), Pair(2, 0), Pair(3, 0)));
}

TEST(Forum, OfEqualNumbersTheFirstIsAnswered) {
  EXPECT_THAT(threads({{1, 0}, {2, 0}, {1, 0}, {3, 1}}),
              ElementsAre(Pair(1, 0), Pair(3, 1), Pair(2, 0), Pair(1, 0)));
}

}  // namespace
}  // namespace velkor::app
