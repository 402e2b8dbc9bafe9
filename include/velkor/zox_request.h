/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * Requests that run while the program goes on: an addition to the interface. A function of this
 * file starts one of the library's blocking functions on a thread of its own and returns at once. A
 * ZoxRequest stands for it: it tells how far the request is, cancels it, and holds what it brought.
 *
 * **The end.** Every request ends exactly once, with one of the states ZOX_REQUEST_DONE,
 * ZOX_REQUEST_FAILED and ZOX_REQUEST_CANCELLED, and then calls its `done` function exactly once, on
 * its context: a source of the priority G_PRIORITY_DEFAULT. Until that call the state is
 * ZOX_REQUEST_RUNNING and nothing that the request brought can be read. In `done`,
 * zox_http_last_failure() and zox_file_last_error() are those of the request.
 *
 * **The core's data.** The event list changes while a request runs, under its lock. Mail,
 * watchlist and newsgroups belong to the thread that owns the core: requests change them on their
 * context, right before `done`. The context must therefore be one that this thread runs; the
 * default one mostly is. An update reads and writes the settings on its own thread; a program that
 * has one running changes them through the functions of the library only.
 *
 * **Cancelling.** A cancelled request stops its transfer, and reading, merging and saving before
 * anything is swapped or written: the list and the files are as before or as after, never in
 * between. What reached the server before stays done there.
 *
 * **The end of the program.** zox_app_core_cleanup() and zox_app_core_close() cancel all requests
 * and wait for their threads first, so that they may be called while requests run; see
 * zox_requests_cancel_all() and zox_requests_wait() for a program that wants to wait by itself.
 *
 * Starting needs the core.
 */
#ifndef VELKOR_ZOX_REQUEST_H
#define VELKOR_ZOX_REQUEST_H

#include <glib.h>

#include <velkor/zox_event.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_profile.h>
#include <velkor/zox_types.h>
#include <velkor/zox_update_result.h>

G_BEGIN_DECLS

/** One request; opaque and reference-counted. */
typedef struct ZoxRequest ZoxRequest;

/** What a request asks for. */
typedef enum {
  ZOX_REQUEST_UPDATE = 0,          /**< zox_request_update() */
  ZOX_REQUEST_DETAILS = 1,         /**< zox_request_details() */
  ZOX_REQUEST_FORUM = 2,           /**< zox_request_forum() */
  ZOX_REQUEST_REACTION = 3,        /**< zox_request_reaction() */
  ZOX_REQUEST_KUDOS_GET = 4,       /**< zox_request_kudos_get() */
  ZOX_REQUEST_KUDOS_GIVE = 5,      /**< zox_request_kudos_give() */
  ZOX_REQUEST_WARNING = 6,         /**< zox_request_warning() */
  ZOX_REQUEST_PROFILE = 7,         /**< zox_request_profile() */
  ZOX_REQUEST_MAIL_CHECK = 8,      /**< zox_request_mail_check() */
  ZOX_REQUEST_MAIL_FETCH = 9,      /**< zox_request_mail_fetch() */
  ZOX_REQUEST_MAIL_SEND = 10,      /**< zox_request_mail_send() */
  ZOX_REQUEST_WATCHLIST_SAVE = 11, /**< zox_request_watchlist_save() */
  ZOX_REQUEST_WATCHLIST_LOAD = 12, /**< zox_request_watchlist_load() */
  ZOX_REQUEST_OWN_POSTINGS = 13,   /**< zox_request_own_postings() */
  ZOX_REQUEST_OWN_REFRESH = 14,    /**< zox_request_own_refresh() */
  ZOX_REQUEST_SPOT = 15,           /**< zox_request_spot() */
  ZOX_REQUEST_SIGNUP = 16,         /**< zox_request_signup() */
  ZOX_REQUEST_NEWSGROUPS = 17,     /**< zox_request_newsgroups() */
  ZOX_REQUEST_LOAD = 18            /**< zox_request_load() */
} ZoxRequestKind;

