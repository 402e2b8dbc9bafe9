/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners for the handles of XPath and libxslt. */
#ifndef VELKORCTL_HTML_XML_OWNED_H
#define VELKORCTL_HTML_XML_OWNED_H

#include <memory>
#include <string>
#include <string_view>

#include <libxml/xpath.h>
#include <libxslt/xsltInternals.h>

#include "support/xml.h"

namespace velkor::ctl {

using XmlBuffer = std::unique_ptr<xmlBuffer, ReleaseWith<xmlBufferFree>>;
using XPathContext = std::unique_ptr<xmlXPathContext, ReleaseWith<xmlXPathFreeContext>>;
using XPathResult = std::unique_ptr<xmlXPathObject, ReleaseWith<xmlXPathFreeObject>>;
using StyleSheet = std::unique_ptr<xsltStylesheet, ReleaseWith<xsltFreeStylesheet>>;

inline std::string_view view_of(const xmlChar *text) {
  return text == nullptr ? std::string_view() : xml::chars(text);
}
inline std::string content_of(const xmlNode *node) {
  const xml::Chars text(xmlNodeGetContent(node));
  return std::string(view_of(text.get()));
}

}  // namespace velkor::ctl

#endif
