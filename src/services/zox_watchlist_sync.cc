/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlist stored on the service and restored from it. */
#include <velkor/zox_watchlist.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_splitted_list.h>

#include "http/service_request.h"
#include "posting/event_record.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr const char *path = "/3.7.3/xml-wlist.php";

void free_ids(ZoxSplittedList *ids) noexcept {
  zox_splitted_list_free(&ids);
}
using OwnedIds = std::unique_ptr<ZoxSplittedList, ReleaseWith<free_ids>>;

OwnedString upload_text(const GSList *entries) noexcept {
  OwnedString text(g_string_new("|"));
  for (const ZoxString *watchlist : Items<ZoxString>(entries)) {
    ZOX_ASSERT_IN(zox_watchlist_upload, watchlist, "watchlist");
    g_string_append_printf(text.get(), "%s*1|", watchlist->str);
  }
  return text;
}

/** Sees to it that the event list holds the posting; false when the service lacks it as well. */
bool ensure_posting(ZOXEventlist *list, gint32 postId) noexcept {
  if (const OwnedEvent known(zox_eventlist_lookup_id(list, postId)); known)
    return true;
  const OwnedEvent found(zox_eventinfo_findpost(postId));
  if (!found)
    return false;
  zox_eventlist_add_or_replace_event(list, found.get());
  zox_eventlist_save(list);
  return true;
}

void restore(ZOXEventlist *list, gint32 postId) noexcept {
  if (ensure_posting(list, postId))
    zox_watchlist_add(postId);
  else
    g_warning("zox_watchlist_download(): posting %i valt niet op de ZOX server te vinden\n",
              postId);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_watchlist_upload(char **serverText) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  if (core->config->watchlist == nullptr)
    return ZOX_RESULT_SUCCESS;
  const OwnedString data = upload_text(core->config->watchlist);
  const ServiceReply reply = send_request(path, {{"mode", "save"}, {"data", data->str}});
  hand_over(serverText, reply.notice());
  if (reply.failed())
    return reply.code;
  return reply.view() == "OK" ? ZOX_RESULT_SUCCESS : ZOX_RESULT_UNKNOWN_REPLY;
}

ZoxErrorCode zox_watchlist_download(char **serverText) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const ServiceReply reply = send_request(path, {{"mode", "load"}}, {.require_data = false});
  hand_over(serverText, reply.notice());
  if (reply.failed())
    return reply.code;
  const OwnedIds ids(zox_splitted_list_split(reply.text->str));
  const OwnedObject<ZOXEventlist> list(zox_eventlist_get());
  for (const ZoxString *id : Items<ZoxString>(ids.get()))
    restore(list.get(), leading_integer(id->str));
  return ZOX_RESULT_SUCCESS;
}

}  // extern "C"
