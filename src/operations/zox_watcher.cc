/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The postings that match one watcher. */
#include <velkor/zox_watcher.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>

#include "filter/filter_record.h"
#include "support/assertion.h"

namespace velkor {
namespace {

struct Walk {
  const char *text;
  ZoxWatcherFunc func;
  gpointer userData;
};

gint hand_on(gpointer, ZoxEvent *event, gpointer userData) {
  const auto *walk = static_cast<const Walk *>(userData);
  return walk->func(event, walk->text, walk->userData);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_watcher_foreach(const char *text, ZoxWatcherFunc func, gpointer userData) {
  ZOX_ASSERT(core);
  const OwnedFilter filter(zox_filter_new_filter());
  filter->titleSearch = zox_string_new(text);
  const OwnedObject<ZOXEventlist> list(zox_eventlist_get());
  zox_eventlist_apply_filter(list.get(), filter.get());
  Walk walk{text, func, userData};
  zox_eventlist_foreach(list.get(), 1, 1, hand_on, &walk);
}

}  // extern "C"
