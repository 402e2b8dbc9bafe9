/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The copy of a posting's forum, for both ways in which a posting is copied. */
#ifndef VELKOR_EVENTS_FORUM_COPY_H
#define VELKOR_EVENTS_FORUM_COPY_H

#include <velkor/zox_types.h>

namespace velkor {

/** A deep copy, reactions included; null for null. */
ZoxForum *copy_forum(const ZoxForum *source) noexcept;

}  // namespace velkor

#endif
