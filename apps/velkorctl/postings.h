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
#include "velkorctl/formats.h"

namespace velkor::ctl {

/** Applies `filter` to the cache; the IDs of the postings it accepts, sorted as it asks for. */
std::vector<gint32> select_postings(const ZoxFilter &filter);

/** A copy of a cached posting, or null. */
OwnedEvent find_posting(gint32 id) noexcept;

/** A copy of a cached posting; throws a Failure when it is not in the cache. */
OwnedEvent cached_posting(gint32 id);

/** "Ready", "Spot" and so on; the number of a state that has no name. */
std::string status_name(const ZoxEvent &posting);
/** "Beeld/DivX" */
std::string category_name(const ZoxEvent &posting);

std::vector<Column> posting_columns();
std::vector<std::string> posting_row(const ZoxEvent &posting);

/** Adds the members for the fields that the cache has to the object begun in `json`. */
void add_posting(Json &json, const ZoxEvent &posting);

/** Prints cached postings as a table or JSON; of one that is not in the cache the ID alone. */
void print_postings(const std::vector<gint32> &ids, const Context &context);

}  // namespace velkor::ctl

#endif
