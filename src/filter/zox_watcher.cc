/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watcher.h>

#include <algorithm>

#include <velkor/zox_app_core.h>
#include <velkor/zox_filter.h>

#include "filter/filter_record.h"
#include "support/assertion.h"
#include "support/slist.h"

namespace velkor {
namespace {

/** A watcher is a filter with nothing but its search text, lent to it for the one test. */
bool matches(ZoxString *watcher, const ZoxEvent *event) noexcept {
  ZOX_ASSERT_IN(zox_watcher_test_event, watcher, "watcher");
  ZoxFilter filter = unset_filter();
  filter.titleSearch = watcher;
  return zox_filter_accepts(&filter, event, 0) != FALSE;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

gboolean zox_watcher_test_event(const ZoxEvent *event) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  return std::ranges::any_of(Items<ZoxString>(core->config->watcher),
                             [event](ZoxString *watcher) { return matches(watcher, event); });
}

guint32 zox_watcher_get_state(void) {
  ZOX_ASSERT(core);
  return core->watcherNoHits;
}

void zox_watcher_set_state(guint32 state) {
  ZOX_ASSERT(core);
  core->watcherNoHits = state;
}

}  // extern "C"
