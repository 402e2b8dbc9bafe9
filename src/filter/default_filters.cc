/* SPDX-License-Identifier: LGPL-2.1-or-later */

#include <array>

#include <velkor/zox_splitted_list.h>

#include "filter/filter_record.h"

namespace velkor {
namespace {

enum class Genres { any, plain };

struct DefaultFilter {
  const char *name;
  gint32 cat;
  gint32 sCat;
  const char *codes;
  Genres genres;
};

/** Every picture genre but the four erotic ones. */
constexpr const char *plain_genres =
    "d0|d1|d2|d3|d4|d5|d6|d7|d8|d9|d10|d11|d12|d13|d14|d15|d16|d17|d18|d19|d20|d21|d22|d27";

constexpr std::array<DefaultFilter, 16> default_filters{{
    {"DivX", 0, 0, "a0", Genres::plain},
    {"WMV", 0, 1, "a1", Genres::plain},
    {"MPG", 0, 2, "a2", Genres::plain},
    {"DVD", 0, 3, "a3", Genres::plain},
    {"HDTV", 0, 4, "a4", Genres::plain},
    {"Afbeeldingen", 0, 5, "a5", Genres::plain},
    {"Erotiek", 0, -1, "d23|d24|d25|d26", Genres::any},
    {"Compressed", 1, -1, "a0|a1|a2|a3", Genres::any},
    {"Lossless", 1, 4, "a4", Genres::any},
    {"Windows", 2, 0, "a0", Genres::any},
    {"Mac / Linux", 2, -1, "a1|a2", Genres::any},
    {"PlayStation", 2, -1, "a3|a4|a5", Genres::any},
    {"Overige consoles", 2, -1, "a6|a7|a8|a9", Genres::any},
    {"Windows", 3, 0, "a0", Genres::any},
    {"Mac / Linux / OS2", 3, -1, "a1|a2|a3", Genres::any},
    {"PDA / Navigatie", 3, -1, "a4|a5", Genres::any},
}};

OwnedFilter filled_filter(const DefaultFilter &row) noexcept {
  OwnedFilter filter(zox_filter_new_filter());
  filter->name = g_string_new(row.name);
  filter->cat = row.cat;
  filter->sCat = row.sCat;
  filter->tags = zox_splitted_list_split(row.codes);
  if (row.genres == Genres::plain)
    filter->tags = g_slist_concat(filter->tags, zox_splitted_list_split(plain_genres));
  return filter;
}

}  // namespace

void append_default_filters(ZOXFilterlist *list) noexcept {
  for (const DefaultFilter &row : default_filters)
    zox_filterlist_append_filter(list, filled_filter(row).get());
}

}  // namespace velkor
