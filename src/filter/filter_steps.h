/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The tests of a filter and their order, for whoever tests one posting and for a pass. */
#ifndef VELKOR_FILTER_FILTER_STEPS_H
#define VELKOR_FILTER_FILTER_STEPS_H

#include <string_view>

#include <velkor/zox_filter.h>

namespace velkor {

inline bool stamp_bound_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.sinceStamp == 0 || filter.useDateRange != 0 || filter.sinceStamp <= event.stamp;
}

inline bool post_id_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.postId == 0 || filter.postId == static_cast<guint32>(event.postId);
}

inline bool category_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  if (filter.cat == -1)
    return true;
  return filter.cat == event.cat && (filter.sCat == -1 || filter.sCat == event.sCat);
}

inline bool status_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.statusList == nullptr ||
         g_slist_find(filter.statusList, GINT_TO_POINTER(event.status)) != nullptr;
}

inline bool date_range_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.useDateRange == 0 ||
         (filter.dateFrom <= event.stamp && event.stamp <= filter.dateTo);
}

bool extra_tag_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept;

/**
 * The first test that the posting fails, in the order in which they are made. `tests` makes those
 * that a pass prepares.
 */
template <typename Tests>
ZoxFilterTest first_failure(const ZoxFilter &filter, const Tests &tests,
                            const ZoxEvent &event) noexcept {
  if (!stamp_bound_passes(filter, event) || !post_id_passes(filter, event))
    return ZOX_FILTER_TEST_STAMP_OR_ID;
  if (filter.postId != 0)
    return ZOX_FILTER_TEST_NONE;
  if (!category_passes(filter, event))
    return ZOX_FILTER_TEST_CATEGORY;
  if (!status_passes(filter, event))
    return ZOX_FILTER_TEST_STATUS;
  if (filter.groupIdList != nullptr && !tests.newsgroups_pass(event))
    return ZOX_FILTER_TEST_GROUPS;
  if (filter.titleSearch != nullptr && !tests.title_passes(event))
    return ZOX_FILTER_TEST_TITLE;
  if (filter.posterSearch != nullptr && !tests.poster_passes(event))
    return ZOX_FILTER_TEST_POSTER;
  if (!date_range_passes(filter, event))
    return ZOX_FILTER_TEST_DATE;
  if (filter.tags != nullptr && !tests.tags_pass(event))
    return ZOX_FILTER_TEST_TAGS;
  if (!extra_tag_passes(filter, event))
    return ZOX_FILTER_TEST_EXTRA_TAG;
  return tests.category_is_kept(event) ? ZOX_FILTER_TEST_NONE : ZOX_FILTER_TEST_KEPT;
}

}  // namespace velkor

#endif
