/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/session.h"

#include <memory>
#include <utility>

#include <malloc.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_codes.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_watchlist.h>

#include "library/age_limit.h"
#include "library/ask_server.h"
#include "library/details_reader.h"
#include "library/main_loop.h"
#include "library/snapshot_reader.h"
#include "library/update_request.h"
#include "model/shown_text.h"

namespace velkor::app {
namespace {

const char *chars_of(const std::optional<std::string> &text) noexcept {
  return text ? text->c_str() : nullptr;
}

/** One posting on its way from the server to the window, step by step. */
class PostingFetch : public std::enable_shared_from_this<PostingFetch> {
public:
  PostingFetch(GMainContext *context, std::int32_t id, SharedCancellation wanted,
               Session::PostingFunction function)
      : context_(context), id_(id), wanted_(std::move(wanted)), function_(std::move(function)) {}

  void start() {
    if (auto cached = read_details(id_))
      tell({PostingReply::Stage::cached, std::move(*cached), {}});
    ask([id = id_](const ZoxRequestOptions *options) { return zox_request_details(id, options); },
        PostingReply::Stage::details);
  }

private:
  void ask(const RequestStart &start, PostingReply::Stage stage) {
    if (!wanted_->cancelled())
      start_request(
          context_, *wanted_, start,
          {.done = unless_cancelled([self = shared_from_this(), stage](const ZoxRequest &request) {
             self->end(request, stage);
           })});
  }

  void end(const ZoxRequest &request, PostingReply::Stage stage) {
    const ZoxEvent *posting = zox_request_event(&request);
    if (posting == nullptr)
      return tell({.failure = result_of(request).message});
    tell({stage, details_of(*posting), {}});
    if (stage == PostingReply::Stage::details)
      ask([id =
               id_](const ZoxRequestOptions *options) { return zox_request_forum(id, 0, options); },
          PostingReply::Stage::complete);
  }

  void tell(PostingReply reply) { deliver(wanted_, function_, std::move(reply)); }

