/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Postings of the loaded cache: selecting, sorting and printing them. */
#ifndef VELKORCTL_POSTINGS_H
#define VELKORCTL_POSTINGS_H

#include <memory>
#include <string>
#include <vector>

#include <velkor/zox_event.h>
#include <velkor/zox_filter.h>

#include "support/owned_records.h"
#include "velkorctl/record_printer.h"

namespace velkor::ctl {

/**
 * Applies `filter` to the cache; the IDs of the postings it accepts, ordered: the newest first
 * unless `order` says otherwise.
 */
std::vector<gint32> select_postings(const ZoxFilter &filter, const Order &order = {});

/** A copy of a cached posting, or null. */
OwnedEvent find_posting(gint32 id) noexcept;

/** A copy of a cached posting; throws a Failure when it is not in the cache. */
OwnedEvent cached_posting(gint32 id);

/** "Ready", "Spot" and so on; the number of a state that has no name. */
std::string status_name(const ZoxEvent &posting);
/** "Beeld/DivX" */
std::string category_name(const ZoxEvent &posting);

/** Tags and newsgroups as lists of objects, and the types of these. */
Value tag_values(gint32 category, const GSList *codes);
Type tags_type();
Value newsgroup_values(const GSList *ids);
Type newsgroups_type();

/** The fields that the cache has. The first one is the ID. */
Fields<ZoxEvent> posting_fields();
/** A list of postings. */
RecordInfo posting_records();

/** Prints cached postings as they stand; of one that is not in the cache the ID alone. */
void print_postings(const std::vector<gint32> &ids, const Context &context);
/** As print_postings(), but in the order and number that the options ask for. */
void print_postings_arranged(std::vector<gint32> ids, const Context &context);

}  // namespace velkor::ctl

#endif
