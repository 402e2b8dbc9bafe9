/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_event.h>

#include <velkor/zox_events_forum.h>

#include "events/event_record.h"
#include "events/forum_copy.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"

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
