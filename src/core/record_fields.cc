/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/record_fields.h"

#include <velkor/zox_splitted_list.h>
#include <velkor/zox_xml_parse.h>

#include "support/owned.h"

namespace velkor {

bool read_value(xmlDoc *doc, xmlNode *node, gint32 &place) noexcept {
  place = zox_xml_parse_int(doc, node);
  return true;
}

bool read_value(xmlDoc *doc, xmlNode *node, guint32 &place) noexcept {
  place = static_cast<guint32>(zox_xml_parse_int(doc, node));
  return true;
}

bool read_value(xmlDoc *doc, xmlNode *node, gint64 &place) noexcept {
  place = zox_xml_parse_int(doc, node);
  return true;
}

bool read_value(xmlDoc *doc, xmlNode *node, GString *&place) noexcept {
  replace_string(place, zox_xml_parse_string(doc, node));
  return place != nullptr;
}

bool read_value(xmlDoc *doc, xmlNode *node, char *&place) noexcept {
  release_value(place);
  if (ZoxString *text = zox_xml_parse_string(doc, node))
    place = g_string_free(text, FALSE);
  return place != nullptr;
}

bool read_value(xmlDoc *doc, xmlNode *node, GSList *&place) noexcept {
  release_value(place);
  const OwnedString text(zox_xml_parse_string(doc, node));
  if (text)
    place = zox_splitted_list_split(text->str);
  return text != nullptr;
}

void release_value(gint32 &place) noexcept {
  place = 0;
}
void release_value(guint32 &place) noexcept {
  place = 0;
}
void release_value(gint64 &place) noexcept {
  place = 0;
}
void release_value(GString *&place) noexcept {
  replace_string(place, nullptr);
}
void release_value(char *&place) noexcept {
  g_free(std::exchange(place, nullptr));
}
void release_value(GSList *&place) noexcept {
  zox_splitted_list_free(&place);
}

}  // namespace velkor
