/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_update_result.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "operations/update_result.h"

namespace velkor {
namespace {

thread_local OwnedUpdateResult latest;

/** One entry for each posting: whether it was known at first, and what it was at last. */
std::vector<MergeLog::Entry> joined(std::vector<MergeLog::Entry> entries) noexcept {
  std::ranges::stable_sort(entries, {}, &MergeLog::Entry::postId);
  std::vector<MergeLog::Entry> postings;
  for (MergeLog::Entry entry : entries) {
    if (postings.empty() || postings.back().postId != entry.postId) {
      postings.push_back(entry);
      continue;
    }
    entry.known = postings.back().known;
    entry.watched = entry.watched && entry.known;
    postings.back() = entry;
  }
  return postings;
}

}  // namespace

ZoxUpdateResult &begin_update_result() noexcept {
  latest.reset(std::make_unique<ZoxUpdateResult>().release());
  return *latest;
}

}  // namespace velkor

using namespace velkor;

void ZoxUpdateResult::unref() noexcept {
  if (--references_ == 0)
    const std::unique_ptr<ZoxUpdateResult> last(this);
}

std::vector<gint32> &ZoxUpdateResult::group(ZoxUpdateGroup group) noexcept {
  return groups_[static_cast<std::size_t>(group)];
}

const std::vector<gint32> &ZoxUpdateResult::ids(ZoxUpdateGroup group) const noexcept {
  return groups_[static_cast<std::size_t>(group)];
}

void ZoxUpdateResult::note_aged_out(std::vector<gint32> ids) noexcept {
  std::ranges::sort(ids);
  group(ZOX_UPDATE_AGED_OUT) = std::move(ids);
}

void ZoxUpdateResult::note_merge(MergeLog log) noexcept {
  std::ranges::stable_sort(log.hits, {}, &MergeLog::Hit::postId);
  for (const MergeLog::Entry &entry : joined(std::move(log.entries))) {
    if (entry.deleted)
      group(ZOX_UPDATE_REMOVED).push_back(entry.postId);
    else
      group(entry.known ? ZOX_UPDATE_CHANGED : ZOX_UPDATE_NEW).push_back(entry.postId);
    if (entry.watched)
      group(ZOX_UPDATE_WATCHED).push_back(entry.postId);
    if (!entry.hit || entry.deleted)
      continue;
    // The last of several is that of the posting as it is now.
    const auto behind =
        std::ranges::upper_bound(log.hits, entry.postId, {}, &MergeLog::Hit::postId);
    group(ZOX_UPDATE_WATCHER_HIT).push_back(entry.postId);
    watchers_.push_back(std::prev(behind)->watcher);
  }
}

extern "C" {

const gint32 *zox_update_result_ids(const ZoxUpdateResult *result, ZoxUpdateGroup group,
                                    guint32 *count) {
  const std::vector<gint32> &ids = result->ids(group);
  if (count != nullptr)
    *count = static_cast<guint32>(ids.size());
  return ids.empty() ? nullptr : ids.data();
}

const char *zox_update_result_watcher(const ZoxUpdateResult *result, guint32 index) {
  const std::vector<std::string> &watchers = result->watchers();
  return index < watchers.size() ? watchers[index].c_str() : nullptr;
}

ZoxUpdateResult *zox_update_result_ref(ZoxUpdateResult *result) {
  result->ref();
  return result;
}

void zox_update_result_unref(ZoxUpdateResult *result) {
  result->unref();
}

ZoxUpdateResult *zox_events_last_result(void) {
  return latest ? zox_update_result_ref(latest.get()) : nullptr;
}

}  // extern "C"
