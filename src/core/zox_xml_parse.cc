/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_xml_parse.h>

#include "support/assertion.h"
#include "support/text.h"
#include "support/xml.h"

using namespace velkor;

namespace {

/** The node's own text and CDATA children joined; null when it has none. */
xml::Chars content_of(xmlDocPtr doc, xmlNodePtr node) noexcept {
  return xml::Chars(xmlNodeListGetString(doc, node->children, 1));
}

gint32 integer_of(const xml::Chars &text) noexcept {
  return text ? leading_integer(xml::chars(text.get())) : 0;
}

}  // namespace

extern "C" {

gint32 zox_xml_parse_int(xmlDocPtr doc, xmlNodePtr node) {
  return integer_of(content_of(doc, node));
}

ZoxString *zox_xml_parse_string(xmlDocPtr doc, xmlNodePtr node) {
  const xml::Chars text = content_of(doc, node);
  return text ? g_string_new(xml::chars(text.get())) : nullptr;
}

gint32 zox_xml_parse_int_attr(xmlDocPtr, xmlNodePtr node, const char *attrName) {
  ZOX_ASSERT(attrName);
  return integer_of(xml::Chars(xmlGetProp(node, xml::chars(attrName))));
}

}  // extern "C"
