/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The details of one posting: asked from the server and merged into the cached posting. */
#include <velkor/zox_eventinfo.h>

#include <cstdio>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_parse.h>

#include "core/job.h"
#include "core/reply_document.h"
#include "http/service_request.h"
#include "posting/event_record.h"
#include "services/background_job.h"
#include "store/eventlist_store.h"
#include "support/assertion.h"

namespace velkor {
namespace {

constexpr DocumentRule findpost_rule{.root = "Post",
                                     .reader = "zox_eventinfo_parse_findpost",
                                     .complaint = {.logged = true},
                                     .childless_logged = false};
constexpr DocumentRule details_rule{.root = "PostInfo", .reader = "zox_eventinfo_parse"};

void read_tracks(xmlDoc *doc, const xmlNode *node, ZoxEvent *event) noexcept {
  if (event == nullptr) {
    g_warning("zox_eventinfo_parse(): event == NULL\n");
    return;
  }
  zox_splitted_list_free(&event->mp3Tracks);
  event->mp3Tracks = zox_events_parse_mp3_tracks(doc, node->children);
}

/** The server takes post ids of at most nine characters. */
constexpr std::size_t max_id_length = 9;

ServiceReply request_by_id(const char *path, gint32 postId) noexcept {
  const std::string id = decimal(postId).substr(0, max_id_length);
  return send_request(path, {{"id", id.c_str()}});
}

OwnedEvent cached_or_found(gint32 postId) noexcept {
  OwnedEvent event(zox_eventlist_lookup_id(core->eventlist, postId));
  if (!event)
    event.reset(zox_eventinfo_findpost(postId));
  return event;
}

void replace_with_copy(GString *&place, const GString *text) noexcept {
  replace_string(place, copy_string(text));
}

/** Takes the details into `event`, whose basic fields stay. */
void merge_details(ZoxEvent &event, ZoxEvent &details) noexcept {
  replace_with_copy(event.ann, details.ann);
  replace_with_copy(event.des, details.des);
  replace_with_copy(event.sig, details.sig);
  event.fType = details.fType;
  event.files = details.files;
  event.fStart = details.fStart;
  replace_with_copy(event.img, details.img);
  // The earlier tracks end up in the details, which are freed next.
  std::swap(event.mp3Tracks, details.mp3Tracks);
}

class ZoxEventinfoJob final : public BackgroundJob {
public:
  ZoxEventinfoJob(gint32 postId, ZoxEventinfoCallback callback, gpointer userData) noexcept
      : postId_(postId), callback_(callback), userData_(userData) {}

  void run() noexcept override { result_ = zox_eventinfo_fetch(postId_, &message_); }
  void report() noexcept override {
    callback_(result_, postId_, std::exchange(message_, nullptr), userData_);
  }

private:
  gint32 postId_;
  char *message_ = nullptr;
  ZoxErrorCode result_ = 0;
  ZoxEventinfoCallback callback_;
  gpointer userData_;
};

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxEvent *zox_eventinfo_findpost(gint32 postId) {
  const ServiceReply reply = request_by_id("/3.7.3/xml-findpost.php", postId);
  if (reply.failed())
    return nullptr;
  ZoxEvent *event = zox_eventinfo_parse_findpost(reply.text.get());
  if (event == nullptr)
    std::printf("uitvoer = %s\n", reply.text->str);
  return event;
}

ZoxErrorCode zox_eventinfo_fetch(gint32 postId, char **message) {
  ZOX_ASSERT(core);
  const OwnedEvent event = cached_or_found(postId);
  if (!event)
    return ZOX_RESULT_POSTING_GONE;
  const ServiceReply reply = request_by_id("/3.7.3/xml-posts.php", postId);
  if (reply.failed())
    return report_failure(reply, message);
  const OwnedEvent details(zox_eventinfo_parse(reply.text.get()));
  if (!details) {
    g_warning("zox_eventinfo_fetch(): Parsen van gegevens mislukt\n");
    return ZOX_RESULT_NOT_PARSED;
  }
  if (is_cancelled())
    return ZOX_RESULT_UNKNOWN_ERROR;
  // The list's record of now takes them: its forum may have come meanwhile.
  change_or_add(core->eventlist, *event,
                [&details](ZoxEvent &posting) { merge_details(posting, *details); });
  zox_eventlist_save(core->eventlist);
  return 0;
}

void zox_eventinfo_fetch_async(gint32 postId, ZoxEventinfoCallback callback, gpointer userData) {
  ZOX_ASSERT_AS(callback, "cb");
  OwnedText failure =
      start_in_background(std::make_unique<ZoxEventinfoJob>(postId, callback, userData));
  if (failure)
    callback(ZOX_RESULT_UNKNOWN_ERROR, postId, failure.release(), userData);
}

ZoxEvent *zox_eventinfo_parse_findpost(const ZoxString *buffer) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(buffer);
  const ReplyDocument document(buffer, findpost_rule);
  // A posting without elements is a posting all the same.
  if (document.fault() == DocumentFault::empty || document.fault() == DocumentFault::wrong_root)
    return nullptr;
  ZoxEvent *event = zox_events_parse_event(document.get(), document.first_child());
  if (event != nullptr)
    zox_category_update(event);
  return event;
}

ZoxEvent *zox_eventinfo_parse(const ZoxString *text) {
  ZOX_ASSERT_AS(text, "tekst");
  const ReplyDocument document(text, details_rule);
  if (document.fault() != DocumentFault::none)
    return nullptr;
  OwnedEvent event;
  for (xmlNode *node : document.children()) {
    if (xml::is_named(node, "Post"))
      event.reset(zox_events_parse_event(document.get(), node->children));
    else if (xml::is_named_exactly(node, "MP3"))
      read_tracks(document.get(), node, event.get());
  }
  return event.release();
}

}  // extern "C"
