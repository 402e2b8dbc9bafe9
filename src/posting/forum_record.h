/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The reactions of a posting as records: their copy and their owner. */
#ifndef VELKOR_POSTING_FORUM_RECORD_H
#define VELKOR_POSTING_FORUM_RECORD_H

#include <memory>

#include <velkor/zox_events_forum.h>

#include "support/owned_records.h"

namespace velkor {

/** A deep copy, reactions included; null for null. */
ZoxForum *copy_forum(const ZoxForum *source) noexcept;

}  // namespace velkor

#endif
