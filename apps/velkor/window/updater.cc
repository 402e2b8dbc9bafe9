/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "window/updater.h"

#include <ctime>
#include <utility>

#include "library/age_limit.h"
#include "library/ask.h"
#include "model/lost_spots.h"

namespace velkor::app {

Updater::Updater(Session &session, UpdateBar &bar, const std::unordered_set<std::int32_t> &watched)
    : session_(session), bar_(bar), watched_(watched) {
  bar_.signal_stop().connect([this] { stop(); });
  bar_.signal_update_anyway().connect([this] { begin(); });
}

Updater::~Updater() {
  if (check_)
    check_->cancel();
}

void Updater::start(Session::Extent extent) {
  if (!snapshot_ || runs_)
    return;
  extent_ = extent;
  if (check_)
    check_->cancel();
  check_ = ask(session_, age_limit_days,
               [this](std::optional<std::int32_t> age_limit) { check(age_limit); });
}

void Updater::check(std::optional<std::int32_t> age_limit) {
  if (runs_)
    return;
  const std::size_t count =
      age_limit ? spots_of_an_emptied_list(*snapshot_, watched_, *age_limit, std::time(nullptr))
                : 0;
  if (count > 0)
    bar_.show_question(count, *age_limit);
  else
    begin();
}

void Updater::begin() {
  if (std::exchange(runs_, true))
    return;
  changed_.emit();
  bar_.begin();
  session_.update(extent_);
}

void Updater::stop() {
  session_.stop_update();
}

void Updater::show_progress(const UpdateProgress &progress) {
  if (runs_)
    bar_.show_progress(progress);
}

void Updater::end(const UpdateOutcome &outcome) {
  runs_ = false;
  changed_.emit();
  bar_.show_outcome(outcome);
}

}  // namespace velkor::app
