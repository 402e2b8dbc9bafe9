/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Records as the event list holds them: the record, the headers of its texts, the cells of its
 * lists and all characters lie in one block, apart from what it shares with others. A million
 * postings cost a million blocks instead of some fifteen million, and a walk finds a posting's
 * texts beside its numbers.
 *
 * A packed record is read like any other but never changed apart from its numbers, and never
 * leaves its object: what does is an ordinary copy.
 */
#ifndef VELKOR_POSTING_PACKED_EVENT_H
#define VELKOR_POSTING_PACKED_EVENT_H

#include <memory>

#include <velkor/zox_event.h>

#include "posting/shared_parts.h"
#include "support/object_type.h"
#include "support/owned.h"

namespace velkor {

/** Releases a packed record and its forum. */
void free_packed(ZoxEvent *event) noexcept;

using PackedEvent = std::unique_ptr<ZoxEvent, ReleaseWith<free_packed>>;

/** A deep copy of `source` in one block; only the forum lies apart. It shares nothing. */
PackedEvent pack(const ZoxEvent &source) noexcept;

/** The same for a record whose shared members lie in `memory` already: they stay where they are. */
PackedEvent pack(const ZoxEvent &source, SharedMemory &memory) noexcept;

/** A copy of a packed record in which what is not kept in the cache file has its initial value. */
PackedEvent without_details(const ZoxEvent &packed) noexcept;

/** Whether such a copy would not differ from the record. */
bool is_without_details(const ZoxEvent &event) noexcept;

struct ReleaseEventObject {
  void operator()(ZOXEventObject *object) const noexcept { unref_object(object); }
};
using OwnedEventObject = std::unique_ptr<ZOXEventObject, ReleaseEventObject>;

/** A new object that holds `event`. */
OwnedEventObject new_object(PackedEvent event) noexcept;

}  // namespace velkor

#endif
