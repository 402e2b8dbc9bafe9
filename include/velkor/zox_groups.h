/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * @file
 * The newsgroups: names by the service's numbers, the cache file "velkor.groups.gz", and the set of
 * numbers that the filter test uses during one pass.
 *
 * Threads: one at a time, hand-over allowed, unless a function says otherwise.
 */
#ifndef VELKOR_ZOX_GROUPS_H
#define VELKOR_ZOX_GROUPS_H

#include <libxml/tree.h>

#include <velkor/zox_types.h>

G_BEGIN_DECLS

/** One newsgroup. */
typedef struct _ZoxGroup {
  guint32 id;           /**< the service's number */
  ZoxString *groupName; /**< full name, owned; null when the server's document gave none */
} ZoxGroup;

/** The numbers of the active set, owned by the library; null while there is none. */
extern gint32 *groupIds;
/** How many numbers `groupIds` holds; 0 while there is no set. */
extern gint32 groupIdLen;

/** @return `core->groups`, a list of ZoxGroup that stays the core's; null while unknown */
GSList *zox_groups_get(void);

/** @return whether newsgroups are known; if not, zox_group_fetch() gets them */
gboolean zox_group_list_ready(void);

/**
 * @param id  number of the newsgroup
 * @return the first newsgroup with that number, which stays the core's; null when unknown
 */
ZoxGroup *zox_group_by_id(guint32 id);

/**
 * Does not need the core. Threads: any.
 * @return a new record, zero-filled
 */
ZoxGroup *zox_group_new(void);

/**
 * Releases a newsgroup. Does not need the core. Asserts "group" and "group->groupName". Threads:
 * any, own data.
 * @param group  the newsgroup
 */
void zox_group_free(ZoxGroup *group);

/** Releases the table; `core->groups` becomes null. */
void zox_group_free_all(void);

/**
 * Reads a document of newsgroups: root "Groups", children "Group" with the attribute "ID" and a
 * child "Name"; letter case of the names does not count. Newsgroups that `core->groups` holds
 * already are left out. Asserts "buffer".
 * @param buffer  the document
 * @return a new list of ZoxGroup in the order of the document; null for an unusable document, which
 *         is reported on standard error
 */
GSList *zox_group_parse(const ZoxString *buffer);

/**
 * Reads the children of one "Group". Threads: any, own data.
 * @param doc         the document
 * @param firstChild  the first of the children, or null
 * @return a new newsgroup with number 0 and the last "Name"; without one its name is null
 */
ZoxGroup *zox_group_parse_group(xmlDocPtr doc, xmlNodePtr firstChild);

/**
 * Replaces the table by the cache file's; nothing changes when that is missing or empty. A file
 * that cannot be understood gives an empty table, and the next save makes a backup of it under a
 * name that ends in ".onleesbaar-" and the time.
 */
void zox_group_load(void);

/** @return the number of bytes written to the cache file as libxml2 counts them; -1 on failure */
gint32 zox_group_save(void);

/**
 * Replaces the table by the server's and saves it. Blocks. Asserts "uitvoer". Before an empty table
 * is saved over one with newsgroups, a backup of that file is made under a name that ends in
 * ".vorige-" and the time.
 * @return 0; 11 when the reply holds no newsgroup (the earlier table is then gone); a code of
 *         zox_http_curl_execute(), which leaves the table as it was
 */
ZoxErrorCode zox_group_fetch(void);

/**
 * Activates a set of newsgroup numbers. There is one set in the process. Does not need the core.
 * Asserts "groupIds == NULL", "grouplist" and "groupId" (no item is null).
 * @param grouplist  of ZoxString, numbers in decimal; not empty
 */
void zox_group_set_group_id_list(GSList *grouplist);

/** Releases the active set. Does not need the core. Asserts "groupIds". */
void zox_group_unset_group_id_list(void);

/**
 * Does not need the core. Asserts "groupIds".
 * @param id  number of a newsgroup
 * @return whether the active set holds it
 */
gboolean zox_group_id_is_in_list(guint32 id);

G_END_DECLS

#endif
