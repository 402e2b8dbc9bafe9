/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The watchlist stored on the service and restored from it. */
#include <velkor/zox_watchlist.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventinfo.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "core/job.h"
#include "filter/watched_ids.h"
#include "filter/watchlist_entries.h"
#include "http/service_request.h"
#include "posting/event_record.h"
#include "services/service_steps.h"
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

/* What no watchlist of a real user comes near. */
constexpr std::size_t max_ids = 10'000;
constexpr int max_questions = 1'000;

/** The ids of a reply. Where they are too many the first ones, with a warning. */
OwnedIds ids_of(std::string_view reply) noexcept {
  std::size_t count = 0;
  std::size_t end = 0;
  while ((end = reply.find_first_not_of('|', end)) != std::string_view::npos && count++ < max_ids)
    end = std::min(reply.find('|', end), reply.size());
  if (count > max_ids) {
    g_warning("zox_watchlist_download(): de server geeft meer dan %zu postings; alleen de eerste "
              "tellen\n",
              max_ids);
    reply = reply.substr(0, end);
  }
  return OwnedIds(zox_splitted_list_split(std::string(reply).c_str()));
}

/** What the service keeps as the account's watchlist. */
ZoxErrorCode fetch_ids(OwnedIds &ids, char **serverText) noexcept {
  const ServiceReply reply = send_request(path, {{"mode", "load"}}, {.require_data = false});
  hand_over(serverText, reply.notice());
  if (reply.failed())
    return reply.code;
  ids = ids_of(reply.view());
  return ZOX_RESULT_SUCCESS;
}

/** Brings postings that the event list does not know from the service, so many of them. */
class Finder {
public:
  explicit Finder(ZOXEventlist *list) noexcept : list_(list) {}

  [[nodiscard]] bool is_known(gint32 postId) const noexcept {
    return OwnedEvent(zox_eventlist_lookup_id(list_, postId)) != nullptr;
  }

  /** Whether one more may be asked for. */
  bool may_ask() noexcept {
    if (questions_ >= max_questions)
      refuse_to_ask();
    return questions_ < max_questions;
  }

  bool find(gint32 postId) noexcept {
    ++questions_;
    const OwnedEvent found(zox_eventinfo_findpost(postId));
    if (!found) {
      g_warning("zox_watchlist_download(): posting %i valt niet op de ZOX server te vinden\n",
                postId);
      return false;
    }
    zox_eventlist_add_or_replace_event(list_, found.get());
    zox_eventlist_save(list_);
    return true;
  }

private:
  void refuse_to_ask() noexcept {
    if (!std::exchange(refused_, true))
      g_warning("zox_watchlist_download(): na %i onbekende postings worden andere onbekende "
                "overgeslagen\n",
                max_questions);
  }

  ZOXEventlist *list_;
  int questions_ = 0;
  bool refused_ = false;
};

/** Puts postings on the watchlist, which is saved before every request and at the end. */
class Restoration {
public:
  explicit Restoration(ZOXEventlist *list) noexcept : finder_(list) {}
  ~Restoration() { save(); }
  Restoration(const Restoration &) = delete;
  Restoration &operator=(const Restoration &) = delete;

  void restore(gint32 postId) noexcept {
    if (!finder_.is_known(postId) && !find(postId))
      return;
    add(postId);
  }

  void add(gint32 postId) noexcept {
    if (postId >= 1 && watched_.add(postId)) {
      added_.append(zox_string_integer(postId));
      ++count_;
    }
  }

  [[nodiscard]] gint32 count() const noexcept { return count_; }

private:
  bool find(gint32 postId) noexcept {
    if (!finder_.may_ask())
      return false;
    save();
    return finder_.find(postId);
  }

  void save() noexcept {
    if (added_.list() == nullptr)
      return;
    append_watched(added_.release());
    zox_config_save();
  }

  Finder finder_;
  WatchedIds watched_;
  ListBuilder<ZoxString, free_string> added_;
  gint32 count_ = 0;
};

}  // namespace

OwnedString watchlist_to_send() noexcept {
  return core->config->watchlist == nullptr ? nullptr : upload_text(core->config->watchlist);
}

ZoxErrorCode send_watchlist(const ZoxString *data, char **serverText) noexcept {
  const ServiceReply reply = send_request(path, {{"mode", "save"}, {"data", data->str}});
  hand_over(serverText, reply.notice());
  if (reply.failed())
    return reply.code;
  return reply.view() == "OK" ? ZOX_RESULT_SUCCESS : ZOX_RESULT_UNKNOWN_REPLY;
}

ZoxErrorCode request_watchlist(std::vector<gint32> &postIds, char **serverText) noexcept {
  OwnedIds ids;
  if (const ZoxErrorCode code = fetch_ids(ids, serverText); code != ZOX_RESULT_SUCCESS)
    return code;
  const OwnedObject<ZOXEventlist> list(zox_eventlist_get());
  Finder finder(list.get());
  for (const ZoxString *id : Items<ZoxString>(ids.get())) {
    if (is_cancelled())
      return ZOX_RESULT_UNKNOWN_ERROR;
    const gint32 postId = leading_integer(id->str);
    if (finder.is_known(postId) || (finder.may_ask() && finder.find(postId)))
      postIds.push_back(postId);
  }
  return ZOX_RESULT_SUCCESS;
}

gint32 take_watchlist(const std::vector<gint32> &postIds) noexcept {
  const OwnedObject<ZOXEventlist> list(zox_eventlist_get());
  Restoration restoration(list.get());
  for (const gint32 postId : postIds)
    restoration.add(postId);
  return restoration.count();
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_watchlist_upload(char **serverText) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const OwnedString data = watchlist_to_send();
  return data ? send_watchlist(data.get(), serverText) : ZoxErrorCode{ZOX_RESULT_SUCCESS};
}

ZoxErrorCode zox_watchlist_download(char **serverText) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  OwnedIds ids;
  if (const ZoxErrorCode code = fetch_ids(ids, serverText); code != ZOX_RESULT_SUCCESS)
    return code;
  const OwnedObject<ZOXEventlist> list(zox_eventlist_get());
  Restoration restoration(list.get());
  for (const ZoxString *id : Items<ZoxString>(ids.get()))
    restoration.restore(leading_integer(id->str));
  return ZOX_RESULT_SUCCESS;
}

}  // extern "C"