/** Where a request stands. */
typedef enum {
  ZOX_REQUEST_RUNNING = 0, /**< its `done` function has not been called yet */
  ZOX_REQUEST_DONE = 1,    /**< it succeeded: code 0, and 5 (nothing new) of an update, 26 (accepted
                                with a reservation) of a spot */
  ZOX_REQUEST_FAILED = 2,  /**< it failed; zox_request_code() tells why */
  ZOX_REQUEST_CANCELLED = 3 /**< it was cancelled before it had its result */
} ZoxRequestState;

/** What a running request is at. */
typedef enum {
  ZOX_REQUEST_STEP_WAITING = 0,  /**< nothing has happened yet */
  ZOX_REQUEST_STEP_ASKING = 1,   /**< it asks the server; `received` and `total` count its reply */
  ZOX_REQUEST_STEP_DOWNLOAD = 2, /**< an update downloads a dump; likewise */
  ZOX_REQUEST_STEP_MERGING = 3,  /**< an update merges; `received` and `total` count postings */
  ZOX_REQUEST_STEP_SAVING = 4    /**< files are written */
} ZoxRequestStep;

/** How far a running request is. */
typedef struct _ZoxRequestProgress {
  ZoxRequestStep step; /**< what it is at */
  gint64 received;     /**< bytes of the reply so far, before decompression; see the step */
  gint64 total;        /**< bytes to expect; 0 while unknown */
  gint32 dump;         /**< number of the dump, from 1; 0 outside the downloads of an update */
  gint32 dumps;        /**< how many dumps the update downloads; 0 while unknown */
  gint32 spotStep;     /**< the latest ZoxPostStep of a spot; else 0 */
} ZoxRequestProgress;

/**
 * Follows a request, on its context. Reports that come faster than the context runs are joined: the
 * latest counts. None comes after `done`.
 * @param request   the request
 * @param progress  how far it is; valid until the function returns
 * @param userData  the data given with the options
 */
typedef void (*ZoxRequestProgressFunc)(ZoxRequest *request, const ZoxRequestProgress *progress,
                                       gpointer userData);

/**
 * Receives the end of a request, exactly once and on its context.
 * @param request   the request; whoever wants to keep it longer adds a reference
 * @param userData  the data given with the options
 */
typedef void (*ZoxRequestFunc)(ZoxRequest *request, gpointer userData);

/** Who is told about a request; a zero-filled record tells nobody. */
typedef struct _ZoxRequestOptions {
  GMainContext *context; /**< where the functions are called; null for the default one. The
                              request holds a reference */
  ZoxRequestProgressFunc progress; /**< follows the request; may be null */
  ZoxRequestFunc done;             /**< receives the end; may be null */
  gpointer userData;               /**< handed to both */
  GDestroyNotify destroy; /**< releases `userData`, after `done` and on the same thread; may
                               be null */
} ZoxRequestOptions;

/**
 * Starts zox_events_fetch(). Only one update runs at a time: a second one waits for the first.
 * Threads: one at a time, hand-over allowed.
 * @param options  who is told; copied; null for nobody
 * @return the running request, which the caller releases with zox_request_unref(); it goes on
 *         without that reference. zox_request_update_result() tells what changed
 */
ZoxRequest *zox_request_update(const ZoxRequestOptions *options);

/**
 * Starts zox_eventinfo_fetch(). Threads: one at a time, hand-over allowed.
 * @param postId   id of the posting
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_event() is the posting with its details
 */
ZoxRequest *zox_request_details(gint32 postId, const ZoxRequestOptions *options);

/**
 * Starts zox_events_forum_fetch(). Threads: one at a time, hand-over allowed.
 * @param postId     id of the posting
 * @param lastCheck  as for zox_events_forum_fetch()
 * @param options    as for zox_request_update()
 * @return as of zox_request_update(); zox_request_event() is the posting with its forum
 */
ZoxRequest *zox_request_forum(gint32 postId, gint32 lastCheck, const ZoxRequestOptions *options);

/**
 * Starts zox_events_forum_react(). Threads: one at a time, hand-over allowed.
 * @param postId   id of the posting
 * @param replyTo  id of the reaction that this one answers; 0 for none
 * @param text     the reaction, copied
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_answer() is the server's answer,
 *         zox_request_number() the id of the reaction
 */
ZoxRequest *zox_request_reaction(gint32 postId, gint32 replyTo, const char *text,
                                 const ZoxRequestOptions *options);

