/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a posting's tags tell about the rest of it. */
#ifndef VELKOR_EVENTS_EVENT_TAGS_H
#define VELKOR_EVENTS_EVENT_TAGS_H

#include <velkor/zox_event.h>

namespace velkor {

/** Gives a posting without sub-category the number of its first tag that begins with "a". */
void derive_sub_category(ZoxEvent &event) noexcept;

}  // namespace velkor

#endif
