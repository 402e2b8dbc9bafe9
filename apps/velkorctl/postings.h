/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Postings of the loaded cache: choosing, ordering and showing them. */
#ifndef VELKORCTL_POSTINGS_H
#define VELKORCTL_POSTINGS_H

#include <memory>
#include <string>
#include <vector>

#include <velkor/zox_event.h>
#include <velkor/zox_filter.h>

#include "support/owned.h"
#include "velkorctl/json.h"
#include "velkorctl/table.h"

namespace velkor::ctl {

using OwnedEvent = std::unique_ptr<ZoxEvent, ReleaseWith<zox_event_free>>;

/** Applies `filter` to the cache; the ids of what it accepts, in the filter's order. */
std::vector<gint32> select_postings(const ZoxFilter &filter);

/** A copy of a cached posting, or null. */
OwnedEvent find_posting(gint32 id) noexcept;

/** Ready, Spot, ...; the number for a state without a word. */
std::string status_words(const ZoxEvent &posting);
/** Beeld/DivX */
std::string category_words(const ZoxEvent &posting);

std::vector<Column> posting_columns();
std::vector<std::string> posting_row(const ZoxEvent &posting);

/** Adds the members of the basic fields of a posting to the object begun in `json`. */
void add_posting(Json &json, const ZoxEvent &posting);

}  // namespace velkor::ctl

#endif
