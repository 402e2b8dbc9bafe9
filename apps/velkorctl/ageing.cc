/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/ageing.h"

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_watchlist.h>

#include "support/owned_records.h"
#include "velkorctl/setting_words.h"
#include "velkorctl/settings.h"

namespace velkor::ctl {
namespace {

/** The postings that are not on the watchlist. */
struct Count {
  gint64 limit;
  std::int64_t all = 0;
  std::int64_t too_old = 0;
};

/** The stamp from which on postings are kept; 0, so that none ages, without a valid setting. */
gint64 age_limit(std::time_t now) {
  constexpr gint64 seconds_a_day = 86400;
  const ZoxSetting &setting = setting_called("verwijderPostsNaXDagen");
  const gint32 choice = core->config->verwijderPostsNaXDagen;
  return choice < 0 || choice > setting.highest ? 0 : now - setting.choices[choice] * seconds_a_day;
}

/** A filter pass copies no posting, and usually finds one at once that is young enough. */
bool any_is_young(gint64 limit) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->sinceStamp = limit;
  zox_eventlist_apply_filter(core->eventlist, filter.get());
  return zox_eventlist_get_count(core->eventlist, 1) > 0;
}

gint count(gpointer /*key*/, ZoxEvent *posting, gpointer data) noexcept {
  auto &into = *static_cast<Count *>(data);
  if (zox_watchlist_is_in_list(static_cast<guint32>(posting->postId)) != FALSE)
    return 0;
  ++into.all;
  if (posting->stamp < into.limit)
    ++into.too_old;
  return 0;
}

}  // namespace

std::int64_t postings_of_an_emptied_list(std::time_t now) {
  constexpr std::int64_t a_few = 10;
  Count result{.limit = age_limit(now)};
  if (any_is_young(result.limit))
    return 0;
  zox_eventlist_foreach(core->eventlist, 0, 1, count, &result);
  return result.too_old > a_few && result.too_old == result.all ? result.too_old : 0;
}

std::string retention_in_words() {
  return meaning_of(setting_called("verwijderPostsNaXDagen"),
                    std::to_string(core->config->verwijderPostsNaXDagen));
}

}  // namespace velkor::ctl
