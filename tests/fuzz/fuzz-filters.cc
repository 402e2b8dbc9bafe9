/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The filters file: the filters that are read are copied and applied to a posting. */
#include <velkor/zox_app_core.h>
#include <velkor/zox_filterlist.h>

#include "support/text.h"
#include "tests/fuzz/session.h"

using namespace velkor;

namespace {

gint try_filter(ZoxFilter *filter, gpointer posting) {
  ZoxFilter *copy = zox_filter_duplicate(filter);
  const auto *event = static_cast<const ZoxEvent *>(posting);
  const gboolean accepted = zox_filter_accepts(filter, event, 0);
  fuzz::require(zox_filter_accepts(copy, event, 0) == accepted, "a copy accepts the same");
  zox_filter_free_filter(copy);
  return 0;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  fuzz::write_cache_file("velkor.filters", view_of(text.get()));
  ZOXFilterlist *list = zox_filterlist_new();
  zox_filterlist_load(list);

  ZoxEvent *posting = zox_event_new();
  posting->cat = 0;
  posting->sCat = 0;
  posting->tags = zox_splitted_list_split("|a0|b1|c2|d23|");
  posting->tag = g_string_new("720p HD x264");
  zox_filterlist_foreach(list, 1, try_filter, posting);
  zox_event_free(posting);
  zox_filterlist_destroy(list);
  return 0;
}
