/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What filters accept, without the filtered set: visiting, selecting and counting. */
#include <velkor/zox_eventlist.h>

#include <algorithm>
#include <optional>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>

#include "filter/prepared_filter.h"
#include "store/event_table.h"
#include "store/event_walk.h"
#include "support/assertion.h"
#include "support/rw_lock.h"
#include "support/slist.h"

namespace velkor {
namespace {

/** Accepts what a filter does, newsgroups by the filter's own list; without a filter everything. */
class Matcher {
public:
  explicit Matcher(const ZoxFilter *filter) noexcept
      : postId_(filter == nullptr ? 0 : static_cast<gint32>(filter->postId)) {
    if (filter != nullptr && postId_ == 0)
      prepared_.emplace(*filter, NewsgroupSource::own_list);
  }

  [[nodiscard]] bool accepts(const ZoxEvent &event) const noexcept {
    if (postId_ != 0)
      return event.postId == postId_;
    return !prepared_ || prepared_->accepts(event);
  }

private:
  gint32 postId_;
  std::optional<PreparedFilter> prepared_;
};

/** Calls `visit(posting)` for every posting that the filter accepts, holding the posting. */
template <typename Visit>
void for_each_match(ZOXEventlist *list, const ZoxFilter *filter, Visit visit) noexcept {
  const Matcher matcher(filter);
  const ReadLock lock(list->lock);
  for_each_held_event(list->tree, [&](gpointer, const ZoxEvent &event) {
    if (matcher.accepts(event))
      visit(event);
  });
}

using Filters = std::vector<const ZoxFilter *>;

/** Counts what each of the filters accepts of what `filter` does. */
guint32 count_matches(ZOXEventlist *list, const ZoxFilter *filter, const Filters &filters,
                      guint32 *counts) noexcept {
  const std::vector<Matcher> matchers(filters.begin(), filters.end());
  std::fill_n(counts, matchers.size(), 0);
  guint32 total = 0;
  for_each_match(list, filter, [&](const ZoxEvent &event) {
    ++total;
    for (std::size_t number = 0; number < matchers.size(); ++number)
      counts[number] += filters[number] != nullptr && matchers[number].accepts(event) ? 1U : 0U;
  });
  return total;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_eventlist_visit_matches(ZOXEventlist *list, const ZoxFilter *filter,
                                 ZoxEventlistVisitor visitor, gpointer userData) {
  for_each_match(list, filter, [=](const ZoxEvent &event) { visitor(&event, userData); });
}

gint32 *zox_eventlist_select(ZOXEventlist *list, const ZoxFilter *filter, guint32 *count) {
  std::vector<gint32> ids;
  for_each_match(list, filter, [&ids](const ZoxEvent &event) { ids.push_back(event.postId); });
  std::ranges::sort(ids);
  *count = static_cast<guint32>(ids.size());
  return static_cast<gint32 *>(g_memdup2(ids.data(), ids.size() * sizeof(gint32)));
}

guint32 zox_eventlist_count_matches(ZOXEventlist *list, const ZoxFilter *filter,
                                    const GSList *filters, guint32 *counts) {
  const Items<const ZoxFilter> given(filters);
  return count_matches(list, filter, Filters(given.begin(), given.end()), counts);
}

guint32 zox_eventlist_count_categories(ZOXEventlist *list, const ZoxFilter *filter,
                                       guint32 *counts) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->categories);
  Filters filters;
  for (const ZoxCategory *category : Items<const ZoxCategory>(core->categories))
    filters.push_back(category->filter);
  return count_matches(list, filter, filters, counts);
}

}  // extern "C"
