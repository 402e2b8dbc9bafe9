/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One update from the server, with its progress on standard error. */
#ifndef VELKORCTL_UPDATE_RUN_H
#define VELKORCTL_UPDATE_RUN_H

#include <string>

#include <glib.h>

#include "velkorctl/command.h"
#include "velkorctl/progress.h"

namespace velkor::ctl {

/** Throws a usage Failure when an update would empty the cache, unless --yes is given. */
void require_ageing(const Arguments &arguments);

/** Only one at a time: the library passes no user data to the first callback. */
class UpdateRun {
public:
  enum class Extent {
    /** One request, or until the server has no more, as the setting recursiveUpdate says. */
    as_set,
    /** New postings until the server has no more. */
    all_new,
    /** All postings, including those fetched before. */
    everything,
  };

  /** There must be a core that may write. */
  explicit UpdateRun(Extent extent);
  ~UpdateRun();
  UpdateRun(const UpdateRun &) = delete;
  UpdateRun &operator=(const UpdateRun &) = delete;

  /**
   * Runs and reports the update; false when there was nothing new. Throws a Failure when it
   * fails; the next update then starts from the same point.
   */
  bool run();

  /** What came of the run. */
  struct Outcome {
    /** Why there was nothing new; empty when there was something. */
    std::string nothing_new;
    guint32 received = 0;
    guint32 cached = 0;
    /** The postings that were removed because of their age. */
    guint32 aged_out = 0;
    bool watcher_matches = false;
    bool watchlist_changed = false;
    /** The dumps that are known to wait on the server. */
    guint32 dumps_left = 0;
  };
  [[nodiscard]] const Outcome &outcome() const noexcept { return outcome_; }

private:
  static gint on_dump(gint32 total, gint32 index) noexcept;
  static gint on_bytes(gint64 received, gint64 expected, gpointer self) noexcept;
  static gint on_merge(guint32 total, guint32 done, gpointer self) noexcept;
  static gint on_done(gpointer self) noexcept;
  void done();
  void restore_settings() const noexcept;
  static void require_saved();
  void report();
  void report_ageing() const;
  void report_rest();

  static UpdateRun *current_;

  gint64 last_check_;
  gint64 prev_check_;
  gint32 recursive_setting_;
  Extent extent_;
  Progress progress_;
  /** What the update does now, for a message. */
  std::string stage_ = "asking what is new";
  guint32 count_before_;
  Outcome outcome_;
  bool merged_ = false;
};

/** What a command that updates prints. */
RecordInfo update_record();

/** Prints what came of the update when the options ask for it. */
void print_update(const Context &context, const UpdateRun::Outcome &outcome, Exit exit);

}  // namespace velkor::ctl

#endif
