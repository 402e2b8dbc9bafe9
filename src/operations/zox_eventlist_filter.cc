/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Applying a filter to the event list. */
#include <velkor/zox_eventlist.h>

#include <velkor/zox_eventinfo.h>

#include "store/filter_pass.h"
#include "support/owned.h"

namespace velkor {
namespace {

/** Asks the server for the one posting that a filter names; it ends up in the list. */
bool fetch(gint32 postId) noexcept {
  char *text = nullptr;
  const ZoxErrorCode code = zox_eventinfo_fetch(postId, &text);
  const OwnedText message(text);
  return code == ZOX_RESULT_SUCCESS;
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_eventlist_apply_filter(ZOXEventlist *list, const ZoxFilter *filter) {
  const auto postId = static_cast<gint32>(filter->postId);
  if (filter_entries(list, *filter) == 0 && postId != 0 && fetch(postId))
    add_to_filtered(list, postId);
}

}  // extern "C"
