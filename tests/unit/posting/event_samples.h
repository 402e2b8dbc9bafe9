/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Sample postings, as records and as documents. */
#ifndef VELKOR_TESTS_UNIT_POSTING_EVENT_SAMPLES_H
#define VELKOR_TESTS_UNIT_POSTING_EVENT_SAMPLES_H

#include <string>
#include <string_view>
#include <vector>

#include <velkor/zox_event.h>

#include "posting/event_record.h"
#include "support/owned.h"

namespace velkor::test {

/** A record whose every member is filled, forum included. */
OwnedEvent full_event(gint32 postId = 7);

/** A record as an ordinary dump brings it. */
OwnedEvent basic_event(gint32 postId, std::string_view title = "Een titel");

/** All members by name with their values, absent ones distinct from empty ones. */
std::string describe(const ZoxEvent &event);
/** The same for the members that the cache file keeps. */
std::string describe_basic(const ZoxEvent &event);

/** "<Event>...</Event>" around the children given. */
std::string event_element(std::string_view children);
/** The element of basic_event() with further children behind it. */
std::string posting_element(gint32 postId, std::string_view more = {});
/** A document of these elements. */
std::string document_of(const std::vector<std::string> &elements);

/** The text as a growable one. */
OwnedString zox(std::string_view text);

}  // namespace velkor::test

#endif
