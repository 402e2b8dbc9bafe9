/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/event_digest.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "store/event_text.h"

namespace velkor {

void EventDigest::add(const ZoxEvent &event) noexcept {
  append_identity(bytes_, event);
}

std::uint64_t EventDigest::finish() noexcept {
  const std::uint64_t digest =
      XXH3_64bits_withSeed(bytes_.view().data(), bytes_.view().size(), seed_);
  bytes_.clear();
  return digest == no_digest ? 1 : digest;
}

}  // namespace velkor
