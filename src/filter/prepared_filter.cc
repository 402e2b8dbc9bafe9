/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/prepared_filter.h"

#include <algorithm>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>

#include "core/core_lock.h"
#include "filter/filter_steps.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {

PreparedFilter::PreparedFilter(const ZoxFilter &filter, NewsgroupSource source) noexcept
    : filter_(filter), title_(view_of(filter.titleSearch)), poster_(view_of(filter.posterSearch)),
      tags_(filter.tags) {
  const CoreReader guard;
  if (source == NewsgroupSource::own_list) {
    for (const ZoxString *group : Items<const ZoxString>(filter.groupIdList))
      newsgroups_.insert(leading_integer(group->str));
  } else if (filter.groupIdList != nullptr) {
    ZOX_ASSERT_IN(zox_group_id_is_in_list, groupIds, "groupIds");
    newsgroups_.insert(groupIds, groupIds + groupIdLen);
  }
  if (core == nullptr)
    return;
  for (const ZoxCategory *category : Items<ZoxCategory>(core->categories)) {
    if (category->isMain == 0 && std::ranges::find(kept_, category->id) == kept_.end())
      kept_.push_back(category->id);
  }
}

bool PreparedFilter::accepts(const ZoxEvent &event) const noexcept {
  ZOX_ASSERT_IN(zox_filter_accepts, core, "core");
  return first_failure(filter_, *this, event) == ZOX_FILTER_TEST_NONE;
}

bool PreparedFilter::newsgroups_pass(const ZoxEvent &event) const noexcept {
  return std::ranges::any_of(Items<ZoxString>(event.groups), [this](const ZoxString *group) {
    return newsgroups_.contains(leading_integer(group->str));
  });
}

bool PreparedFilter::title_passes(const ZoxEvent &event) const noexcept {
  return title_.occurs_in(view_of(event.title));
}

bool PreparedFilter::poster_passes(const ZoxEvent &event) const noexcept {
  return poster_.occurs_in(view_of(event.poster));
}

bool PreparedFilter::tags_pass(const ZoxEvent &event) const noexcept {
  return tags_.met_by(event.tags);
}

bool PreparedFilter::category_is_kept(const ZoxEvent &event) const noexcept {
  return std::ranges::find(kept_, event.cat) != kept_.end();
}

}  // namespace velkor
