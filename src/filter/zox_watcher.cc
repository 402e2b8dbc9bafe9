/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_watcher.h>

#include <algorithm>

#include <velkor/zox_app_core.h>
#include <velkor/zox_filter.h>

#include "core/core_lock.h"
#include "filter/filter_record.h"
#include "filter/watchers.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

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

bool Watchers::match(const ZoxEvent &event) noexcept {
  ZOX_ASSERT_IN(zox_watcher_test_event, core, "core");
  ZOX_ASSERT_IN(zox_watcher_test_event, core->config, "core->config");
  if (!words_)
    words_.emplace(core->config->watcher);
  // A posting that is not kept is tested against every watcher.
  const ZoxFilter any_title = unset_filter();
  if (words_->occurs_in(view_of(event.title)) && zox_filter_accepts(&any_title, &event, 0) != FALSE)
    return true;
  ZOX_ASSERT_IN(zox_watcher_test_event, !words_->cut_short(), "watcher");
  return false;
}

std::string first_watcher_of(const ZoxEvent &event) noexcept {
  const CoreReader guard;
  for (ZoxString *watcher : Items<ZoxString>(core->config->watcher)) {
    if (matches(watcher, &event))
      return std::string(view_of(watcher));
  }
  return {};
}

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
