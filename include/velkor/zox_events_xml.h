/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTS_XML_H
#define VELKOR_ZOX_EVENTS_XML_H

#include <libxml/tree.h>

#include <velkor/zox_event.h>

G_BEGIN_DECLS

xmlNodePtr zox_events_xml_add_basic(const ZoxEvent *event, xmlDocPtr doc);
xmlNodePtr zox_events_xml_add_all(const ZoxEvent *event, xmlDocPtr doc);

G_END_DECLS

#endif
