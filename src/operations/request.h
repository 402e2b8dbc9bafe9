/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A request on a thread of its own: what it does, what it brings, and who is told. */
#ifndef VELKOR_OPERATIONS_REQUEST_H
#define VELKOR_OPERATIONS_REQUEST_H

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include <velkor/zox_myzox.h>
#include <velkor/zox_request.h>

#include "core/file_outcome.h"
#include "core/job.h"
#include "http/request_record.h"
#include "http/workers.h"
#include "operations/update_result.h"
#include "posting/event_record.h"
#include "support/owned.h"
#include "support/owned_records.h"

namespace velkor {

using OwnedOverview = std::unique_ptr<GSList, ReleaseWith<zox_myzox_free>>;
using OwnedContext = std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>>;
using OwnedSource = std::unique_ptr<GSource, ReleaseWith<g_source_unref>>;

/** What a request brought. */
struct RequestOutcome {
  ZoxErrorCode code = ZOX_RESULT_UNKNOWN_ERROR;
  OwnedText message{};
  ZoxAnswer answer = ZOX_ANSWER_NONE;
  gint32 number = 0;
  gint32 second_number = 0;
  OwnedEvent event{};
  OwnedProfile profile{};
  OwnedUpdateResult update{};
  OwnedOverview own_list{};
};

/** What a request does. */
struct RequestWork {
  ZoxRequestKind kind;
  gint32 postId;
  /** The work itself, on the request's thread. */
  std::function<void(RequestOutcome &)> run;
  /** What is the core's thread's to do once the work has succeeded; may be empty. */
  std::function<void(RequestOutcome &)> publish{};
};

}  // namespace velkor

/** Its life: made, run on its thread, published, ended. The registry guards the transitions. */
struct ZoxRequest final : velkor::Job {
public:
  ZoxRequest(velkor::RequestWork work, const ZoxRequestOptions *options) noexcept;

  void ref() noexcept { ++references_; }
  void unref() noexcept;

  /** Runs it on a new thread; without one the request ends with code 1. Never called twice. */
  void start() noexcept;

  /** Does what is the core's thread's, unless that was done. */
  void publish() noexcept;
  /** Tells of the end. */
  void tell_end() noexcept;
  [[nodiscard]] GMainContext *context() const noexcept { return context_.get(); }

  [[nodiscard]] ZoxRequestState state() const noexcept { return state_; }
  [[nodiscard]] bool has_ended() const noexcept { return state_ != ZOX_REQUEST_RUNNING; }
  [[nodiscard]] const velkor::RequestWork &work() const noexcept { return work_; }
  [[nodiscard]] const velkor::RequestOutcome &outcome() const noexcept { return outcome_; }
  [[nodiscard]] const std::string &failure() const noexcept { return failure_; }

  /** Has the context tell of the end; called by the registry, which then knows that it may. */
  void attach_end() noexcept;

private:
  static gpointer run_on_thread(gpointer data) noexcept;
  static gboolean end_on_context(gpointer data) noexcept;
  static gboolean tell_progress(gpointer data) noexcept;
  static void unref_pointer(gpointer request) noexcept;

  void run() noexcept;
  /** The state that the outcome stands for. */
  [[nodiscard]] ZoxRequestState judge() const noexcept;
  void finish_work(ZoxRequestState state) noexcept;
  void progressed() noexcept override;
  /** A source that calls the function with the request, which it holds. */
  velkor::OwnedSource make_source(GSourceFunc function) noexcept;

  std::atomic<int> references_ = 1;
  velkor::RequestWork work_;
  ZoxRequestOptions options_;
  velkor::OwnedContext context_;
  velkor::RequestOutcome outcome_;
  std::string failure_;
  /* How the request's thread left them, for who is told of the end. */
  velkor::RequestRecord latest_request_;
  velkor::FileOutcome file_outcome_;

  ZoxRequestState final_state_ = ZOX_REQUEST_RUNNING;
  std::atomic<ZoxRequestState> state_ = ZOX_REQUEST_RUNNING;
  std::atomic<bool> progress_pending_ = false;
  std::atomic<bool> published_ = false;
  velkor::OwnedSource end_source_;
  /** Has the end of the process wait for the thread, which takes it over. */
  std::unique_ptr<velkor::Worker> worker_;
};

#endif
