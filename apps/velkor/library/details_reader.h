/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reads one posting with all that is known about it. Threads: any. */
#ifndef VELKOR_APP_LIBRARY_DETAILS_READER_H
#define VELKOR_APP_LIBRARY_DETAILS_READER_H

#include <cstdint>
#include <optional>

#include "model/posting_details.h"

namespace velkor::app {

/** Nothing when the list does not have the posting. The newsgroups are numbers in decimal. */
std::optional<PostingDetails> read_details(std::int32_t id);

}  // namespace velkor::app

#endif
