/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Small snapshots for the tests of the front end's model. */
#ifndef VELKOR_TESTS_UNIT_VELKOR_SNAPSHOTS_H
#define VELKOR_TESTS_UNIT_VELKOR_SNAPSHOTS_H

#include <cstdint>
#include <vector>

#include "model/snapshot.h"

namespace velkor::app {

/**
 * All postings are in the first entry of the tree, those of category 0 in the second, the new ones
 * of them in the third, a filter. The categories and states have words. The postings 1 and 4 have
 * the tag "Drama", the posting 2 is in the newsgroup "binaries.beeld".
 */
SharedSnapshot snapshot_of(const std::vector<PostingFields> &postings);

/** The ids of the rows, in their order. */
std::vector<std::int32_t> ids_of(const Snapshot &snapshot, const std::vector<Row> &rows);

}  // namespace velkor::app

#endif
