/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/event_intake.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_events_parse.h>

#include "core/app_core.h"
#include "store/event_table.h"
#include "support/assertion.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

bool is_deleted(const ZoxEvent &event) noexcept {
  return event.status == ZOX_STATUS_DELETED || event.status == ZOX_STATUS_REMOVED;
}

/** Tells what was odd about a posting; false when it cannot be used for that. */
bool tell(const EventRemark &remark, const ZoxEvent &event) noexcept {
  if (remark.oddity == ListOddity::AlreadyFilled) {
    g_warning("WARNING! event->%s was already filled!", remark.list);
    return true;
  }
  ZOX_ASSERT_IN(zox_events_parse_event, tolerant(), "tmp");
  g_warning("zox_events_parse(): posting %i: no text in the list of %s, passed over\n",
            event.postId, remark.list);
  return false;
}

}  // namespace

void EventIntake::take(std::vector<OwnedEventObject> objects,
                       const std::vector<EventRemark> &remarks) noexcept {
  auto remark = remarks.cbegin();
  for (std::size_t number = 0; number < objects.size(); ++number) {
    const auto first = remark;
    remark = std::find_if(first, remarks.cend(),
                          [number](const EventRemark &each) { return each.posting != number; });
    if (const auto postId = accepted_id(*objects[number], {first, remark}))
      put(*postId, std::move(objects[number]));
  }
}

/** Another thread may have the object: when a list is read again, it keeps its objects. */
std::optional<gint32> EventIntake::accepted_id(ZOXEventObject &object,
                                               std::span<const EventRemark> remarks) noexcept {
  const ReadLock lock(object.lock);
  const ZoxEvent &event = *object.event;
  bool usable = true;
  for (const EventRemark &remark : remarks)
    usable = tell(remark, event) && usable;
  if (!usable)
    return std::nullopt;
  count(event);
  return is_deleted(event) || !has_bad_word(event) ? std::optional(event.postId) : std::nullopt;
}

/** Counts a new posting in the category list, which the first one of a document begins anew. */
void EventIntake::count(const ZoxEvent &event) noexcept {
  if (event.stamp < core->config->prevCheck)
    return;
  if (!std::exchange(counting_, true))
    zox_categories_reset_counters();
  zox_category_update(&event);
}

bool EventIntake::has_bad_word(const ZoxEvent &event) noexcept {
  if (bad_words_.occur_in_title(event))
    return true;
  ZOX_ASSERT_IN(zox_events_parse, !bad_words_.cut_short(), "badword");
  return false;
}

void EventIntake::put(gint32 postId, OwnedEventObject object) const noexcept {
  if (table_ != nullptr)
    put_object(table_, postId, std::move(object));
  else
    *list_ = g_slist_prepend(*list_, object.release());
}

}  // namespace velkor
