/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The writer of the Events document, in which the cache keeps the postings.
 *
 * None of these functions needs the core. Threads: any, own data.
 */
#ifndef VELKOR_ZOX_EVENTS_XML_H
#define VELKOR_ZOX_EVENTS_XML_H

#include <libxml/tree.h>

#include <velkor/zox_event.h>

G_BEGIN_DECLS

/**
 * Makes the "Event" element of a posting from its fields up to `rating`; details and forum are not
 * written. Both times are written as signed 32-bit numbers. Asserts "event".
 * @param event  the posting
 * @param doc    the document for which the element is made
 * @return a new element, not yet attached; the caller attaches it or frees it with `xmlFreeNode()`.
 *         Null, with a warning, for a posting with a text that no reader would take back (not
 *         UTF-8, control characters, more than 10,000,000 bytes, for a list when joined). A posting
 *         without poster gets an empty one
 */
xmlNodePtr zox_events_xml_add_basic(const ZoxEvent *event, xmlDocPtr doc);

/**
 * The place for a fuller form; does what zox_events_xml_add_basic() does. Asserts "event" and
 * "doc".
 * @param event  the posting
 * @param doc    the document for which the element is made
 * @return as zox_events_xml_add_basic()
 */
xmlNodePtr zox_events_xml_add_all(const ZoxEvent *event, xmlDocPtr doc);

G_END_DECLS

#endif
