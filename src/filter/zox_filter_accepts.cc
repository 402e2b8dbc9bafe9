/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The test whether a filter accepts a posting. It runs for every new posting and every filter of
 * the category tree, so it allocates nothing: texts are searched and numbers are read in place.
 */
#include <velkor/zox_filter.h>

#include <algorithm>
#include <string_view>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>

#include "core/core_lock.h"
#include "filter/filter_steps.h"
#include "filter/tag_condition.h"
#include "filter/text_search.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

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

/** Postings of a main category for which the user keeps no filter are never shown. */
bool is_kept(gint32 cat) noexcept {
  return std::ranges::any_of(
      Items<ZoxCategory>(core->categories),
      [cat](const ZoxCategory *category) { return category->isMain == 0 && category->id == cat; });
}

/** The tests that a pass prepares, each made from the filter as it stands. */
struct TestsInPlace {
  const ZoxFilter &filter;
  guint32 groupMode;

  [[nodiscard]] bool newsgroups_pass(const ZoxEvent &event) const noexcept {
    return groupMode != 0 ? newsgroups_meet_id_set(event) : newsgroups_meet_list(filter, event);
  }
  [[nodiscard]] bool title_passes(const ZoxEvent &event) const noexcept {
    return TextSearch(view_of(filter.titleSearch)).occurs_in(view_of(event.title));
  }
  [[nodiscard]] bool poster_passes(const ZoxEvent &event) const noexcept {
    return TextSearch(view_of(filter.posterSearch)).occurs_in(view_of(event.poster));
  }
  [[nodiscard]] bool tags_pass(const ZoxEvent &event) const noexcept {
    return TagCondition(filter.tags).met_by(event.tags);
  }
  [[nodiscard]] static bool category_is_kept(const ZoxEvent &event) noexcept {
    return is_kept(event.cat);
  }
};

}  // namespace

bool extra_tag_passes(const ZoxFilter &filter, const ZoxEvent &event) noexcept {
  if (filter.extraTag == nullptr)
    return true;
  return event.tag != nullptr && contains_words(event.tag->str, filter.extraTag->str);
}

}  // namespace velkor

using namespace velkor;

extern "C" {

gint32 zox_filter_explain(const ZoxFilter *filter, const ZoxEvent *event, guint32 groupMode) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(filter);
  ZOX_ASSERT(event);
  const CoreReader guard;
  return first_failure(*filter, TestsInPlace{*filter, groupMode}, *event);
}

gboolean zox_filter_accepts(const ZoxFilter *filter, const ZoxEvent *event, guint32 groupMode) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(filter);
  ZOX_ASSERT(event);
  const CoreReader guard;
  return first_failure(*filter, TestsInPlace{*filter, groupMode}, *event) == ZOX_FILTER_TEST_NONE;
}

gboolean zox_filter_accepts_tags(const ZoxFilter *filter, const ZoxEvent *event) {
  ZOX_ASSERT(filter);
  ZOX_ASSERT(event);
  return TagCondition(filter->tags).met_by(event->tags);
}

}  // extern "C"
