/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * What many postings have in common is held once: the lists of newsgroups and of tags, the poster
 * and the free tag. Packed records point to it. Records are read without a lock and without a
 * thought for this: what is shared never changes, and goes with the last record that needs it.
 */
#ifndef VELKOR_POSTING_SHARED_PARTS_H
#define VELKOR_POSTING_SHARED_PARTS_H

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <memory_resource>
#include <string_view>

#include <velkor/zox_event.h>

#include "support/owned.h"

namespace velkor {

/* The members that records share. */
inline constexpr std::array shared_text_members{&ZoxEvent::poster, &ZoxEvent::tag};
inline constexpr std::array shared_list_members{&ZoxEvent::groups, &ZoxEvent::tags};

/** The memory of shared parts; every record that points into it holds a reference. */
class SharedMemory {
public:
  /** A new one with a reference for the caller. */
  static SharedMemory *make() noexcept { return new SharedMemory; }
  SharedMemory(const SharedMemory &) = delete;
  SharedMemory &operator=(const SharedMemory &) = delete;

  void add_reference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
  void drop_reference() noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1)
      delete this;
  }

  /** Bytes that stay as long as the memory. Only one thread at a time takes them. */
  char *take(std::size_t size, std::size_t alignment) noexcept {
    return static_cast<char *>(bytes_.allocate(size, alignment));
  }

private:
  SharedMemory() = default;
  ~SharedMemory() = default;

  std::atomic<std::size_t> references_{1};
  std::pmr::monotonic_buffer_resource bytes_;
};

/** Makes shared parts, equal ones once. For one thread at a time, while it reads postings. */
class SharedParts {
public:
  SharedParts() noexcept;
  ~SharedParts() { memory_->drop_reference(); }
  SharedParts(const SharedParts &) = delete;
  SharedParts &operator=(const SharedParts &) = delete;

  /** The text, zero-terminated. */
  GString *text(std::string_view characters) noexcept;
  /** The items of a text in split-list form, up to its first zero byte; null when it has none. */
  GSList *list(std::string_view split_list) noexcept;

  [[nodiscard]] SharedMemory &memory() const noexcept { return *memory_; }

private:
  using Index = std::unique_ptr<GHashTable, ReleaseWith<g_hash_table_destroy>>;

  GString *keep(std::string_view characters) noexcept;
  GSList *build(std::string_view split_list) noexcept;

  SharedMemory *memory_;
  Index texts_;  // the texts themselves
  Index lists_;  // lists by their split-list form
};

}  // namespace velkor

#endif
