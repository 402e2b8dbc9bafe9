/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/ageing.h"

#include <optional>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_watchlist.h>

#include "support/setting_values.h"
#include "velkorctl/setting_words.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

/** The postings that are not on the watchlist. */
struct Ages {
  gint64 limit = 0;
  std::int64_t too_old = 0;
  bool any_young = false;
};

/** The stamp from which on postings are kept; 0, so that none ages, without a valid setting. */
gint64 age_limit(std::time_t now) {
  constexpr gint64 seconds_a_day = 86400;
  const std::optional<gint32> days = age_limit_days();
  return days ? now - *days * seconds_a_day : 0;
}

void look_at(const ZoxEvent *posting, gpointer data) noexcept {
  auto &ages = *static_cast<Ages *>(data);
  if (ages.any_young || zox_watchlist_is_in_list(static_cast<guint32>(posting->postId)) != FALSE)
    return;
  if (posting->stamp < ages.limit)
    ++ages.too_old;
  else
    ages.any_young = true;
}

}  // namespace

std::int64_t postings_of_an_emptied_list(std::time_t now) {
  constexpr std::int64_t a_few = 10;
  Ages ages{.limit = age_limit(now)};
  zox_eventlist_visit(core->eventlist, 0, look_at, &ages);
  return !ages.any_young && ages.too_old > a_few ? ages.too_old : 0;
}

std::string retention_in_words() {
  return meaning_of(setting_called("verwijderPostsNaXDagen"),
                    std::to_string(core->config->verwijderPostsNaXDagen));
}

}  // namespace velkor::ctl
