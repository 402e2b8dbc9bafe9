/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Postings that fuzz targets make of their inputs, put into the list and compare. */
#ifndef VELKOR_TESTS_FUZZ_POSTINGS_H
#define VELKOR_TESTS_FUZZ_POSTINGS_H

#include <map>

#include "support/owned_records.h"
#include "tests/fuzz/input.h"

namespace velkor::fuzz {

/**
 * A posting with details and a forum, each text what a document can hold: a reader has made the
 * postings of the list.
 */
OwnedEvent take_posting(Input &input);

/** Whether all fields are equal that documents of postings hold. */
bool same_posting(const ZoxEvent &left, const ZoxEvent &right) noexcept;

/**
 * Whether the display prints the posting as one whole element: no text ends its CDATA section, and
 * none is long enough to be cut.
 */
bool prints_whole(const ZoxEvent &posting);

/** Replaces the core's list by an empty one. */
void empty_list();

/** Replaces the core's list by one with the postings that the rest of the input holds. */
void fill_list(Input &input);

/** Applies a filter that accepts everything; the input says how it is to be shown. */
void apply_view(Input &input);

using Postings = std::map<gint32, OwnedEvent>;

/** Copies of the postings in the core's list. */
Postings listed_postings();

/** Whether both hold the same postings. */
bool same_postings(const Postings &left, const Postings &right);

}  // namespace velkor::fuzz

#endif
