/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The postings that the next update removes from the cache because of their age. */
#ifndef VELKORCTL_AGEING_H
#define VELKORCTL_AGEING_H

#include <cstdint>
#include <ctime>
#include <string>

namespace velkor::ctl {

/**
 * How many postings the next update would remove if that empties a list of more than a few, apart
 * from the watchlist, which protects its postings; otherwise 0. There must be a core with the
 * postings.
 */
std::int64_t postings_of_an_emptied_list(std::time_t now);

/** What the setting verwijderPostsNaXDagen says, such as "14 days". */
std::string retention_in_words();

}  // namespace velkor::ctl

#endif