  GMainContext *context_;
  std::int32_t id_;
  SharedCancellation wanted_;
  Session::PostingFunction function_;
};

ServerAnswer answer_of(const ZoxRequest &request) {
  switch (zox_request_answer(&request)) {
  case ZOX_ANSWER_DUPLICATE:
    return ServerAnswer::duplicate;
  case ZOX_ANSWER_LOCKED:
    return ServerAnswer::locked;
  case ZOX_ANSWER_NOT_FOUND:
    return ServerAnswer::not_found;
  case ZOX_ANSWER_REFUSED:
    return ServerAnswer::refused;
  case ZOX_ANSWER_UNKNOWN:
    return ServerAnswer::unknown;
  default:  // a request that succeeds and has no answers to tell apart was taken
    return ServerAnswer::taken;
  }
}

ActionOutcome action_outcome_of(const ZoxRequest &request) {
  const ZoxErrorCode code = zox_request_code(&request);
  if (code == ZOX_RESULT_POSTING_WARNED)  // the library has no sentence for it
    return {ServerAnswer::duplicate, {}};
  const CallResult result = result_of(request);
  return result.failed() ? ActionOutcome{ServerAnswer::failed, result.message}
                         : ActionOutcome{answer_of(request), {}};
}

}  // namespace

Session::Session(SessionOptions options, Events events)
    : options_(std::move(options)), events_(std::move(events)) {
  core_.post([this] { open(); });
}

Session::~Session() = default;

void Session::open() {
  zox_set_tolerant(1);
  ZoxCoreOptions opening{};
  opening.dataDir = chars_of(options_.data_dir);
  opening.cacheDir = chars_of(options_.cache_dir);
  opening.libDir = chars_of(options_.lib_dir);
  opening.parts = ZOX_CORE_SETTINGS;
  char *place = nullptr;
  const ZoxCoreResult result = zox_app_core_open(&opening, &place);
  const OwnedText message(place);
  if (result != ZOX_CORE_OPENED) {
    run_on_main_loop([this, text = shown_lines(message.get())] { events_.unusable(text); });
    return;
  }
  is_open_ = true;
  health_.load_parts();
  if (options_.server || options_.static_server)
    zox_http_set_hosts(chars_of(options_.server), chars_of(options_.static_server));
  if (options_.ca_file)
    zox_http_set_ca_file(chars_of(options_.ca_file));
  publish_snapshot();
  publish_files();
}

SharedSnapshot Session::publish_snapshot() {
  SharedSnapshot snapshot = read_snapshot(hits_);
  run_on_main_loop([this, snapshot] { events_.snapshot(snapshot); });
  malloc_trim(0);  // much was needed for a moment only, while the list was read
  return snapshot;
}

void Session::publish_files() {
  run_on_main_loop([this, files = health_.files()] { events_.files(files); });
}

void Session::look_at_files() {
  core_.post([this] {
    if (is_open_)
      publish_files();
  });
}

void Session::update(Extent extent) {
  update_ = std::make_shared<Cancellation>();
  core_.post([this, extent, wanted = update_] {
    if (!is_open_)
      return;
    const auto full =
        extent == Extent::everything ? std::optional<FullUpdate>(std::in_place) : std::nullopt;
    start_request(core_.context(), *wanted, zox_request_update,
                  {.progress =
                       [this](const ZoxRequestProgress &progress) {
                         run_on_main_loop([this, progress = progress_of(progress)] {
                           events_.update_progress(progress);
                         });
                       },
                   .done =
                       [this, full, age_limit = age_limit_days()](const ZoxRequest &request) {
                         end_update(request, full, age_limit.value_or(0));
                       }});
  });
}

void Session::stop_update() {
  if (update_)
    update_->cancel();
}

void Session::end_update(const ZoxRequest &request, const std::optional<FullUpdate> &full,
                         std::int32_t age_limit) {
  UpdateOutcome outcome = outcome_of(request);
  outcome.age_limit = age_limit;
  health_.note();
  if (full)
    full->end();
  if (!is_open_)
    return;
  if (outcome.kind == UpdateOutcome::Kind::changed)
    outcome.watchers = take_hits(request);
  else if (outcome.aged_out > 0)
    publish_snapshot();
  publish_files();
  run_on_main_loop([this, outcome] { events_.update_ended(outcome); });
}

/** The list has other marks, and other postings, from then on. */
std::vector<WatcherGroup> Session::take_hits(const ZoxRequest &request) {
  const std::vector<WatcherHit> hits = hits_of(request);
  hits_.clear();
  for (const WatcherHit &hit : hits)
    hits_.insert(hit.id);
  return group_by_watcher(*publish_snapshot(), hits);
}

SharedCancellation Session::run(Job job) {
  auto wanted = std::make_shared<Cancellation>();
  core_.post([this, wanted, job = std::move(job)] {
    if (is_open_ && !wanted->cancelled())
      job(core_.context(), wanted);
  });
  return wanted;
}

SharedCancellation Session::fetch_posting(std::int32_t id, PostingFunction function) {
  return run([id, function = std::move(function)](GMainContext *context,
                                                  const SharedCancellation &wanted) {
    std::make_shared<PostingFetch>(context, id, wanted, function)->start();
  });
}

SharedCancellation Session::send_reaction(std::int32_t id, std::string text, AnswerFunction done) {
  const auto start = [id, text = std::move(text)](const ZoxRequestOptions *options) {
    return zox_request_reaction(id, 0, text.c_str(), options);
  };
  return ask_server(*this, start, action_outcome_of, std::move(done));
}

SharedCancellation Session::give_kudos(std::int32_t id, AnswerFunction done) {
  const auto start = [id](const ZoxRequestOptions *options) {
    return zox_request_kudos_give(id, 1, options);
  };
  return ask_server(*this, start, action_outcome_of, std::move(done));
}

SharedCancellation Session::warn(std::int32_t id, std::string reason, AnswerFunction done) {
  const auto start = [id, reason = std::move(reason)](const ZoxRequestOptions *options) {
    return zox_request_warning(id, 0, reason.c_str(), options);
  };
  return ask_server(*this, start, action_outcome_of, std::move(done));
}

void Session::set_watched(std::int32_t id, bool watched) {
  core_.post([this, id, watched] {
    if (!is_open_)
      return;
    if (watched)
      zox_watchlist_add(id);
    else
      zox_watchlist_remove(id);
  });
}

void Session::refresh() {
  core_.post([this] {
    if (is_open_)
      publish_snapshot();
  });
}

/** What runs stops first: the core goes when no request uses it any more. */
void Session::close(std::function<void()> closed) {
  zox_requests_cancel_all();
  core_.post([this, closed = std::move(closed)] {
    if (std::exchange(is_open_, false))
      zox_app_core_close();
    run_on_main_loop(closed);
  });
}

}  // namespace velkor::app
