/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/update_run.h"

#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events.h>
#include <velkor/zox_file.h>

#include "library/call.h"
#include "library/snapshot_reader.h"
#include "model/shown_text.h"
#include "support/owned.h"

namespace velkor::app {

UpdateRun *UpdateRun::current_ = nullptr;

UpdateRun::UpdateRun(const Cancellation &cancellation, Follow follow)
    : cancellation_(cancellation), follow_(std::move(follow)),
      transfers_(cancellation,
                 [this](std::int64_t received, std::int64_t expected) {
                   progress_.received = received;
                   progress_.expected = expected;
                   follow_(progress_);
                 }),
      count_before_(zox_eventlist_get_count(core->eventlist, 0)) {
  current_ = this;
  core->watcherNoHits = 1;
  core->watchlistUnchanged = 1;
}

UpdateRun::~UpdateRun() {
  current_ = nullptr;
}

UpdateOutcome UpdateRun::run() {
  char *place = nullptr;
  const ZoxErrorCode code = zox_events_fetch(on_dump, on_merge, on_done, &place, this);
  const OwnedText server_text(place);
  return outcome_of(code, server_text.get());
}

gint UpdateRun::on_dump(gint32 total, gint32 index) noexcept {
  if (index == 0)  // the update has just removed what is too old
    current_->outcome_.aged_out =
        current_->count_before_ - zox_eventlist_get_count(core->eventlist, 0);
  current_->progress_ = {.dump = index, .dumps = total};
  current_->follow_(current_->progress_);
  return 0;
}

gint UpdateRun::on_merge(guint32 total, guint32 /*done*/, gpointer self) noexcept {
  auto &run = *static_cast<UpdateRun *>(self);
  run.outcome_.received = total;
  if (!std::exchange(run.progress_.saving, true))
    run.follow_(run.progress_);
  return 0;
}

/** Called twice; only before the list is saved and loaded again it knows the watchers' hits. */
gint UpdateRun::on_done(gpointer self) noexcept {
  auto &run = *static_cast<UpdateRun *>(self);
  if (!std::exchange(run.merged_, true) && core->watcherNoHits == 0)
    run.hits_ = read_hits();
  return 0;
}

UpdateOutcome UpdateRun::outcome_of(ZoxErrorCode code, const char *server_text) const {
  UpdateOutcome outcome = outcome_;
  outcome.hits = static_cast<std::uint32_t>(hits_.size());
  outcome.watchlist_changed = core->watchlistUnchanged == 0;
  if (code == ZOX_RESULT_SUCCESS) {
    outcome.kind = UpdateOutcome::Kind::changed;
    if (const ZoxFileError *error = zox_file_last_error(); error->status == ZOX_FILE_NOT_WRITTEN)
      outcome.not_saved = shown_line(error->message);
    return outcome;
  }
  if (cancellation_.cancelled()) {
    outcome.kind = UpdateOutcome::Kind::stopped;
    return outcome;
  }
  outcome.kind = code == ZOX_RESULT_NOTHING_NEW ? UpdateOutcome::Kind::nothing_new
                                                : UpdateOutcome::Kind::failed;
  outcome.message = call_result(code, server_text).message;
  return outcome;
}

}  // namespace velkor::app
