/* SPDX-License-Identifier: LGPL-2.1-or-later */
#ifndef VELKOR_ZOX_EVENTS_PARSE_H
#define VELKOR_ZOX_EVENTS_PARSE_H

#include <libxml/tree.h>

#include <velkor/zox_event.h>
#include <velkor/zox_types.h>

G_BEGIN_DECLS

ZoxErrorCode zox_events_parse(const ZoxString *buffer, GHashTable **retTree,
                              GSList **retList, char **retError, gint32 quiet);
ZoxEvent    *zox_events_parse_event(xmlDocPtr doc, xmlNodePtr firstChild);
GSList      *zox_events_parse_mp3_tracks(xmlDocPtr doc, xmlNodePtr firstChild);
ZoxErrorCode zox_events_list_parse(const ZoxString *buffer, gint64 *retStamp,
                                   GSList **retChunks, char **retError);

G_END_DECLS

#endif
