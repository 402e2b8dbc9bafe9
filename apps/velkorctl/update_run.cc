/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/update_run.h"

#include <ctime>
#include <string>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events.h>
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>

#include "velkorctl/ageing.h"
#include "velkorctl/english.h"
#include "velkorctl/failure.h"
#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/request_watch.h"

namespace velkor::ctl {
namespace {

using Outcome = UpdateRun::Outcome;

Fields<Outcome> outcome_fields() {
  using O = const Outcome &;
  return {
      {{.name = "new", .type = type::flag()},
       [](O outcome) -> Value { return outcome.nothing_new.empty(); }},
      {{.name = "received", .type = type::number()},
       [](O outcome) -> Value { return outcome.received; }},
      {{.name = "cached", .type = type::number()},
       [](O outcome) -> Value { return outcome.cached; }},
      {{.name = "agedOut", .type = type::number()},
       [](O outcome) -> Value { return outcome.aged_out; }},
      {{.name = "watcherMatches", .type = type::flag()},
       [](O outcome) -> Value { return outcome.watcher_matches; }},
      {{.name = "watchlistChanged", .type = type::flag()},
       [](O outcome) -> Value { return outcome.watchlist_changed; }},
      {{.name = "dumpsLeft", .type = type::number()},
       [](O outcome) -> Value { return outcome.dumps_left; }},
  };
}

}  // namespace

void require_ageing(const Arguments &arguments) {
  if (arguments.has("--yes"))
    return;
  const std::int64_t count = postings_of_an_emptied_list(std::time(nullptr));
  if (count == 0)
    return;
  throw usage_error("all " + std::to_string(count) + " cached postings are older than " +
                    retention_in_words() +
                    " and would be removed; check the clock, choose more days with velkorctl "
                    "config set verwijderPostsNaXDagen, or use --yes to remove them");
}

UpdateRun *UpdateRun::current_ = nullptr;

UpdateRun::UpdateRun(Extent extent)
    : last_check_(core->config->lastCheck), prev_check_(core->config->prevCheck),
      recursive_setting_(core->config->recursiveUpdate), extent_(extent),
      count_before_(zox_eventlist_get_count(core->eventlist, 0)) {
  current_ = this;
  core->watcherNoHits = 1;
  core->watchlistUnchanged = 1;
  if (extent != Extent::as_set)
    core->config->recursiveUpdate = 1;
  if (extent == Extent::everything)
    core->config->lastCheck = 0;
  zox_http_set_transfer_callback(on_bytes, this);
}

UpdateRun::~UpdateRun() {
  zox_http_set_transfer_callback(nullptr, nullptr);
  core->config->recursiveUpdate = recursive_setting_;
  current_ = nullptr;
}

bool UpdateRun::run() {
  LibraryResult result = try_call("", [this](char **server_text) {
    return zox_events_fetch(on_dump, on_merge, on_done, server_text, this);
  });
  result.operation = stage_;
  report_ageing();
  if (result.code != ZOX_RESULT_SUCCESS)
    restore_settings();
  if (result.code == ZOX_RESULT_NOTHING_NEW && !(result.request && result.request->refused())) {
    outcome_.nothing_new = sentence_of(result.code, nullptr);
    outcome_.cached = zox_eventlist_get_count(core->eventlist, 0);
    say(explained(result.code, nullptr));
    return false;
  }
  require_success(result);
  require_saved();
  report();
  return true;
}

gint UpdateRun::on_dump(gint32 total, gint32 index) noexcept {
  if (index == 0)  // the update has just removed what is too old
    current_->outcome_.aged_out =
        current_->count_before_ - zox_eventlist_get_count(core->eventlist, 0);
  current_->progress_.dump(total, index);
  if (index > 0)
    current_->stage_ = "fetching dump " + std::to_string(index) + " of " + std::to_string(total);
  return 0;
}

gint UpdateRun::on_bytes(gint64 received, gint64 expected, gpointer self) noexcept {
  static_cast<UpdateRun *>(self)->progress_.bytes(received, expected);
  return note_transfer(received);
}

gint UpdateRun::on_merge(guint32 total, guint32 /*done*/, gpointer self) noexcept {
  static_cast<UpdateRun *>(self)->outcome_.received = total;
  return 0;
}

gint UpdateRun::on_done(gpointer self) noexcept {
  static_cast<UpdateRun *>(self)->done();
  return 0;
}

/** Called once before the cache and the settings are saved, and once after. */
void UpdateRun::done() {
  if (std::exchange(merged_, true))
    return;
  progress_.complete();
  core->config->recursiveUpdate = recursive_setting_;
  core->config->lastCheck = last_check_;
}

void UpdateRun::restore_settings() const noexcept {
  core->config->lastCheck = last_check_;
  core->config->prevCheck = prev_check_;
}

/** When saving fails, the library leaves the update times unchanged. */
void UpdateRun::require_saved() {
  if (const ZoxFileError *outcome = zox_file_last_error(); outcome->status == ZOX_FILE_NOT_WRITTEN)
    throw Failure(Exit::files, std::string(outcome->message) +
                                   "; the next update fetches the postings received again");
}

void UpdateRun::report() {
  outcome_.cached = zox_eventlist_get_count(core->eventlist, 0);
  outcome_.watcher_matches = core->watcherNoHits == 0;
  outcome_.watchlist_changed = core->watchlistUnchanged == 0;
  say(std::to_string(outcome_.received) + " postings received, " + std::to_string(outcome_.cached) +
      " in the cache");
  report_rest();
  if (outcome_.watcher_matches)
    say("a watcher matches a new posting");
  if (outcome_.watchlist_changed)
    say("a posting on the watchlist has changed");
}

void UpdateRun::report_ageing() const {
  if (outcome_.aged_out > 0)
    say(std::to_string(outcome_.aged_out) + " postings older than " + retention_in_words() +
        " removed from the cache (setting verwijderPostsNaXDagen)");
}

/** A first update without --recursive brings only as much as the server names at a time. */
void UpdateRun::report_rest() {
  if (last_check_ != 0 || extent_ != Extent::as_set || recursive_setting_ != 0)
    return;
  GSList *dumps = nullptr;
  gint64 stamp = 0;
  const LibraryResult result =
      try_call("asking what remains", zox_events_fetch_get_available, &dumps,
               static_cast<gint32>(core->config->lastCheck), &stamp);
  const guint count = g_slist_length(dumps);
  g_slist_free_full(dumps, g_free);
  if (result.failed() || count == 0)
    return;
  outcome_.dumps_left = count;
  say("at least " + std::to_string(count) + (count == 1 ? " more dump waits" : " more dumps wait") +
      " on the server; velkorctl update --recursive fetches everything");
}

RecordInfo update_record() {
  return one_record(outcome_fields());
}

void print_update(const Context &context, const Outcome &outcome, Exit exit) {
  if (wants_records(context.arguments))
    print_record(context, outcome_fields(), outcome,
                 {.code = exit, .message = outcome.nothing_new});
}

}  // namespace velkor::ctl
