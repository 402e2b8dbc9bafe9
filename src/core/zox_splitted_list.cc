/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_splitted_list.h>

#include <cstring>
#include <utility>

#include "support/owned.h"
#include "support/slist.h"

namespace velkor {
namespace {

constexpr char separator = '|';

using Builder = ListBuilder<ZoxString, free_string>;

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxSplittedList *zox_splitted_list_split(const char *text) {
  Builder items;
  while (text != nullptr && *text != '\0') {
    const char *end = strchrnul(text, separator);
    if (end != text)
      items.append(g_string_new_len(text, end - text));
    text = *end == '\0' ? end : end + 1;
  }
  return items.release();
}

ZoxString *zox_splitted_list_concat(ZoxSplittedList *list) {
  ZoxString *text = g_string_new("|");
  for (const ZoxString *item : Items<ZoxString>(list)) {
    if (item != list->data)
      g_string_append_c(text, separator);
    g_string_append_len(text, item->str, static_cast<gssize>(item->len));
  }
  return text->len >= 2 ? g_string_append_c(text, separator) : text;
}

ZoxSplittedList *zox_splitted_list_duplicate(ZoxSplittedList *list) {
  Builder items;
  for (const ZoxString *item : Items<ZoxString>(list))
    items.append(copy_string(item));
  return items.release();
}

void zox_splitted_list_free(ZoxSplittedList **listPlace) {
  const OwnedCells cells(std::exchange(*listPlace, nullptr));
  for (ZoxString *item : Items<ZoxString>(cells.get()))
    free_string(item);
}

}  // extern "C"
