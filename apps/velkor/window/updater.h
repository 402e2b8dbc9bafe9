/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The update from the question whether it may run to its outcome, as the bar tells it. */
#ifndef VELKOR_APP_WINDOW_UPDATER_H
#define VELKOR_APP_WINDOW_UPDATER_H

#include <cstdint>
#include <optional>
#include <unordered_set>
#include <utility>

#include <gtkmm.h>

#include "library/session.h"
#include "widgets/update_bar.h"

namespace velkor::app {

class Updater {
public:
  /** @param watched  the watchlist, which outlives the updater as the others do */
  Updater(Session &session, UpdateBar &bar, const std::unordered_set<std::int32_t> &watched);
  ~Updater();
  Updater(const Updater &) = delete;
  Updater &operator=(const Updater &) = delete;

  /** What an update starts from. */
  void set_snapshot(SharedSnapshot snapshot) { snapshot_ = std::move(snapshot); }

  /** Starts an update unless one runs. One that would empty the list is asked about first. */
  void start(Session::Extent extent);
  void stop();
  [[nodiscard]] bool runs() const noexcept { return runs_; }

  /** What the session tells about the update. */
  void show_progress(const UpdateProgress &progress);
  void end(const UpdateOutcome &outcome);

  /** An update began or ended. */
  sigc::signal<void()> &signal_changed() { return changed_; }

private:
  void check(std::optional<std::int32_t> age_limit);
  void begin();

  Session &session_;
  UpdateBar &bar_;
  const std::unordered_set<std::int32_t> &watched_;
  SharedSnapshot snapshot_;
  SharedCancellation check_;
  Session::Extent extent_ = Session::Extent::what_is_new;
  bool runs_ = false;
  sigc::signal<void()> changed_;
};

}  // namespace velkor::app

#endif
