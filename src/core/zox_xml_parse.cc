/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_xml_parse.h>

#include <optional>
#include <string>

#include "support/assertion.h"
#include "support/text.h"
#include "support/xml.h"

using namespace velkor;

namespace {

/**
 * The node's own text and CDATA children joined; none when it has none. libxml2 does the same, but
 * copies all that it has joined so far for each child; it is left to expand entities.
 */
std::optional<std::string> content_of(xmlDocPtr doc, xmlNodePtr node) noexcept {
  std::optional<std::string> content;
  for (xmlNode *child : xml::Siblings(node->children)) {
    if (child->type == XML_ENTITY_REF_NODE) {
      const xml::Chars text(xmlNodeListGetString(doc, node->children, 1));
      return text ? std::optional(xml::chars(text.get())) : std::nullopt;
    }
    const bool is_text = child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE;
    if (!is_text || child->content == nullptr)
      continue;
    if (!content)
      content.emplace();
    content->append(xml::chars(child->content));
  }
  return content;
}

}  // namespace

extern "C" {

gint32 zox_xml_parse_int(xmlDocPtr doc, xmlNodePtr node) {
  const std::optional<std::string> text = content_of(doc, node);
  return text ? leading_integer(text->c_str()) : 0;
}

ZoxString *zox_xml_parse_string(xmlDocPtr doc, xmlNodePtr node) {
  const std::optional<std::string> text = content_of(doc, node);
  return text ? g_string_new(text->c_str()) : nullptr;
}

gint32 zox_xml_parse_int_attr(xmlDocPtr, xmlNodePtr node, const char *attrName) {
  ZOX_ASSERT(attrName);
  const xml::Chars text(xmlGetProp(node, xml::chars(attrName)));
  return text ? leading_integer(xml::chars(text.get())) : 0;
}

}  // extern "C"
