/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners for libxml2's and libxslt's handles. */
#ifndef VELKORCTL_HTML_XML_OWNED_H
#define VELKORCTL_HTML_XML_OWNED_H

#include <memory>
#include <string>
#include <string_view>

#include <libxml/tree.h>
#include <libxml/xpath.h>
#include <libxslt/xsltInternals.h>

#include "support/owned.h"

namespace velkor::ctl {

inline void free_xml_text(xmlChar *text) {
  xmlFree(text);
}

using XmlDocument = std::unique_ptr<xmlDoc, ReleaseWith<xmlFreeDoc>>;
using XmlText = std::unique_ptr<xmlChar, ReleaseWith<free_xml_text>>;
using XmlBuffer = std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>>;
using XPathContext = std::unique_ptr<xmlXPathContext, ReleaseWith<xmlXPathFreeContext>>;
using XPathResult = std::unique_ptr<xmlXPathObject, ReleaseWith<xmlXPathFreeObject>>;
using StyleSheet = std::unique_ptr<xsltStylesheet, ReleaseWith<xsltFreeStylesheet>>;

inline const xmlChar *xml_chars(const char *text) {
  return reinterpret_cast<const xmlChar *>(text);
}
inline std::string_view view_of(const xmlChar *text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char *>(text);
}
inline std::string content_of(const xmlNode *node) {
  const XmlText text(xmlNodeGetContent(node));
  return std::string(view_of(text.get()));
}

}  // namespace velkor::ctl

#endif
