/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "filter/bad_words.h"

#include <velkor/zox_app_core.h>

#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {

bool has_bad_word(const ZoxEvent &event) noexcept {
  for (const GString *badword : Items<const GString>(core->config->badword)) {
    ZOX_ASSERT(badword);
    if (event.title != nullptr && contains_ignoring_case(view_of(event.title), view_of(badword)))
      return true;
  }
  return false;
}

}  // namespace velkor
