/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_event.h>

#include <velkor/zox_events_forum.h>

#include "posting/event_record.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {

void derive_sub_category(ZoxEvent &event) noexcept {
  if (event.sCat != -1)
    return;
  for (const GString *tag : Items<const GString>(event.tags)) {
    if (tag->str[0] == 'a') {
      event.sCat = leading_integer(tag->str + 1);
      return;
    }
  }
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxEvent *zox_event_new(void) {
  auto *event = g_new(ZoxEvent, 1);
  *event = fresh_event;
  return event;
}

void zox_event_free(ZoxEvent *event) {
  ZOX_ASSERT(event);
  for (const GString *track : Items<const GString>(event->mp3Tracks))
    ZOX_ASSERT(track);
  for (const auto member : text_members)
    replace_string(event->*member, nullptr);
  for (const auto member : list_members)
    zox_splitted_list_free(&(event->*member));
  if (event->forum != nullptr)
    zox_events_forum_free(event->forum);
  g_free(event);
}

ZoxEvent *zox_event_duplicate(const ZoxEvent *event) {
  ZoxEvent *copy = zox_event_new();
  *copy = *event;
  for (const auto member : text_members)
    copy->*member = copy_string(event->*member);
  for (const auto member : list_members)
    copy->*member = zox_splitted_list_duplicate(event->*member);
  copy->forum = copy_forum(event->forum);
  return copy;
}

}  // extern "C"
