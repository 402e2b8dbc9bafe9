/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_XML_PARSE_H
#define VELKOR_ZOX_XML_PARSE_H

#include <libxml/tree.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

gint32     zox_xml_parse_int(xmlDocPtr doc, xmlNodePtr node);
ZoxString *zox_xml_parse_string(xmlDocPtr doc, xmlNodePtr node);
gint32     zox_xml_parse_int_attr(xmlDocPtr doc, xmlNodePtr node, const char *attrName);

G_END_DECLS

#endif
