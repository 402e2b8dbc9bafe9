/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "events/event_tags.h"

#include "support/slist.h"
#include "support/text.h"

namespace velkor {

void derive_sub_category(ZoxEvent &event) noexcept {
  if (event.sCat != -1)
    return;
  for (const GString *tag : Items<const GString>(event.tags)) {
    if (tag->str[0] == 'a') {
      event.sCat = leading_integer(tag->str + 1);
      return;
    }
  }
}

}  // namespace velkor