/**
 * Starts zox_kudos_get(). Threads: one at a time, hand-over allowed.
 * @param postId   id of the posting
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_number() is the first count,
 *         zox_request_second_number() the other
 */
ZoxRequest *zox_request_kudos_get(gint32 postId, const ZoxRequestOptions *options);

/**
 * Starts zox_kudos_give_answered(). Threads: one at a time, hand-over allowed.
 * @param postId   id of the posting
 * @param kudos    the value
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_answer() is the server's answer
 */
ZoxRequest *zox_request_kudos_give(gint32 postId, gint32 kudos, const ZoxRequestOptions *options);

/**
 * Starts zox_modje_send(). Asserts "post_id > 0". Threads: one at a time, hand-over allowed.
 * @param postId   id of the posting, from 1
 * @param forumId  id of the reaction in its forum; 0 for the posting itself
 * @param reason   what is wrong, copied
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_number() is the number of the warning
 */
ZoxRequest *zox_request_warning(gint32 postId, gint32 forumId, const char *reason,
                                const ZoxRequestOptions *options);

/**
 * Starts zox_profile_get(). Threads: one at a time, hand-over allowed.
 * @param username  name of the user, copied
 * @param options   as for zox_request_update()
 * @return as of zox_request_update(); zox_request_user() is the profile
 */
ZoxRequest *zox_request_profile(const char *username, const ZoxRequestOptions *options);

/**
 * Starts zox_mail_check(). Threads: one at a time, hand-over allowed.
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_number() is 1 when messages wait, else 0
 */
ZoxRequest *zox_request_mail_check(const ZoxRequestOptions *options);

/**
 * Starts zox_mail_fetch(). The messages join `core->mail` on the context, right before `done`. The
 * server forgets them when it sends them: once its reply is there, the request is not cancelled any
 * more. Threads: one at a time, hand-over allowed.
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_number() is the number of new messages
 */
ZoxRequest *zox_request_mail_fetch(const ZoxRequestOptions *options);

/**
 * Starts zox_mail_post() for a message that it makes of the texts. The message joins `core->mail`
 * on the context, right before `done`, if the server took it.
 * Threads: one at a time, hand-over allowed.
 * @param to       the addressee, copied
 * @param subject  subject, copied
 * @param body     text, copied
 * @param options  as for zox_request_update()
 * @return as of zox_request_update()
 */
ZoxRequest *zox_request_mail_send(const char *to, const char *subject, const char *body,
                                  const ZoxRequestOptions *options);

/**
 * Starts zox_watchlist_upload() with the watchlist as it is now.
 * Threads: one at a time, hand-over allowed.
 * @param options  as for zox_request_update()
 * @return as of zox_request_update()
 */
ZoxRequest *zox_request_watchlist_save(const ZoxRequestOptions *options);

/**
 * Starts zox_watchlist_download(). The postings join the watchlist on the context, right before
 * `done`. Threads: one at a time, hand-over allowed.
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_number() is how many joined it
 */
ZoxRequest *zox_request_watchlist_load(const ZoxRequestOptions *options);

/**
 * Starts zox_myzox_fetch(). Threads: one at a time, hand-over allowed.
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_own_list() is the overview
 */
ZoxRequest *zox_request_own_postings(const ZoxRequestOptions *options);

/**
 * Starts zox_myzox_update(). Threads: one at a time, hand-over allowed.
 * @param postId   id of the posting
 * @param options  as for zox_request_update()
 * @return as of zox_request_update()
 */
ZoxRequest *zox_request_own_refresh(gint32 postId, const ZoxRequestOptions *options);

/**
 * Starts zox_post_send() with a copy of a posting. Threads: one at a time, hand-over allowed.
 * @param event    the posting, with a title; copied
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); zox_request_answer() is the server's answer,
 *         zox_request_number() the id that it gave the posting
 */
ZoxRequest *zox_request_spot(const ZoxEvent *event, const ZoxRequestOptions *options);

/**
 * Starts zox_signup_register(). Threads: one at a time, hand-over allowed.
 * @param username  name of the new user, copied
 * @param password  password, copied
 * @param email     e-mail address, copied
 * @param options   as for zox_request_update()
 * @return as of zox_request_update()
 */
ZoxRequest *zox_request_signup(const char *username, const char *password, const char *email,
                               const ZoxRequestOptions *options);

