/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The readings of XML content that all readers share.
 *
 * None of these functions needs the core. Threads: any, own data.
 */
#ifndef VELKOR_ZOX_XML_PARSE_H
#define VELKOR_ZOX_XML_PARSE_H

#include <libxml/tree.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/**
 * Reads the content of an element as a number.
 * @param doc   the document of `node`
 * @param node  the element
 * @return the decimal number at the start of its text (leading space and a sign allowed), cut to
 *         its low 32 bits; 0 without text
 */
gint32 zox_xml_parse_int(xmlDocPtr doc, xmlNodePtr node);

/**
 * Reads the content of an element as a text: text and CDATA joined, entities replaced.
 * @param doc   the document of `node`
 * @param node  the element
 * @return a new text; null for an element without text
 */
ZoxString *zox_xml_parse_string(xmlDocPtr doc, xmlNodePtr node);

/**
 * Reads an attribute as a number. Asserts "attrName".
 * @param doc       the document of `node`
 * @param node      the element
 * @param attrName  the attribute's exact name
 * @return as zox_xml_parse_int(); 0 without the attribute
 */
gint32 zox_xml_parse_int_attr(xmlDocPtr doc, xmlNodePtr node, const char *attrName);

G_END_DECLS

#endif
