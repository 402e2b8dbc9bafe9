/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "posting/shared_parts.h"

#include <algorithm>
#include <cstring>
#include <new>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "support/text.h"

namespace velkor {
namespace {

constexpr char separator = '|';

template <typename T>
T *place(SharedMemory &memory, const T &value) noexcept {
  return ::new (memory.take(sizeof(T), alignof(T))) T(value);
}

/** A text to look up, which is not written to. */
GString as_key(std::string_view characters) noexcept {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  return {const_cast<char *>(characters.data()), characters.size(), characters.size() + 1};
}

guint hash_of(gconstpointer text) {
  const auto *key = static_cast<const GString *>(text);
  return static_cast<guint>(XXH3_64bits(key->str, key->len));
}

gboolean are_equal(gconstpointer left, gconstpointer right) {
  return view_of(static_cast<const GString *>(left)) == view_of(static_cast<const GString *>(right))
             ? TRUE
             : FALSE;
}

}  // namespace

SharedParts::SharedParts() noexcept
    : memory_(SharedMemory::make()), texts_(g_hash_table_new(hash_of, are_equal)),
      lists_(g_hash_table_new(hash_of, are_equal)) {}

GString *SharedParts::keep(std::string_view characters) noexcept {
  char *bytes = memory_->take(characters.size() + 1, 1);
  std::memcpy(bytes, characters.data(), characters.size());
  bytes[characters.size()] = '\0';
  return place(*memory_, GString{bytes, characters.size(), characters.size() + 1});
}

GString *SharedParts::text(std::string_view characters) noexcept {
  const GString sought = as_key(characters);
  if (gpointer known = g_hash_table_lookup(texts_.get(), &sought))
    return static_cast<GString *>(known);
  GString *made = keep(characters);
  g_hash_table_add(texts_.get(), made);
  return made;
}

GSList *SharedParts::list(std::string_view split_list) noexcept {
  split_list = split_list.substr(0, split_list.find('\0'));
  const GString sought = as_key(split_list);
  gpointer known = nullptr;
  if (g_hash_table_lookup_extended(lists_.get(), &sought, nullptr, &known) != FALSE)
    return static_cast<GSList *>(known);
  GSList *made = build(split_list);
  g_hash_table_insert(lists_.get(), keep(split_list), made);
  return made;
}

GSList *SharedParts::build(std::string_view split_list) noexcept {
  GSList *head = nullptr;
  GSList **tail = &head;
  while (!split_list.empty()) {
    const std::string_view item = split_list.substr(0, split_list.find(separator));
    split_list.remove_prefix(std::min(split_list.size(), item.size() + 1));
    if (item.empty())
      continue;
    *tail = place(*memory_, GSList{text(item), nullptr});
    tail = &(*tail)->next;
  }
  return head;
}

}  // namespace velkor
