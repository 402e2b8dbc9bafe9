/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The update from the server. */
#include <velkor/zox_events.h>

#include <memory>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_http_parameter.h>

#include "core/app_core.h"
#include "core/core_lock.h"
#include "core/file_outcome.h"
#include "core/job.h"
#include "http/file_request.h"
#include "operations/dump_file.h"
#include "operations/update_bounds.h"
#include "operations/update_result.h"
#include "store/eventlist_store.h"
#include "support/assertion.h"
#include "support/descriptor.h"
#include "support/object_type.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

using OwnedParameters = std::unique_ptr<GSList, ReleaseWith<zox_http_parameter_free_all>>;

/** The names of the dumps to fetch. */
class DumpNames {
public:
  DumpNames() = default;
  ~DumpNames() { g_slist_free_full(list_, g_free); }
  DumpNames(const DumpNames &) = delete;
  DumpNames &operator=(const DumpNames &) = delete;

  /** Where names are to be appended. */
  [[nodiscard]] GSList **place() noexcept { return &list_; }
  [[nodiscard]] Items<const char> names() const noexcept { return Items<const char>(list_); }
  [[nodiscard]] guint count() const noexcept { return g_slist_length(list_); }

  /** Takes note of the names since the last call; whether one of them is new. */
  bool note_new() noexcept {
    bool any = false;
    const GSList *cell = last_noted_ == nullptr ? list_ : last_noted_->next;
    for (; cell != nullptr; cell = cell->next) {
      any = noted_.insert(static_cast<const char *>(cell->data)).second || any;
      last_noted_ = cell;
    }
    return any;
  }

private:
  GSList *list_ = nullptr;
  const GSList *last_noted_ = nullptr;
  std::unordered_set<std::string_view> noted_;
};

/** The postings of all dumps; released at the end unless they are merged. */
class Postings {
public:
  Postings() = default;
  ~Postings() { g_slist_free_full(list_, unref_object); }
  Postings(const Postings &) = delete;
  Postings &operator=(const Postings &) = delete;

  void append(GSList *objects) noexcept {
    *tail_ = objects;
    if (objects != nullptr)
      tail_ = &g_slist_last(objects)->next;
  }

  [[nodiscard]] bool empty() const noexcept { return list_ == nullptr; }

  /** Merges them all. @return what became of each */
  MergeLog merge_into(ZOXEventlist *list, ZoxEventlistProgress progress,
                      gpointer userData) noexcept {
    const OwnedCells objects(std::exchange(list_, nullptr));
    MergeLog log;
    merge(list, objects.get(), progress, userData, &log);
    return log;
  }

private:
  GSList *list_ = nullptr;
  GSList **tail_ = &list_;
};

/** Fetches the decompressed text of a dump. */
ZoxErrorCode download(const char *name, OwnedString &text) noexcept {
  const OwnedText path(g_strdup_printf("%s%s.gz", "/3.7.3/dumps/", name));
  Descriptor file;
  if (const ZoxErrorCode code = request_into_file(path.get(), file); code != ZOX_RESULT_SUCCESS)
    return code;
  text = read_dump(std::move(file));
  return text ? ZOX_RESULT_SUCCESS : ZOX_RESULT_UNKNOWN_ERROR;
}

/** One run of the update. */
class Update {
public:
  Update(ZoxEventsProgress progress, char **serverText) noexcept
      : progress_(progress), server_text_(serverText) {}

  /** Asks what is available, once or until no more dumps come; fills names and stamp. */
  ZoxErrorCode ask() noexcept {
    stamp_ = core->config->lastCheck;
    if (core->config->recursiveUpdate == 0)
      return ask_once();
    const ZoxErrorCode code = ask_repeatedly();
    if (code != ZOX_RESULT_SUCCESS)
      reload(core->eventlist);
    return code;
  }

  /** Downloads and reads every dump. */
  ZoxErrorCode fetch_dumps() noexcept {
    const auto total = static_cast<gint32>(dumps_.count());
    gint32 number = 0;
    for (const char *name : dumps_.names()) {
      if (progress_ != nullptr)
        progress_(total, ++number);
      if (const ZoxErrorCode code = fetch_dump(name); code != ZOX_RESULT_SUCCESS)
        return code;
    }
    return postings_.empty() ? ZOX_RESULT_NOTHING_NEW : ZOX_RESULT_SUCCESS;
  }

  /** The server's stamp; the one of the last update when the server sent none. */
  [[nodiscard]] gint64 stamp() const noexcept { return stamp_; }
  [[nodiscard]] bool has_dumps() const noexcept { return dumps_.count() > 0; }
  [[nodiscard]] Postings &postings() noexcept { return postings_; }

private:
  ZoxErrorCode ask_repeatedly() noexcept {
    for (int question = 0; question < max_questions; ++question) {
      const guint known = dumps_.count();
      const gint64 earlier = stamp_;
      if (const ZoxErrorCode code = ask_once(); code != ZOX_RESULT_SUCCESS)
        return code;
      const guint count = dumps_.count();
      // Where only known names came and the stamp stands still, the next question is this one
      // again.
      if (count == known || (!dumps_.note_new() && stamp_ == earlier))
        return ZOX_RESULT_SUCCESS;
      if (count > max_dumps)
        return refuse(
            g_strdup_printf("zox_events_fetch(): more than %zu names of dumps", max_dumps));
    }
    return refuse(g_strdup_printf(
        "zox_events_fetch(): names of dumps still come after %d questions", max_questions));
  }

