/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reads everything that the window shows of the core. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_SNAPSHOT_READER_H
#define VELKOR_APP_LIBRARY_SNAPSHOT_READER_H

#include <cstdint>
#include <unordered_set>

#include "model/snapshot.h"

namespace velkor::app {

/** @param hits  the ids of the postings that a watcher matched in the latest update */
SharedSnapshot read_snapshot(const std::unordered_set<std::int32_t> &hits);

}  // namespace velkor::app

#endif
