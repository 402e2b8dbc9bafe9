/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Fetching the reactions under a posting and writing a new one. */
#include <velkor/zox_events_forum.h>

#include <cstdio>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>

#include "http/service_request.h"
#include "posting/event_record.h"
#include "services/background_job.h"
#include "support/assertion.h"

namespace velkor {
namespace {

class ZoxForumJob final : public BackgroundJob {
public:
  ZoxForumJob(gint32 postId, gint32 lastCheck, ZoxForumCallback callback,
              gpointer userData) noexcept
      : postId_(postId), lastCheck_(lastCheck), callback_(callback), userData_(userData) {}

  void run() noexcept override { result_ = zox_events_forum_fetch(postId_, lastCheck_, &message_); }
  void report() noexcept override {
    callback_(result_, postId_, lastCheck_, std::exchange(message_, nullptr), userData_);
  }

private:
  gint32 postId_;
  gint32 lastCheck_;
  char *message_ = nullptr;
  ZoxErrorCode result_ = 0;
  ZoxForumCallback callback_;
  gpointer userData_;
};

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_events_forum_fetch(gint32 postId, gint32 lastCheck, char **message) {
  ZOX_ASSERT(core);
  hand_over(message, nullptr);
  // The forum is read into a copy, so that a failure leaves the cached posting as it was.
  const OwnedEvent event(zox_eventlist_lookup_id(core->eventlist, postId));
  if (!event) {
    std::printf("zox_events_forum:%i postid = %i\n", __LINE__, postId);
    return ZOX_RESULT_POSTING_NOT_CACHED;
  }
  const ServiceReply reply =
      send_request("/3.7.3/xml-dyn.php",
                   {{"id", decimal(postId).c_str()}, {"lastcheck", decimal(lastCheck).c_str()}});
  if (reply.failed())
    return report_failure(reply, message);
  if (zox_events_forum_parse(reply.text.get(), event.get()) != 0)
    return ZOX_RESULT_NOT_PARSED;
  zox_eventlist_add_or_replace_event(core->eventlist, event.get());
  return 0;
}

void zox_events_forum_fetch_async(gint32 postId, gint32 lastCheck, ZoxForumCallback callback,
                                  gpointer userData) {
  ZOX_ASSERT_AS(callback, "cb");
  OwnedText failure =
      start_in_background(std::make_unique<ZoxForumJob>(postId, lastCheck, callback, userData));
  if (failure)
    callback(ZOX_RESULT_UNKNOWN_ERROR, postId, lastCheck, failure.release(), userData);
}

ZoxErrorCode zox_events_forum_post(const char *text, gint32 postId, gint32, char **message) {
  const OwnedString reaction(zox_string_new(text));
  const OwnedString converted(zox_string_replace(reaction.get(), "\n", "\r\n"));
  const ServiceReply reply =
      send_request("/3.7.3/xml-forum.php",
                   {{"m", "add"}, {"b", converted->str}, {"s", decimal(postId).c_str()}});
  return report_failure(reply, message);
}

}  // extern "C"
