/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Starting requests about the community: reactions, kudos, mail, own postings, the account. */
#include <velkor/zox_request.h>

#include <string>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_kudos.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_modje.h>
#include <velkor/zox_myzox.h>
#include <velkor/zox_post.h>
#include <velkor/zox_profile.h>
#include <velkor/zox_signup.h>

#include "operations/request_start.h"
#include "services/service_steps.h"
#include "support/assertion.h"

namespace velkor {
namespace {

using OwnedMessage = std::unique_ptr<ZoxBericht, ReleaseWith<zox_mail_bericht_free>>;

gint follow_spot(gint32 step) {
  if (Job *job = current_job())
    job->spot_step(step);
  return 0;
}

void send_spot(ZoxEvent &event, RequestOutcome &outcome) noexcept {
  outcome.code = zox_post_send(&event, follow_spot);
  outcome.number = event.postId;
  if (event.postId != 0)
    outcome.answer =
        outcome.code == ZOX_RESULT_SPOT_RESERVED ? ZOX_ANSWER_RESERVED : ZOX_ANSWER_DONE;
  else if (outcome.code == ZOX_RESULT_SPOT_REFUSED)
    outcome.answer = ZOX_ANSWER_REFUSED;
  else if (outcome.code == ZOX_RESULT_NOT_PARSED)
    outcome.answer = ZOX_ANSWER_UNKNOWN;
}

/** A request of a kind that asks the server one thing. */
ZoxRequest *ask(ZoxRequestKind kind, gint32 postId, const ZoxRequestOptions *options,
                std::function<void(RequestOutcome &)> run,
                std::function<void(RequestOutcome &)> publish = {}) noexcept {
  const auto asking = [run = std::move(run)](RequestOutcome &outcome) {
    enter_step(JobStep::asking);
    run(outcome);
  };
  return start({.kind = kind, .postId = postId, .run = asking, .publish = std::move(publish)},
               options);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxRequest *zox_request_reaction(gint32 postId, gint32 replyTo, const char *text,
                                 const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_REACTION, postId, options,
             [=, body = std::string(text)](RequestOutcome &outcome) {
               guint32 id = 0;
               outcome.code = zox_events_forum_react(postId, replyTo, body.c_str(), &outcome.answer,
                                                     &id, MessagePlace(outcome.message));
               outcome.number = static_cast<gint32>(id);
             });
}

ZoxRequest *zox_request_kudos_get(gint32 postId, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_KUDOS_GET, postId, options, [postId](RequestOutcome &outcome) {
    outcome.code = zox_kudos_get(postId, &outcome.number, &outcome.second_number,
                                 MessagePlace(outcome.message));
  });
}

ZoxRequest *zox_request_kudos_give(gint32 postId, gint32 kudos, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_KUDOS_GIVE, postId, options, [=](RequestOutcome &outcome) {
    outcome.code =
        zox_kudos_give_answered(postId, kudos, &outcome.answer, MessagePlace(outcome.message));
  });
}

ZoxRequest *zox_request_warning(gint32 postId, gint32 forumId, const char *reason,
                                const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  ZOX_ASSERT_AS(postId > 0, "post_id > 0");
  return ask(ZOX_REQUEST_WARNING, postId, options,
             [=, text = std::string(reason)](RequestOutcome &outcome) {
               outcome.code = zox_modje_send(postId, forumId, text.c_str(), &outcome.number,
                                             MessagePlace(outcome.message));
             });
}

ZoxRequest *zox_request_profile(const char *username, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(
      ZOX_REQUEST_PROFILE, 0, options, [name = std::string(username)](RequestOutcome &outcome) {
        ZoxProfile *profile = nullptr;
        outcome.code = zox_profile_get(name.c_str(), &profile, MessagePlace(outcome.message));
        outcome.profile.reset(profile);
      });
}

