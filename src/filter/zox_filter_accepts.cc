/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The test whether a filter accepts a posting. It runs for every posting of a pass, so it
 * allocates nothing: texts are searched and numbers are read in place.
 */
#include <velkor/zox_filter.h>

#include <algorithm>
#include <string_view>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>

#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

bool stamp_bound_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.sinceStamp == 0 || filter.useDateRange != 0 || filter.sinceStamp <= event.stamp;
}

bool post_id_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.postId == 0 || filter.postId == static_cast<guint32>(event.postId);
}

bool category_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  if (filter.cat == -1)
    return true;
  return filter.cat == event.cat && (filter.sCat == -1 || filter.sCat == event.sCat);
}

bool status_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.statusList == nullptr ||
         g_slist_find(filter.statusList, GINT_TO_POINTER(event.status)) != nullptr;
}

gint32 newsgroup_id(const ZoxString *text) noexcept {
  return leading_integer(text->str);
}

bool is_in_newsgroup(const ZoxEvent &event, gint32 id) noexcept {
  return std::ranges::any_of(Items<ZoxString>(event.groups),
                             [id](const ZoxString *group) { return newsgroup_id(group) == id; });
}

bool newsgroups_meet_id_set(const ZoxEvent &event) noexcept {
  return std::ranges::any_of(Items<ZoxString>(event.groups), [](const ZoxString *group) {
    return zox_group_id_is_in_list(static_cast<guint32>(newsgroup_id(group)));
  });
}

bool newsgroups_meet_list(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return std::ranges::any_of(Items<ZoxString>(filter.groupIdList), [&event](const ZoxString *id) {
    return is_in_newsgroup(event, newsgroup_id(id));
  });
}

bool newsgroups_pass(const ZoxFilter &filter, const ZoxEvent &event, guint32 groupMode) noexcept {
  if (filter.groupIdList == nullptr)
    return true;
  return groupMode != 0 ? newsgroups_meet_id_set(event) : newsgroups_meet_list(filter, event);
}

bool text_passes(const ZoxString *search, const ZoxString *text) noexcept {
  return search == nullptr || contains_ignoring_case(view_of(text), view_of(search));
}

bool date_range_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  return filter.useDateRange == 0 ||
         (filter.dateFrom <= event.stamp && event.stamp <= filter.dateTo);
}

/** The bit of the group that a tag code belongs to; 0 for a code outside the four groups. */
unsigned group_bit(std::string_view code) noexcept {
  if (code.empty() || code.front() < 'a' || code.front() > 'd')
    return 0;
  return 1U << static_cast<unsigned>(code.front() - 'a');
}

bool has_tag(const ZoxEvent &event, std::string_view code) noexcept {
  return std::ranges::any_of(Items<ZoxString>(event.tags),
                             [code](const ZoxString *tag) { return view_of(tag) == code; });
}

/** Codes of one group are alternatives; every group that the filter names must be met. */
bool tags_pass(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  unsigned required = 0;
  unsigned met = 0;
  for (const ZoxString *tag : Items<ZoxString>(filter.tags)) {
    const std::string_view code = view_of(tag);
    const unsigned group = group_bit(code);
    required |= group;
    if ((group & ~met) != 0 && has_tag(event, code))
      met |= group;
  }
  return met == required;
}

/**
 * Whether `words` stands in `text` between blanks or ends, without regard to case: the same as a
 * search for " words " in " text ", an empty `words` meaning two blanks in a row.
 */
bool contains_words(std::string_view text, std::string_view words) noexcept {
  std::size_t begin = 0;
  while (text.size() - begin >= words.size()) {
    const std::size_t end = begin + words.size();
    if ((end == text.size() || text[end] == ' ') &&
        equal_ignoring_case(text.substr(begin, words.size()), words))
      return true;
    const std::size_t blank = text.find(' ', begin);
    if (blank == std::string_view::npos)
      return false;
    begin = blank + 1;
  }
  return false;
}

bool extra_tag_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  if (filter.extraTag == nullptr)
    return true;
  return event.tag != nullptr && contains_words(event.tag->str, filter.extraTag->str);
}

/** Postings of a main category for which the user keeps no filter are never shown. */
bool category_is_kept(const ZoxEvent &event) noexcept {
  return std::ranges::any_of(Items<ZoxCategory>(core->categories),
                             [&event](const ZoxCategory *category) {
                               return category->isMain == 0 && category->id == event.cat;
                             });
}

/** The first test that the posting fails, in the order in which they are made. */
ZoxFilterTest first_failure(const ZoxFilter &filter, const ZoxEvent &event,
                            guint32 groupMode) noexcept {
  if (!stamp_bound_passes(filter, event) || !post_id_passes(filter, event))
    return ZOX_FILTER_TEST_STAMP_OR_ID;
  if (filter.postId != 0)
    return ZOX_FILTER_TEST_NONE;
  if (!category_passes(filter, event))
    return ZOX_FILTER_TEST_CATEGORY;
  if (!status_passes(filter, event))
    return ZOX_FILTER_TEST_STATUS;
  if (!newsgroups_pass(filter, event, groupMode))
    return ZOX_FILTER_TEST_GROUPS;
  if (!text_passes(filter.titleSearch, event.title))
    return ZOX_FILTER_TEST_TITLE;
  if (!text_passes(filter.posterSearch, event.poster))
    return ZOX_FILTER_TEST_POSTER;
  if (!date_range_passes(filter, event))
    return ZOX_FILTER_TEST_DATE;
  if (!tags_pass(filter, event))
    return ZOX_FILTER_TEST_TAGS;
  if (!extra_tag_passes(filter, event))
    return ZOX_FILTER_TEST_EXTRA_TAG;
  return category_is_kept(event) ? ZOX_FILTER_TEST_NONE : ZOX_FILTER_TEST_KEPT;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

gint32 zox_filter_explain(const ZoxFilter *filter, const ZoxEvent *event, guint32 groupMode) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(filter);
  ZOX_ASSERT(event);
  return first_failure(*filter, *event, groupMode);
}

gboolean zox_filter_accepts(const ZoxFilter *filter, const ZoxEvent *event, guint32 groupMode) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(filter);
  ZOX_ASSERT(event);
  return first_failure(*filter, *event, groupMode) == ZOX_FILTER_TEST_NONE;
}

gboolean zox_filter_accepts_tags(const ZoxFilter *filter, const ZoxEvent *event) {
  ZOX_ASSERT(filter);
  ZOX_ASSERT(event);
  return tags_pass(*filter, *event);
}

}  // extern "C"
