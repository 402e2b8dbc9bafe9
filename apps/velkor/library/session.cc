/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/session.h"

#include <mutex>
#include <utility>

#include <malloc.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_kudos.h>
#include <velkor/zox_watchlist.h>

#include "library/call.h"
#include "library/details_reader.h"
#include "library/main_loop.h"
#include "library/snapshot_reader.h"
#include "library/update_run.h"
#include "model/shown_text.h"

namespace velkor::app {
namespace {

const char *chars_of(const std::optional<std::string> &text) noexcept {
  return text ? text->c_str() : nullptr;
}

/** Reports that come faster than the main loop runs are joined: the latest counts. */
class ProgressReports : public std::enable_shared_from_this<ProgressReports> {
public:
  explicit ProgressReports(std::function<void(UpdateProgress)> report)
      : report_(std::move(report)) {}

  void add(const UpdateProgress &progress) {
    const std::lock_guard guard(lock_);
    latest_ = progress;
    if (!std::exchange(waiting_, true))
      run_on_main_loop([self = shared_from_this()] { self->deliver(); });
  }

private:
  void deliver() {
    UpdateProgress progress;
    {
      const std::lock_guard guard(lock_);
      waiting_ = false;
      progress = latest_;
    }
    report_(progress);
  }

  std::function<void(UpdateProgress)> report_;
  std::mutex lock_;
  UpdateProgress latest_;
  bool waiting_ = false;
};

/** Delivers to a function that is called only while the request is wanted. */
template <typename Function, typename Reply>
void deliver(const SharedCancellation &wanted, const Function &function, Reply reply) {
  run_on_main_loop([wanted, function, reply = std::move(reply)]() mutable {
    if (!wanted->cancelled())
      function(std::move(reply));
  });
}

/** Asks the server; the stages of a posting beyond what the cache has of it. */
PostingReply details_from_server(std::int32_t id) {
  const CallResult result = call(zox_eventinfo_fetch, id);
  if (result.failed())
    return {.failure = result.message};
  return {PostingReply::Stage::details, read_details(id).value_or(PostingDetails{}), {}};
}

PostingReply forum_from_server(std::int32_t id) {
  const CallResult result = call(zox_events_forum_fetch, id, 0);
  if (result.failed())
    return {.failure = result.message};
  return {PostingReply::Stage::complete, read_details(id).value_or(PostingDetails{}), {}};
}

void fetch(std::int32_t id, const SharedCancellation &wanted,
           const Session::PostingFunction &function) {
  if (wanted->cancelled())
    return;
  const WatchedTransfers transfers(*wanted);
  if (auto cached = read_details(id))
    deliver(wanted, function, PostingReply{PostingReply::Stage::cached, std::move(*cached), {}});
  for (const auto &step : {details_from_server, forum_from_server}) {
    PostingReply reply = step(id);
    const bool failed = reply.stage == PostingReply::Stage::failed;
    deliver(wanted, function, std::move(reply));
    if (failed || wanted->cancelled())
      return;
  }
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
  opening.parts = ZOX_CORE_ALL & ~static_cast<guint32>(ZOX_CORE_BUS);
  char *place = nullptr;
  const ZoxCoreResult result = zox_app_core_open(&opening, &place);
  const OwnedText message(place);
  if (result != ZOX_CORE_OPENED) {
    run_on_main_loop([this, text = shown_lines(message.get())] { events_.unusable(text); });
    return;
  }
  is_open_ = true;
  if (options_.server || options_.static_server)
    zox_http_set_hosts(chars_of(options_.server), chars_of(options_.static_server));
  if (options_.ca_file)
    zox_http_set_ca_file(chars_of(options_.ca_file));
  install_transfer_callback();
  publish_snapshot();
}

void Session::publish_snapshot() {
  run_on_main_loop([this, snapshot = read_snapshot(hits_)] { events_.snapshot(snapshot); });
  malloc_trim(0);  // much was needed for a moment only, while the list was read
}

void Session::update() {
  update_ = new_cancellation();
  core_.post([this, cancellation = update_] {
    if (is_open_ && !cancellation->cancelled())
      run_update(*cancellation);
  });
}

void Session::stop_update() {
  if (update_)
    update_->cancel();
}

void Session::run_update(const Cancellation &cancellation) {
  const auto reports = std::make_shared<ProgressReports>(events_.update_progress);
  UpdateRun run(cancellation, [&](const UpdateProgress &progress) { reports->add(progress); });
  UpdateOutcome outcome = run.run();
  if (outcome.kind == UpdateOutcome::Kind::changed)
    hits_ = run.hits();
  if (outcome.kind == UpdateOutcome::Kind::changed || outcome.aged_out > 0)
    publish_snapshot();
  run_on_main_loop([this, outcome = std::move(outcome)] { events_.update_ended(outcome); });
}

SharedCancellation Session::fetch_posting(std::int32_t id, bool known, PostingFunction function) {
  SharedCancellation wanted = new_cancellation();
  // What the list does not know is counted in the categories, which are the core's.
  JobThread &thread = known ? server_ : core_;
  thread.post([id, wanted, function = std::move(function)] { fetch(id, wanted, function); });
  return wanted;
}

SharedCancellation Session::request(std::function<std::string()> ask, DoneFunction done) {
  SharedCancellation wanted = new_cancellation();
  server_.post([wanted, ask = std::move(ask), done = std::move(done)] {
    if (wanted->cancelled())
      return;
    const WatchedTransfers transfers(*wanted);
    deliver(wanted, done, ask());
  });
  return wanted;
}

SharedCancellation Session::send_reaction(std::int32_t id, std::string text, DoneFunction done) {
  return request(
      [id, text = std::move(text)] {
        return call(zox_events_forum_post, text.c_str(), id, 0).message;
      },
      std::move(done));
}

SharedCancellation Session::give_kudos(std::int32_t id, DoneFunction done) {
  return request([id] { return call(zox_kudos_give, id, 1).message; }, std::move(done));
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

SharedCancellation Session::run(Thread thread, Job job) {
  SharedCancellation wanted = new_cancellation();
  JobThread &worker = thread == Thread::core ? core_ : server_;
  worker.post([this, wanted, job = std::move(job)] {
    if (!is_open_ || wanted->cancelled())
      return;
    const WatchedTransfers transfers(*wanted);
    job(wanted);
  });
  return wanted;
}

SharedCancellation Session::new_cancellation() {
  std::erase_if(requests_, [](const auto &request) { return request.expired(); });
  auto cancellation = std::make_shared<Cancellation>();
  requests_.push_back(cancellation);
  return cancellation;
}

/** The threads end one after the other: the core may only go when no request uses it. */
void Session::close(std::function<void()> closed) {
  for (const auto &request : requests_)
    if (const SharedCancellation cancellation = request.lock())
      cancellation->cancel();
  server_.post([this, closed = std::move(closed)] {
    core_.post([this, closed] {
      if (is_open_.exchange(false)) {
        remove_transfer_callback();
        zox_app_core_close();
      }
      run_on_main_loop(closed);
    });
  });
}

}  // namespace velkor::app
