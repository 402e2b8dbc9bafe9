/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The newsgroups document. */
#include <velkor/zox_app_core.h>
#include <velkor/zox_groups.h>

#include "support/slist.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  core->groups = zox_group_parse(text.get());
  for (const ZoxGroup *group : Items<ZoxGroup>(core->groups))
    fuzz::require(zox_group_by_id(group->id)->id == group->id, "a newsgroup is found by its id");
  zox_group_free_all();
  return 0;
}
