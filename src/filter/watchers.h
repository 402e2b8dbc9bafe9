/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** All watchers at once, for whoever tests one posting after the other. */
#ifndef VELKOR_FILTER_WATCHERS_H
#define VELKOR_FILTER_WATCHERS_H

#include <optional>
#include <string>

#include <velkor/zox_event.h>

#include "filter/word_set.h"

namespace velkor {

/** The watchers of the settings as they are at the first test, for one merge. */
class Watchers {
public:
  /** What zox_watcher_test_event() answers. */
  [[nodiscard]] bool match(const ZoxEvent &event) noexcept;

private:
  std::optional<WordSet> words_;
};

/** The text of the first watcher that matches the posting; empty when none does. */
std::string first_watcher_of(const ZoxEvent &event) noexcept;

}  // namespace velkor

#endif
