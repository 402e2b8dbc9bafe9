/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The reply that holds a profile. */
#include "services/profile_document.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const OwnedString text = fuzz::text_of(data, size);
  const OwnedProfile profile = parse_profile(text.get());
  return 0;
}