/**
 * Starts zox_group_fetch(). The table of newsgroups is replaced on the context, right before
 * `done`. Threads: one at a time, hand-over allowed.
 * @param options  as for zox_request_update()
 * @return as of zox_request_update()
 */
ZoxRequest *zox_request_newsgroups(const ZoxRequestOptions *options);

/**
 * Runs zox_app_core_load(), for a window that shows itself before the postings are there: these are
 * loaded on the request's thread, other parts before the function returns.
 * Threads: one at a time, hand-over allowed.
 * @param parts    what to load, a sum of ZoxCorePart; see zox_app_core_load()
 * @param options  as for zox_request_update()
 * @return as of zox_request_update(); it succeeds with code 0 whatever the files held, see
 *         zox_app_core_load()
 */
ZoxRequest *zox_request_load(guint32 parts, const ZoxRequestOptions *options);

/**
 * Adds a reference. Threads: any.
 * @param request  the request
 * @return the same request
 */
ZoxRequest *zox_request_ref(ZoxRequest *request);

/**
 * Drops a reference; a running request goes on without it. The last one releases the request and
 * all that it brought. Threads: any.
 * @param request  the request
 */
void zox_request_unref(ZoxRequest *request);

/**
 * Asks a request to stop; does nothing once it has its result. `done` is called as ever, mostly
 * within a second. Threads: any.
 * @param request  the request
 */
void zox_request_cancel(ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return what it asks for
 */
ZoxRequestKind zox_request_kind(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return where it stands; the state of an ended request no longer changes
 */
ZoxRequestState zox_request_state(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request   the request
 * @param progress  receives how far it is
 */
void zox_request_progress(ZoxRequest *request, ZoxRequestProgress *progress);

/**
 * Threads: any.
 * @param request  the request
 * @return the posting that it is about; 0 when it is about none
 */
gint32 zox_request_post_id(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return what its blocking function returned; 1 while it runs and when it was cancelled
 */
ZoxErrorCode zox_request_code(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return the message of its blocking function: the server's notice for code 29, mostly null
 *         otherwise; why no thread could be made (code 1). It stays the request's
 */
const char *zox_request_message(const ZoxRequest *request);

/**
 * Why the request failed, in words for a log; see ZoxHttpFailure. They hold no secret.
 * Threads: any.
 * @param request  the request
 * @return an English sentence, which stays the request's; null when no transfer failed
 */
const char *zox_request_failure(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return what the server answered to kudos, a reaction or a spot; ZOX_ANSWER_NONE for other
 *         requests, while it runs and when no answer came
 */
ZoxAnswer zox_request_answer(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return the number that the start function of its kind names; 0 without one
 */
gint32 zox_request_number(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  the request
 * @return the second count of zox_request_kudos_get(); else 0
 */
gint32 zox_request_second_number(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  a request for details or a forum
 * @return the posting as the list held it right after the request, which stays the request's; null
 *         for other requests and without success
 */
const ZoxEvent *zox_request_event(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  a request for a profile
 * @return the profile, which stays the request's; null for other requests and without success
 */
const ZoxProfile *zox_request_user(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  a request for the own postings
 * @return a list of ZoxMyzoxPost, which stays the request's; null when there are none, for other
 *         requests and without success
 */
const GSList *zox_request_own_list(const ZoxRequest *request);

/**
 * Threads: any.
 * @param request  an update
 * @return what it changed, which stays the request's; null for other requests and while it runs. An
 *         update that fails or is cancelled may have removed old postings before
 */
ZoxUpdateResult *zox_request_update_result(const ZoxRequest *request);

/** Cancels all requests that run. Threads: any. */
void zox_requests_cancel_all(void);

/**
 * Threads: any.
 * @return how many requests have not called `done` yet
 */
guint32 zox_requests_count(void);

/**
 * Waits until no request is left. Meanwhile it ends requests itself, `done` included, whose context
 * this thread runs or nobody does; those of other contexts end there. Must not be called while the
 * thread holds the event list's lock. Threads: any.
 * @param milliseconds  how long at most; 0 to look only
 * @return whether none is left
 */
gboolean zox_requests_wait(guint32 milliseconds);

G_END_DECLS

#endif
