/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A number that stands for a sequence of postings: for what the cache file keeps of them. */
#ifndef VELKOR_STORE_EVENT_DIGEST_H
#define VELKOR_STORE_EVENT_DIGEST_H

#include <cstdint>

#include <velkor/zox_event.h>

#include "support/byte_buffer.h"

namespace velkor {

/** No digest: stands for postings that differ from all others. */
inline constexpr std::uint64_t no_digest = 0;

class EventDigest {
public:
  /** @param seed  unknown to who writes postings, so that nobody makes two with one digest */
  explicit EventDigest(std::uint64_t seed) noexcept : seed_(seed) {}

  void add(const ZoxEvent &event) noexcept;
  /** The digest of what was added, never `no_digest`; the next one begins. */
  std::uint64_t finish() noexcept;

private:
  std::uint64_t seed_;
  ByteBuffer bytes_;
};

}  // namespace velkor

#endif
