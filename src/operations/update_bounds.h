/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What no update of a real service comes near: a server that goes beyond is broken or hostile. */
#ifndef VELKOR_OPERATIONS_UPDATE_BOUNDS_H
#define VELKOR_OPERATIONS_UPDATE_BOUNDS_H

#include <cstddef>

namespace velkor {

/** Names of dumps in one reply, and in all replies to one update. */
inline constexpr std::size_t max_dumps = 50'000;
/** Questions of one recursive update. */
inline constexpr int max_questions = 1'000;

}  // namespace velkor

#endif
