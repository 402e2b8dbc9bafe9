/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_sort.h>

#include <velkor/zox_string.h>

#include "display/parts.h"
#include "support/assertion.h"
#include "support/slist.h"

namespace velkor {
namespace {

constexpr std::string_view label = "<TR><TD><B>";
constexpr std::string_view unlabelled = "<TR><TD></TD><TD>";
constexpr std::string_view value = " :</B></TD><TD>";
constexpr std::string_view row_end = "</TD></TR>";

void add_row(TextWriter &out, std::string_view name, std::string_view content) noexcept {
  out.add(label);
  out.add(name);
  out.add(value);
  out.add(content);
  out.add(row_end);
}

void add_row_unless_empty(TextWriter &out, std::string_view name, const ZoxString *text) noexcept {
  if (text != nullptr && text->len != 0)
    add_row(out, name, text->str);
}

/** One row a tag; the first tag of a group in a row of tags names the group. */
void add_tags(TextWriter &out, const ZoxEvent &event, DisplayLookups &lookups) noexcept {
  const char *group = nullptr;
  for (const ZoxString *code : Items<ZoxString>(event.tags)) {
    ZOX_ASSERT_IN(zox_events_sort_parse_tags, code, "tmp");
    const ZoxTag *tag = lookups.tag(*code, event.cat);
    if (tag == nullptr) {
      add_row(out, "Onbekende tag", code->str);
    } else if (g_strcmp0(group, tag->group->name->str) == 0) {
      out.add(unlabelled);
      out.add(tag->name->str);
      out.add(row_end);
    } else {
      group = tag->group->name->str;
      add_row(out, group, tag->name->str);
    }
  }
}

/** The front end intercepts links to "iets.html" and opens the address behind "link". */
void add_link(TextWriter &out, std::string_view address) noexcept {
  out.add(label);
  out.add("Weblink");
  out.add(value);
  out.add("<A HREF='iets.html#link");
  out.add(address);
  out.add("'>");
  out.add(address);
  out.add("</A>");
  out.add(row_end);
}

}  // namespace

void add_tag_table(TextWriter &out, const ZoxEvent &event, std::string_view address,
                   DisplayLookups &lookups) noexcept {
  out.add("<TABLE STYLE='font-family: arial; font-size: 11px;'>");
  add_row(out, "Categorie", zox_string_category(event.cat));
  add_tags(out, event, lookups);
  add_row(out, "Status", zox_string_status(event.status));
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
