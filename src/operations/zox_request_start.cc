/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Starting requests: which blocking function each of them runs. */
#include <velkor/zox_request.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events.h>
#include <velkor/zox_events_forum.h>

#include "operations/request_start.h"
#include "support/assertion.h"
#include "support/immortal.h"

namespace velkor {

ZoxRequest *start(RequestWork work, const ZoxRequestOptions *options) noexcept {
  auto request = std::make_unique<ZoxRequest>(std::move(work), options);
  request->start();
  return request.release();
}

namespace {

/** Lets in one update after the other. */
class UpdateTurn {
public:
  UpdateTurn() noexcept = default;
  ~UpdateTurn() {
    if (!held_)
      return;
    const std::lock_guard lock(shared().mutex);
    shared().taken = false;
    shared().changed.notify_one();
  }
  UpdateTurn(const UpdateTurn &) = delete;
  UpdateTurn &operator=(const UpdateTurn &) = delete;

  /** Waits for the turn; false when the job was cancelled before it came. */
  bool take() noexcept {
    constexpr auto patience = std::chrono::milliseconds(50);
    std::unique_lock lock(shared().mutex);
    while (shared().taken && !is_cancelled())
      shared().changed.wait_for(lock, patience);
    held_ = !is_cancelled();
    shared().taken = shared().taken || held_;
    return held_;
  }

private:
  struct Shared {
    std::mutex mutex;
    std::condition_variable changed;
    bool taken = false;
  };
  static Shared &shared() noexcept { return immortal<Shared>(); }

  bool held_ = false;
};

gint follow_dumps(gint32 total, gint32 index) {
  if (Job *job = current_job(); job != nullptr && index > 0)
    job->next_dump(index, total);
  return 0;
}

gint follow_merge(guint32 total, guint32 done, gpointer) {
  if (Job *job = current_job())
    job->count(done, total);
  return 0;
}

void update(RequestOutcome &outcome) noexcept {
  UpdateTurn turn;
  if (!turn.take())
    return;
  enter_step(JobStep::asking);
  outcome.code =
      zox_events_fetch(follow_dumps, follow_merge, nullptr, MessagePlace(outcome.message), nullptr);
  outcome.update.reset(zox_events_last_result());
}

/** The posting as the list holds it now. */
void take_posting(RequestOutcome &outcome, gint32 postId) noexcept {
  if (outcome.code == ZOX_RESULT_SUCCESS)
    outcome.event.reset(zox_eventlist_lookup_id(core->eventlist, postId));
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxRequest *zox_request_update(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return start({.kind = ZOX_REQUEST_UPDATE, .postId = 0, .run = update}, options);
}

ZoxRequest *zox_request_details(gint32 postId, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  const auto run = [postId](RequestOutcome &outcome) noexcept {
    enter_step(JobStep::asking);
    outcome.code = zox_eventinfo_fetch(postId, MessagePlace(outcome.message));
    take_posting(outcome, postId);
  };
  return start({.kind = ZOX_REQUEST_DETAILS, .postId = postId, .run = run}, options);
}

ZoxRequest *zox_request_forum(gint32 postId, gint32 lastCheck, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  const auto run = [postId, lastCheck](RequestOutcome &outcome) noexcept {
    enter_step(JobStep::asking);
    outcome.code = zox_events_forum_fetch(postId, lastCheck, MessagePlace(outcome.message));
    take_posting(outcome, postId);
  };
  return start({.kind = ZOX_REQUEST_FORUM, .postId = postId, .run = run}, options);
}

ZoxRequest *zox_request_load(guint32 parts, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  constexpr guint32 postings = ZOX_CORE_POSTINGS;
  zox_app_core_load(parts & ~postings);
  const auto run = [parts](RequestOutcome &outcome) noexcept {
    zox_app_core_load(parts & postings);
    outcome.code = ZOX_RESULT_SUCCESS;
  };
  return start({.kind = ZOX_REQUEST_LOAD, .postId = 0, .run = run}, options);
}

}  // extern "C"
