/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/forum.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

namespace velkor::app {

std::vector<Reaction> threaded(std::vector<Reaction> reactions) {
  std::unordered_map<std::uint32_t, std::size_t> places;
  std::vector<std::vector<std::size_t>> answers(reactions.size());
  std::vector<std::size_t> pending;  // as a stack: what is read next is on top
  for (std::size_t place = 0; place < reactions.size(); ++place) {
    Reaction &reaction = reactions[place];
    const auto answered = places.find(reaction.answers);
    if (reaction.answers != 0 && answered != places.end()) {
      reaction.depth = reactions[answered->second].depth + 1;
      answers[answered->second].push_back(place);
    } else {
      pending.push_back(place);
    }
    places.try_emplace(reaction.id, place);
  }
  std::ranges::reverse(pending);
  std::vector<Reaction> result;
  result.reserve(reactions.size());
  while (!pending.empty()) {
    const std::size_t place = pending.back();
    pending.pop_back();
    pending.insert(pending.end(), answers[place].rbegin(), answers[place].rend());
    result.push_back(std::move(reactions[place]));
  }
  return result;
}

}  // namespace velkor::app
