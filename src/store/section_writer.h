/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Makes sections of the cache file, one after the other; each thread has a writer of its own. */
#ifndef VELKOR_STORE_SECTION_WRITER_H
#define VELKOR_STORE_SECTION_WRITER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "posting/shared_parts.h"
#include "store/deflate.h"
#include "store/event_digest.h"
#include "store/event_order.h"
#include "store/known_posts.h"

namespace velkor {

/** A posting that is left out, and why. */
struct Refusal {
  gint32 id;
  const char *fault;
};

struct NewSection {
  std::string compressed;
  /** All but the offset; the text is empty when there was nothing to write. */
  KnownSection known;
  std::vector<Refusal> refusals;
};

class SectionWriter {
public:
  /** @param now  postings deleted long before this time are left out in silence */
  SectionWriter(std::uint64_t seed, gint64 now) noexcept : digest_(seed), now_(now) {}

  /** The section of these entries. It is read back: what is in it, a reader takes. */
  NewSection write(std::span<const OrderedEntry> entries) noexcept;

private:
  /** How sure it is that each posting can be read back. */
  enum class Care { usual, each_alone };

  bool try_to_write(std::span<const OrderedEntry> entries, Care care, NewSection &made) noexcept;
  void add(const OrderedEntry &entry, Care care, NewSection &made) noexcept;
  /** The digest of what the document reads back as; nothing when a posting got lost. */
  std::optional<std::uint64_t> read_back() noexcept;
  [[nodiscard]] bool is_readable_alone(const ZoxEvent &event) const noexcept;

  Deflater deflater_;
  EventDigest digest_;
  gint64 now_;
  std::shared_ptr<SharedParts> parts_ = std::make_shared<SharedParts>();
  std::string document_;
  std::size_t written_ = 0;  // postings in the document
};

}  // namespace velkor

#endif
