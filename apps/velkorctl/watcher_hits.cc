/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/watcher_hits.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <tuple>
#include <utility>

#include <velkor/zox_update_result.h>

namespace velkor::ctl {
namespace {

using OwnedUpdateResult = std::unique_ptr<ZoxUpdateResult, ReleaseWith<zox_update_result_unref>>;

void sort_by_watcher(std::vector<WatcherHit> &hits) {
  std::ranges::sort(hits, [](const WatcherHit &one, const WatcherHit &other) {
    return std::tie(one.watcher, other.posting->stamp, other.posting->postId) <
           std::tie(other.watcher, one.posting->stamp, one.posting->postId);
  });
}

}  // namespace

Fields<WatcherHit> hit_fields() {
  const Fields<WatcherHit> watcher{
      {{.name = "watcher", .type = type::text(), .rank = 2, .flexible = true},
       [](const WatcherHit &hit) -> Value { return hit.watcher; }}};
  return together(watcher,
                  fields_of_part<WatcherHit, ZoxEvent>(
                      posting_fields(), [](const WatcherHit &hit) { return hit.posting.get(); }));
}

std::vector<WatcherHit> hits_of_update() {
  const OwnedUpdateResult result(zox_events_last_result());
  std::vector<WatcherHit> hits;
  if (!result)
    return hits;
  guint32 count = 0;
  const gint32 *ids = zox_update_result_ids(result.get(), ZOX_UPDATE_WATCHER_HIT, &count);
  for (guint32 index = 0; index < count; ++index)
    if (OwnedEvent posting = find_posting(ids[index]))
      hits.push_back({zox_update_result_watcher(result.get(), index), std::move(posting)});
  sort_by_watcher(hits);
  return hits;
}

std::string document_of(const std::vector<WatcherHit> &hits) {
  return json_list("watchers.run", hit_fields(), hits);
}

}  // namespace velkor::ctl