  /** Ends an update whose data is beyond all bounds; takes the message. */
  ZoxErrorCode refuse(char *message) noexcept {
    hand_over(server_text_, OwnedText(message));
    return ZOX_RESULT_NOT_PARSED;
  }

  ZoxErrorCode ask_once() noexcept {
    return zox_events_fetch_get_available(dumps_.place(), static_cast<gint32>(stamp_), &stamp_,
                                          server_text_);
  }

  ZoxErrorCode fetch_dump(const char *name) noexcept {
    OwnedString decompressedData;
    if (const ZoxErrorCode code = download(name, decompressedData); code != ZOX_RESULT_SUCCESS)
      return code;
    if (is_cancelled())
      return ZOX_RESULT_UNKNOWN_ERROR;
    GSList *objects = nullptr;
    const ZoxErrorCode parsed =
        zox_events_parse(decompressedData.get(), nullptr, &objects, server_text_, 0);
    postings_.append(objects);
    return parsed;
  }

  ZoxEventsProgress progress_;
  char **server_text_;
  gint64 stamp_ = 0;
  DumpNames dumps_;
  Postings postings_;
};

/** Whether the stamp can be a time: any later update would start from it. */
bool is_time(gint64 stamp) noexcept {
  return stamp >= 0 && stamp < G_MAXINT32;
}

/** Moves the update times on, unless the server's stamp is none. */
void move_times(gint64 stamp) noexcept {
  if (is_time(stamp)) {
    const CoreWriter guard;
    core->config->prevCheck = std::exchange(core->config->lastCheck, stamp);
  } else {
    g_warning("zox_events_fetch(): %" G_GINT64_FORMAT
              " is geen bruikbare tijd van de server; lastCheck en prevCheck blijven gelijk\n",
              stamp);
  }
}

/** Saves the merged list and moves the update times on; false when the list cannot be saved. */
bool save(gint64 stamp) noexcept {
  if (zox_eventlist_save(core->eventlist) == 0) {
    if (!read_only() && !is_cancelled())
      g_warning("zox_events_fetch(): de postings konden niet worden opgeslagen\n");
    return false;
  }
  move_times(stamp);
  zox_config_save();
  return true;
}

/** Saves what was merged and loads the list anew; whether both went well is the file outcome. */
void save_and_reload(gint64 stamp) noexcept {
  // Without a saved list the times stay as they are and the merged postings in memory: the next
  // update asks for them again, and until then nothing is lost.
  if (!save(stamp))
    return;
  const JoinedOutcome outcome;
  reload(core->eventlist);
}

/**
 * Loads the list from the cache; false when the file is there but cannot be read, since what is
 * merged into nothing would then replace it.
 */
bool start_from_cache() noexcept {
  reload(core->eventlist);
  return file_outcome().status != ZOX_FILE_UNREADABLE;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_events_fetch_get_available(GSList **dumpList, gint32 lastCheck,
                                            gint64 *newLastCheck, char **serverText) {
  const OwnedText value(g_strdup_printf("%d", lastCheck));
  const OwnedParameters parameters(
      g_slist_prepend(nullptr, zox_http_parameter_new("lc", value.get())));
  ZoxString *reply = nullptr;
  const ZoxErrorCode code =
      zox_http_curl_execute("/3.7.3/xml.php", parameters.get(), 1, &reply, 1, nullptr, 1);
  const OwnedString uitvoer(reply);
  if (code == ZOX_RESULT_SUCCESS) {
    ZOX_ASSERT(uitvoer);
    return zox_events_list_parse(uitvoer.get(), newLastCheck, dumpList, serverText);
  }
  *serverText = code == ZOX_RESULT_SERVER_NOTICE ? g_strdup(chars_or_null(uitvoer.get())) : nullptr;
  return code;
}

ZoxErrorCode zox_events_fetch(ZoxEventsProgress progress, ZoxEventlistProgress mergeProgress,
                              ZoxEventsDone done, char **serverText, gpointer userData) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  ZoxUpdateResult &result = begin_update_result();
  result.note_aged_out(remove_aged(core->eventlist));
  if (progress != nullptr)
    progress(0, 0);
  Update update(progress, serverText);
  if (const ZoxErrorCode code = update.ask(); code != ZOX_RESULT_SUCCESS)
    return code;
  zox_group_save();
  if (!update.has_dumps())
    return ZOX_RESULT_NOTHING_NEW;
  if (const ZoxErrorCode code = update.fetch_dumps(); code != ZOX_RESULT_SUCCESS)
    return code;
  if (core->config->lastCheck != 0 && !start_from_cache())
    return ZOX_RESULT_UNKNOWN_ERROR;
  if (is_cancelled())
    return ZOX_RESULT_UNKNOWN_ERROR;
  enter_step(JobStep::merging);
  result.note_merge(update.postings().merge_into(core->eventlist, mergeProgress, userData));
  if (done != nullptr)
    done(userData);
  enter_step(JobStep::saving);
  save_and_reload(update.stamp());
  if (is_cancelled() && file_outcome().status == ZOX_FILE_NOT_WRITTEN)
    return ZOX_RESULT_UNKNOWN_ERROR;
  if (done != nullptr) {
    FileOutcome outcome = file_outcome();  // the callback may save files of its own
    done(userData);
    set_file_outcome(std::move(outcome));
  }
  return ZOX_RESULT_SUCCESS;
}

}  // extern "C"
