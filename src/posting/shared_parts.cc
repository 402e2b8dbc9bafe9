/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "posting/shared_parts.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace velkor {
namespace {

constexpr char separator = '|';

template <typename T>
T *place(SharedMemory &memory, const T &value) noexcept {
  return ::new (memory.take(sizeof(T), alignof(T))) T(value);
}

}  // namespace

std::string_view SharedParts::copy(std::string_view characters) noexcept {
  char *bytes = memory_->take(characters.size() + 1, 1);
  std::memcpy(bytes, characters.data(), characters.size());
  bytes[characters.size()] = '\0';
  return {bytes, characters.size()};
}

GString *SharedParts::text(std::string_view characters) noexcept {
  if (const auto known = texts_.find(characters); known != texts_.end())
    return known->second;
  const std::string_view kept = copy(characters);
  GString *made =
      place(*memory_, GString{const_cast<char *>(kept.data()), kept.size(), kept.size() + 1});
  texts_.emplace(kept, made);
  return made;
}

GSList *SharedParts::list(std::string_view split_list) noexcept {
  split_list = split_list.substr(0, split_list.find('\0'));
  if (const auto known = lists_.find(split_list); known != lists_.end())
    return known->second;
  GSList *made = build(split_list);
  lists_.emplace(copy(split_list), made);
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
