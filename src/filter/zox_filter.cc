/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_filter.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_splitted_list.h>

#include "core/core_lock.h"
#include "filter/filter_record.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"

using namespace velkor;

extern "C" {

ZoxFilter *zox_filter_new_filter(void) {
  ZoxFilter *filter = g_new(ZoxFilter, 1);
  *filter = unset_filter();
  return filter;
}

ZoxFilter *zox_filter_duplicate(const ZoxFilter *filter) {
  ZOX_ASSERT(filter);
  ZoxFilter *copy = g_new(ZoxFilter, 1);
  *copy = *filter;
  copy->name = copy_string(filter->name);
  copy->titleSearch = copy_string(filter->titleSearch);
  copy->posterSearch = copy_string(filter->posterSearch);
  copy->extraTag = copy_string(filter->extraTag);
  copy->tags = zox_splitted_list_duplicate(filter->tags);
  copy->statusList = g_slist_copy(filter->statusList);
  // The list itself only tells that a newsgroup condition is wanted: which newsgroups are meant
  // always follows the settings.
  if (filter->groupIdList != nullptr) {
    ZOX_ASSERT(core);
    const CoreReader guard;
    ZOX_ASSERT(core->config);
    copy->groupIdList = zox_splitted_list_duplicate(core->config->groupFilterList);
  }
  return copy;
}

void zox_filter_free_filter(ZoxFilter *filter) {
  ZOX_ASSERT(filter);
  for (ZoxString *tag : Items<ZoxString>(filter->tags)) {
    ZOX_ASSERT(tag);
    g_string_free(tag, TRUE);
  }
  for (ZoxString *groupID : Items<ZoxString>(filter->groupIdList)) {
    ZOX_ASSERT(groupID);
    g_string_free(groupID, TRUE);
  }
  for (GSList *cells : {filter->tags, filter->groupIdList, filter->statusList})
    g_slist_free(cells);
  for (ZoxString *text :
       {filter->name, filter->titleSearch, filter->posterSearch, filter->extraTag}) {
    if (text != nullptr)
      g_string_free(text, TRUE);
  }
  g_free(filter);
}

}  // extern "C"
