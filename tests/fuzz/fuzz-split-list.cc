/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Split lists: splitting the stored form of a list yields the same items. */
#include <velkor/zox_splitted_list.h>

#include "support/slist.h"
#include "tests/fuzz/session.h"

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const OwnedString text = fuzz::text_of(data, size);
  ZoxSplittedList *items = zox_splitted_list_split(text->str);
  for (const GString *item : Items<GString>(items))
    fuzz::require(item != nullptr && item->len > 0, "no item is null or empty");

  const OwnedString stored(zox_splitted_list_concat(items));
  ZoxSplittedList *again = zox_splitted_list_split(stored->str);
  fuzz::require(fuzz::same_texts(items, again), "the stored form gives the same items");
  ZoxSplittedList *copy = zox_splitted_list_duplicate(items);
  fuzz::require(fuzz::same_texts(items, copy), "a copy holds the same items");

  zox_splitted_list_free(&items);
  zox_splitted_list_free(&again);
  zox_splitted_list_free(&copy);
  return 0;
}
