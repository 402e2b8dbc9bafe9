/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The forum reply; a copy of the posting prints the same forum. */
#include <velkor/zox_events_forum.h>

#include "posting/event_record.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  const OwnedEvent posting(zox_event_new());
  const gint32 result = zox_events_forum_parse(text.get(), posting.get());
  fuzz::require(result >= 0 && result <= 3, "the result is 0 to 3");
  fuzz::require(posting->forum != nullptr, "the posting gets a forum");
  fuzz::require(result == 0 || posting->forum->reactions == nullptr, "a failure adds nothing");

  const OwnedEvent copy(zox_event_duplicate(posting.get()));
  const OwnedString printed(zox_events_forum_print(posting.get(), nullptr));
  const OwnedString printed_copy(zox_events_forum_print(copy.get(), nullptr));
  fuzz::require(fuzz::same_text(printed.get(), printed_copy.get()), "a copy prints the same");
  return 0;
}
