/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Telling subscribers of changes; see zox_changes.h. */
#ifndef VELKOR_CORE_CHANGES_H
#define VELKOR_CORE_CHANGES_H

#include <velkor/zox_changes.h>
#include <velkor/zox_codes.h>

namespace velkor {

/** Tells of a change that has been made; `postId` is that of a ZOX_CHANGE_POSTING. */
void tell_change(ZoxChange change, gint32 postId = 0) noexcept;

/** Notes how saving or loading the cache file of the postings ended. */
void note_cache_status(ZoxFileStatus status) noexcept;

}  // namespace velkor

#endif
