/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The user's bad words, which keep postings out of the list. */
#ifndef VELKOR_FILTER_BAD_WORDS_H
#define VELKOR_FILTER_BAD_WORDS_H

#include <algorithm>

#include <velkor/zox_app_core.h>
#include <velkor/zox_event.h>

#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {

/** Whether the title holds one of the bad words of the settings, without regard to case. */
inline bool has_bad_word(const ZoxEvent &event) noexcept {
  return std::ranges::any_of(
      Items<const GString>(core->config->badword), [&event](const GString *badword) {
        ZOX_ASSERT_IN(zox_events_parse, badword, "badword");
        return event.title != nullptr &&
               contains_ignoring_case(view_of(event.title), view_of(badword));
      });
}

}  // namespace velkor

#endif
