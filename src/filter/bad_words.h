/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The user's bad words, which keep postings out of the list. */
#ifndef VELKOR_FILTER_BAD_WORDS_H
#define VELKOR_FILTER_BAD_WORDS_H

#include <velkor/zox_event.h>

namespace velkor {

/** Whether the title holds one of the bad words of the settings, without regard to case. */
bool has_bad_word(const ZoxEvent &event) noexcept;

}  // namespace velkor

#endif
