/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions to a posting, in the order in which a discussion is read. */
#ifndef VELKOR_APP_MODEL_FORUM_H
#define VELKOR_APP_MODEL_FORUM_H

#include <cstdint>
#include <string>
#include <vector>

namespace velkor::app {

struct Reaction {
  std::uint32_t id = 0;
  std::uint32_t answers = 0;  // the id of the reaction that this one answers; 0 for none
  std::string author{};
  std::string body{};
  std::int64_t stamp = 0;
  std::int64_t edited = 0;  // 0 for never
  std::uint32_t kudos = 0;
  int depth = 0;  // how many reactions it answers, one through the other
};

/**
 * The reactions with each answer behind what it answers and its depth set; otherwise their order
 * stays. An answer to what is not there, or to a later reaction, begins a thread of its own.
 */
std::vector<Reaction> threaded(std::vector<Reaction> reactions);

}  // namespace velkor::app

#endif
