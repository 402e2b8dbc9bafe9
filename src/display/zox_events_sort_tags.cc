/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_sort.h>

#include <velkor/zox_string.h>

#include "display/parts.h"
#include "display/tag_table_rows.h"
#include "support/assertion.h"
#include "support/slist.h"

namespace velkor {
namespace {

void add_row_unless_empty(TextWriter &out, std::string_view name, const ZoxString *text) noexcept {
  if (text != nullptr && text->len != 0)
    add_tag_table_row(out, name, text->str);
}

/** One row a tag; the first tag of a group in a row of tags names the group. */
void add_tags(TextWriter &out, const ZoxEvent &event, DisplayLookups &lookups) noexcept {
  const char *group = nullptr;
  for (const ZoxString *code : Items<ZoxString>(event.tags)) {
    ZOX_ASSERT_IN(zox_events_sort_parse_tags, code, "tmp");
    const ShownTag &tag = lookups.tag(*code, event.cat);
    const bool continued = group != nullptr && g_strcmp0(group, tag.group) == 0;
    out.add(continued ? tag.continuation : tag.row);
    if (tag.group != nullptr)
      group = tag.group;
  }
}

/** The front end intercepts links to "iets.html" and opens the address behind "link". */
void add_link(TextWriter &out, std::string_view address) noexcept {
  out.add_all(tag_row::label, "Weblink", tag_row::value, "<A HREF='iets.html#link", address, "'>",
              address, "</A>", tag_row::end);
}

}  // namespace

void add_tag_table(TextWriter &out, const ZoxEvent &event, std::string_view address,
                   DisplayLookups &lookups) noexcept {
  out.add("<TABLE STYLE='font-family: arial; font-size: 11px;'>");
  add_tag_table_row(out, "Categorie", zox_string_category(event.cat));
  add_tags(out, event, lookups);
  add_tag_table_row(out, "Status", zox_string_status(event.status));
  if (!address.empty())
    add_link(out, address);
  add_row_unless_empty(out, "Tag", event.tag);
  add_row_unless_empty(out, "Reden van verwijdering", event.reason);
  out.add("</TABLE>");
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_events_sort_parse_tags(const ZoxEvent *posting) {
  ZOX_ASSERT_AS(posting != nullptr, "event");
  TextWriter out;
  DisplayLookups lookups;
  const OwnedString url(zox_string_add_http(posting->link));
  ZOX_ASSERT(url);
  add_tag_table(out, *posting, url->str, lookups);
  return out.release();
}

}  // extern "C"
