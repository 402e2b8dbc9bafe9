/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The user's bad words, which keep postings out of the list. */
#ifndef VELKOR_FILTER_BAD_WORDS_H
#define VELKOR_FILTER_BAD_WORDS_H

#include <optional>

#include <velkor/zox_app_core.h>
#include <velkor/zox_event.h>

#include "filter/word_set.h"
#include "support/text.h"

namespace velkor {

/** The bad words of the settings as they are at the first test, for one document. */
class BadWords {
public:
  /** Whether the title holds one of them, without regard to case. */
  [[nodiscard]] bool occur_in_title(const ZoxEvent &event) noexcept {
    if (!words_)
      words_.emplace(core->config->badword);
    return event.title != nullptr && words_->occurs_in(view_of(event.title));
  }

  /** Whether the words tested so far end at one that is null. */
  [[nodiscard]] bool cut_short() const noexcept { return words_ && words_->cut_short(); }

private:
  std::optional<WordSet> words_;
};

}  // namespace velkor

#endif
