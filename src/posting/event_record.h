/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A posting's record: how it begins, what it owns, its owner, and what its fields tell. */
#ifndef VELKOR_POSTING_EVENT_RECORD_H
#define VELKOR_POSTING_EVENT_RECORD_H

#include <array>
#include <memory>

#include <velkor/zox_event.h>
#include <velkor/zox_events_forum.h>

#include "support/owned_records.h"

namespace velkor {

/** Every text that a record owns. */
inline constexpr std::array text_members{
    &ZoxEvent::fName, &ZoxEvent::title, &ZoxEvent::poster, &ZoxEvent::link, &ZoxEvent::tag,
    &ZoxEvent::ann,   &ZoxEvent::des,   &ZoxEvent::sig,    &ZoxEvent::img,  &ZoxEvent::reason,
};

/** Every list of texts that a record owns. */
inline constexpr std::array list_members{&ZoxEvent::groups, &ZoxEvent::tags, &ZoxEvent::mp3Tracks};

/** A record as it begins: nothing known. */
inline constexpr ZoxEvent fresh_event = [] {
  ZoxEvent event{};
  event.postId = -1;
  event.status = ZOX_STATUS_UNKNOWN;
  event.cat = -1;
  event.sCat = -1;
  return event;
}();

inline constexpr gint64 seconds_a_day = 86400;

/** Whether the posting was deleted more than a day before `now`. */
inline bool is_long_deleted(const ZoxEvent &event, gint64 now) noexcept {
  return event.status == ZOX_STATUS_DELETED && event.updated < now - seconds_a_day;
}

/** A deep copy of a posting's forum, reactions included; null for null. */
ZoxForum *copy_forum(const ZoxForum *source) noexcept;

/** Gives a posting without sub-category the number of its first tag that begins with "a". */
void derive_sub_category(ZoxEvent &event) noexcept;

}  // namespace velkor

#endif
