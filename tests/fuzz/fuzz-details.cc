/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The two replies about one posting: its details, and its basic fields. */
#include <velkor/zox_eventinfo.h>

#include "posting/event_record.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  const OwnedEvent details(zox_eventinfo_parse(text.get()));
  const OwnedEvent found(zox_eventinfo_parse_findpost(text.get()));
  fuzz::require(!details || !found, "no reply is of both kinds");
  return 0;
}
