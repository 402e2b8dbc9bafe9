/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The reply that lists what an update may fetch. */
#include <velkor/zox_app_core.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_groups.h>

#include "support/slist.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  gint64 stamp = 0;
  GSList *chunks = nullptr;
  char *message = nullptr;
  const ZoxErrorCode result = zox_events_list_parse(text.get(), &stamp, &chunks, &message);
  fuzz::require(result == 0 || result == 11, "the result is 0 or 11");
  for (const ZoxGroup *group : Items<ZoxGroup>(core->groups))
    fuzz::require(group->id != 0 && group->groupName != nullptr, "newsgroups are complete");

  zox_group_free_all();
  g_slist_free_full(chunks, g_free);
  g_free(message);
  return 0;
}
