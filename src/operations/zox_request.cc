/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What a request tells, and all requests together. */
#include <velkor/zox_request.h>

#include <chrono>

#include "operations/request.h"
#include "operations/request_registry.h"

namespace velkor {
namespace {

ZoxRequestStep shown(JobStep step) noexcept {
  switch (step) {
  case JobStep::waiting:
    break;
  case JobStep::asking:
    return ZOX_REQUEST_STEP_ASKING;
  case JobStep::download:
    return ZOX_REQUEST_STEP_DOWNLOAD;
  case JobStep::merging:
    return ZOX_REQUEST_STEP_MERGING;
  case JobStep::saving:
    return ZOX_REQUEST_STEP_SAVING;
  }
  return ZOX_REQUEST_STEP_WAITING;
}

/** What a running request has is its thread's: it shows as an outcome without anything. */
const RequestOutcome &outcome_of(const ZoxRequest *request) noexcept {
  static const RequestOutcome none;
  return request->has_ended() ? request->outcome() : none;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxRequest *zox_request_ref(ZoxRequest *request) {
  request->ref();
  return request;
}

void zox_request_unref(ZoxRequest *request) {
  request->unref();
}

void zox_request_cancel(ZoxRequest *request) {
  request->cancel();
}

ZoxRequestKind zox_request_kind(const ZoxRequest *request) {
  return request->work().kind;
}

ZoxRequestState zox_request_state(const ZoxRequest *request) {
  return request->state();
}

void zox_request_progress(ZoxRequest *request, ZoxRequestProgress *progress) {
  const JobProgress current = request->progress();
  *progress = {.step = shown(current.step),
               .received = current.done,
               .total = current.total,
               .dump = current.dump,
               .dumps = current.dumps,
               .spotStep = current.spot_step};
}

gint32 zox_request_post_id(const ZoxRequest *request) {
  return request->work().postId;
}

ZoxErrorCode zox_request_code(const ZoxRequest *request) {
  return outcome_of(request).code;
}

const char *zox_request_message(const ZoxRequest *request) {
  return outcome_of(request).message.get();
}

const char *zox_request_failure(const ZoxRequest *request) {
  return request->has_ended() && !request->failure().empty() ? request->failure().c_str() : nullptr;
}

ZoxAnswer zox_request_answer(const ZoxRequest *request) {
  return outcome_of(request).answer;
}

gint32 zox_request_number(const ZoxRequest *request) {
  return outcome_of(request).number;
}

gint32 zox_request_second_number(const ZoxRequest *request) {
  return outcome_of(request).second_number;
}

const ZoxEvent *zox_request_event(const ZoxRequest *request) {
  return outcome_of(request).event.get();
}

const ZoxProfile *zox_request_user(const ZoxRequest *request) {
  return outcome_of(request).profile.get();
}

const GSList *zox_request_own_list(const ZoxRequest *request) {
  return outcome_of(request).own_list.get();
}

ZoxUpdateResult *zox_request_update_result(const ZoxRequest *request) {
  return outcome_of(request).update.get();
}

void zox_requests_cancel_all(void) {
  request_registry().cancel_all();
}

guint32 zox_requests_count(void) {
  return static_cast<guint32>(request_registry().count());
}

gboolean zox_requests_wait(guint32 milliseconds) {
  const auto deadline = RequestRegistry::Clock::now() + std::chrono::milliseconds(milliseconds);
  return request_registry().wait_until(deadline) ? TRUE : FALSE;
}

}  // extern "C"
