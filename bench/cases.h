/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What velkor-bench measures, each case in a process of its own. */
#ifndef VELKOR_BENCH_CASES_H
#define VELKOR_BENCH_CASES_H

#include "bench/stock.h"

namespace velkor::bench {

/**
 * Each case prints the costs of its measurements, whose names are given here, and throws
 * std::runtime_error when something does not do what is measured.
 */

/** "load" of the stock's cache. */
void measure_load(const Place &place);
/** "save-unchanged": saving over the file that was loaded. */
void measure_unchanged(const Place &place);
/** "save": writing the whole list where there is no file. */
void measure_save(const Place &place);
/** "merge" of what an update brings, then "save-changes" over the file that was loaded. */
void measure_changes(const Place &place);
/** "word", "word-again": the first and the second filter pass over a list, by a word in the title.
 */
void measure_word_filter(const Place &place);
/** "tags", "tags-again": likewise by a tag. */
void measure_tag_filter(const Place &place);
/** "like-word", "like-tags": SQLite's LIKE over the titles and over the lists of tags. */
void measure_like(const Place &place);
/** "display" document of the whole list, and "copy" of that document. */
void measure_display(const Place &place);

/** Has the library make the stock's cache of the gzip file that is in its place. */
void prepare_stock(const Place &place);

}  // namespace velkor::bench

#endif
