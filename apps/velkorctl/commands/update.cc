/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl update: brings the cache up to date. */
#include <optional>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events.h>
#include <velkor/zox_http_curl.h>

#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/file_stamp.h"
#include "velkorctl/interruption.h"
#include "velkorctl/messages.h"
#include "velkorctl/progress.h"

namespace velkor::ctl {
namespace {

constexpr ZoxErrorCode nothing_new = 5;

/** One update: what its callbacks share. The library hands no data to the first of them. */
class Update {
public:
  Update(const CoreSession &session, bool recursive);
  ~Update();
  Update(const Update &) = delete;
  Update &operator=(const Update &) = delete;

  ZoxErrorCode run(OwnedText &server_text);
  [[nodiscard]] guint32 received() const noexcept { return received_; }
  /** Whether the new postings reached the cache file. */
  [[nodiscard]] bool saved() const noexcept { return saved_; }
  /** Makes the next update ask again from where this one began. */
  void take_back_times() const noexcept;

private:
  static gint on_dump(gint32 total, gint32 index) noexcept;
  static gint on_bytes(gint64 received, gint64 expected, gpointer self) noexcept;
  static gint on_merge(guint32 total, guint32 done, gpointer self) noexcept;
  static gint on_done(gpointer self) noexcept;
  void done();

  static Update *current_;

  std::filesystem::path cache_file_;
  gint64 last_check_ = core->config->lastCheck;
  gint64 prev_check_ = core->config->prevCheck;
  gint32 recursive_setting_ = core->config->recursiveUpdate;
  Progress progress_;
  guint32 received_ = 0;
  std::optional<FileStamp> before_saving_;
  bool saved_ = false;
};

Update *Update::current_ = nullptr;

Update::Update(const CoreSession &session, bool recursive)
    : cache_file_(session.directory() / "velkor.posts.gz") {
  current_ = this;
  core->watcherNoHits = 1;
  core->watchlistUnchanged = 1;
  if (recursive)
    core->config->recursiveUpdate = 1;
  zox_http_set_transfer_callback(on_bytes, this);
}

Update::~Update() {
  zox_http_set_transfer_callback(nullptr, nullptr);
  core->config->recursiveUpdate = recursive_setting_;
  current_ = nullptr;
}

ZoxErrorCode Update::run(OwnedText &server_text) {
  char *place = nullptr;
  const ZoxErrorCode result = zox_events_fetch(on_dump, on_merge, on_done, &place, this);
  server_text.reset(place);
  return result;
}

void Update::take_back_times() const noexcept {
  core->config->lastCheck = last_check_;
  core->config->prevCheck = prev_check_;
}

gint Update::on_dump(gint32 total, gint32 index) noexcept {
  current_->progress_.dump(total, index);
  return 0;
}

gint Update::on_bytes(gint64 received, gint64 expected, gpointer self) noexcept {
  static_cast<Update *>(self)->progress_.bytes(received, expected);
  return Interruption::requested() ? 1 : 0;
}

gint Update::on_merge(guint32 total, guint32 /*done*/, gpointer self) noexcept {
  static_cast<Update *>(self)->received_ = total;
  return 0;
}

gint Update::on_done(gpointer self) noexcept {
  static_cast<Update *>(self)->done();
  return 0;
}

/** Called right before the cache and the settings are saved, and again after that. */
void Update::done() {
  if (before_saving_) {
    saved_ = !(FileStamp(cache_file_) == *before_saving_);
    return;
  }
  progress_.complete();
  before_saving_.emplace(cache_file_);
  core->config->recursiveUpdate = recursive_setting_;
}

void report(const Update &update) {
  say(std::to_string(update.received()) + " postings received, " +
      std::to_string(zox_eventlist_get_count(core->eventlist, 0)) + " in the cache");
  if (core->watcherNoHits == 0)
    say("a watcher matches a new posting");
  if (core->watchlistUnchanged == 0)
    say("a posting on the watchlist has changed");
}

/** The library moves the update times on whether or not the postings could be saved. */
void require_saved(const Update &update, const CoreSession &session) {
  if (update.saved())
    return;
  update.take_back_times();
  zox_config_save();
  throw Failure(Exit::files, "the postings received could not be saved in " +
                                 session.directory().string() +
                                 "; the next update fetches them again");
}

Exit run(const Context &context) {
  const CoreSession session(context.options, CoreSession::Access::write, Load::postings);
  session.require_account();
  OwnedText server_text;
  Update update(session, context.arguments.has("--recursive"));
  const ZoxErrorCode result = update.run(server_text);
  if (result == nothing_new) {
    say(sentence_of(result, nullptr));
    return context.arguments.has("--exit-code") ? Exit::nothing_new : Exit::ok;
  }
  require_success(result, server_text);
  require_saved(update, session);
  report(update);
  return Exit::ok;
}

}  // namespace

Command update_command() {
  return {"update",
          "Fetch what is new from the server",
          {},
          {{"-r,--recursive", "", "Go on asking until the server has nothing more"},
           {"--exit-code", "", "End with exit code 5 when nothing was new"}},
          run};
}

}  // namespace velkor::ctl