ZoxRequest *zox_request_mail_check(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_MAIL_CHECK, 0, options, [](RequestOutcome &outcome) {
    guint32 waiting = 0;
    outcome.code = zox_mail_check(&waiting, MessagePlace(outcome.message));
    outcome.number = static_cast<gint32>(waiting);
  });
}

ZoxRequest *zox_request_mail_fetch(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  const auto messages = std::make_shared<OwnedMail>();
  return ask(
      ZOX_REQUEST_MAIL_FETCH, 0, options,
      [messages](RequestOutcome &outcome) {
        outcome.code = request_mail(*messages, MessagePlace(outcome.message));
        outcome.number = static_cast<gint32>(g_slist_length(messages->get()));
      },
      [messages](RequestOutcome &) { take_mail(std::move(*messages)); });
}

ZoxRequest *zox_request_mail_send(const char *to, const char *subject, const char *body,
                                  const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  const auto bericht = std::make_shared<OwnedMessage>(zox_mail_bericht_new(to, subject, body, 0));
  return ask(
      ZOX_REQUEST_MAIL_SEND, 0, options,
      [bericht](RequestOutcome &outcome) {
        outcome.code = send_mail(**bericht, MessagePlace(outcome.message));
      },
      [bericht](RequestOutcome &) { keep_sent(bericht->release()); });
}

ZoxRequest *zox_request_own_postings(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_OWN_POSTINGS, 0, options, [](RequestOutcome &outcome) {
    GSList *list = nullptr;
    outcome.code = zox_myzox_fetch(&list, MessagePlace(outcome.message));
    outcome.own_list.reset(list);
  });
}

ZoxRequest *zox_request_own_refresh(gint32 postId, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_OWN_REFRESH, postId, options, [postId](RequestOutcome &outcome) {
    outcome.code = zox_myzox_update(postId, MessagePlace(outcome.message));
  });
}

ZoxRequest *zox_request_spot(const ZoxEvent *event, const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(event);
  const auto copy = std::make_shared<OwnedEvent>(zox_event_duplicate(event));
  (*copy)->postId = 0;
  return ask(ZOX_REQUEST_SPOT, 0, options,
             [copy](RequestOutcome &outcome) { send_spot(**copy, outcome); });
}

ZoxRequest *zox_request_signup(const char *username, const char *password, const char *email,
                               const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  return ask(ZOX_REQUEST_SIGNUP, 0, options,
             [name = std::string(username), secret = std::string(password),
              address = std::string(email)](RequestOutcome &outcome) {
               outcome.code = zox_signup_register(name.c_str(), secret.c_str(), address.c_str(),
                                                  MessagePlace(outcome.message));
             });
}

ZoxRequest *zox_request_watchlist_save(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const auto data = std::make_shared<OwnedString>(watchlist_to_send());
  return ask(ZOX_REQUEST_WATCHLIST_SAVE, 0, options, [data](RequestOutcome &outcome) {
    outcome.code = *data ? send_watchlist(data->get(), MessagePlace(outcome.message))
                         : ZoxErrorCode{ZOX_RESULT_SUCCESS};
  });
}

ZoxRequest *zox_request_watchlist_load(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const auto ids = std::make_shared<std::vector<gint32>>();
  return ask(
      ZOX_REQUEST_WATCHLIST_LOAD, 0, options,
      [ids](RequestOutcome &outcome) {
        outcome.code = request_watchlist(*ids, MessagePlace(outcome.message));
      },
      [ids](RequestOutcome &outcome) { outcome.number = take_watchlist(*ids); });
}

ZoxRequest *zox_request_newsgroups(const ZoxRequestOptions *options) {
  ZOX_ASSERT(core);
  const auto reply = std::make_shared<OwnedString>();
  return ask(
      ZOX_REQUEST_NEWSGROUPS, 0, options,
      [reply](RequestOutcome &outcome) { outcome.code = request_groups(*reply); },
      [reply](RequestOutcome &outcome) { outcome.code = take_groups(reply->get()); });
}

}  // extern "C"
