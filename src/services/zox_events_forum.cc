/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Fetching the reactions under a posting and writing a new one. */
#include <velkor/zox_events_forum.h>

#include <cstdio>
#include <type_traits>
#include <utility>
#include <variant>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>

#include "core/job.h"
#include "http/service_request.h"
#include "posting/event_record.h"
#include "services/answers.h"
#include "services/background_job.h"
#include "services/forum_fields.h"
#include "store/eventlist_store.h"
#include "support/assertion.h"
#include "support/text.h"

namespace velkor {
namespace {

/** Has the posting take over what a reply changed: `after` is what it made of `before`. */
class ReplyMerge {
public:
  ReplyMerge(const ZoxEvent &before, ZoxEvent &after) noexcept : before_(before), after_(after) {}

  void operator()(ZoxEvent &posting) const noexcept {
    for (const Field<ZoxEvent> &field : live_fields)
      std::visit([&](auto member) { merge(before_.*member, after_.*member, posting.*member); },
                 field.member);
    // The earlier forum ends up in the record that is freed next.
    std::swap(posting.forum, after_.forum);
  }

private:
  template <typename Value>
  static void merge(const Value &before, Value &after, Value &current) noexcept {
    if constexpr (std::is_same_v<Value, GString *>) {
      if (view_of(before) != view_of(after))
        std::swap(current, after);
    } else if (before != after) {
      current = after;
    }
  }

  const ZoxEvent &before_;
  ZoxEvent &after_;
};

/** @param replyTo  the reaction that this one answers; 0 for none */
ServiceReply send_reaction(const char *text, gint32 postId, gint32 replyTo) noexcept {
  const OwnedString reaction(zox_string_new(text));
  const OwnedString converted(zox_string_replace(reaction.get(), "\n", "\r\n"));
  Parameters parameters{{"m", "add"}, {"b", converted->str}};
  parameters.add_number("s", postId);
  if (replyTo != 0)
    parameters.add_number("r", replyTo);
  return send_request("/3.7.3/xml-forum.php", parameters);
}

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
  const OwnedEvent before(zox_event_duplicate(event.get()));
  if (zox_events_forum_parse(reply.text.get(), event.get()) != 0)
    return ZOX_RESULT_NOT_PARSED;
  if (is_cancelled())
    return ZOX_RESULT_UNKNOWN_ERROR;
  change_or_add(core->eventlist, *before, ReplyMerge(*before, *event));
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
  return report_failure(send_reaction(text, postId, 0), message);
}

ZoxErrorCode zox_events_forum_react(gint32 postId, gint32 replyTo, const char *text,
                                    ZoxAnswer *answer, guint32 *messId, char **message) {
  const ServiceReply reply = send_reaction(text, postId, replyTo);
  *answer = reply.failed() ? ZOX_ANSWER_NONE : answer_of(reply.view());
  if (messId != nullptr)
    *messId = reply.failed() ? 0 : static_cast<guint32>(number_behind_answer(reply.text->str));
  return report_failure(reply, message);
}

}  // extern "C"
