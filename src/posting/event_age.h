/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How long postings are kept. */
#ifndef VELKOR_POSTING_EVENT_AGE_H
#define VELKOR_POSTING_EVENT_AGE_H

#include <velkor/zox_event.h>

namespace velkor {

inline constexpr gint64 seconds_a_day = 86400;

/** Whether the posting was deleted more than a day before `now`. */
inline bool is_long_deleted(const ZoxEvent &event, gint64 now) noexcept {
  return event.status == ZOX_STATUS_DELETED && event.updated < now - seconds_a_day;
}

}  // namespace velkor

#endif
