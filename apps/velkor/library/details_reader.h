/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reads one posting with all that is known about it. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_DETAILS_READER_H
#define VELKOR_APP_LIBRARY_DETAILS_READER_H

#include <cstdint>
#include <optional>

#include <velkor/zox_event.h>

#include "model/posting_details.h"

namespace velkor::app {

/** The newsgroups are numbers in decimal. */
PostingDetails details_of(const ZoxEvent &posting);

/** Nothing when the list does not have the posting. */
std::optional<PostingDetails> read_details(std::int32_t id);

}  // namespace velkor::app

#endif
