/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A filter made ready for a pass over many postings. */
#ifndef VELKOR_FILTER_PREPARED_FILTER_H
#define VELKOR_FILTER_PREPARED_FILTER_H

#include <unordered_set>
#include <vector>

#include <velkor/zox_filter.h>

#include "filter/tag_condition.h"
#include "filter/text_search.h"

namespace velkor {

/** Against what a filter's newsgroup condition is tested. */
enum class NewsgroupSource { active_set, own_list };

/**
 * Accepts what zox_filter_accepts() accepts with the newsgroup id set, or the filter's own list, as
 * it is now. The filter, the set and the category tree stay as they are meanwhile.
 */
class PreparedFilter {
public:
  explicit PreparedFilter(const ZoxFilter &filter,
                          NewsgroupSource source = NewsgroupSource::active_set) noexcept;

  [[nodiscard]] bool accepts(const ZoxEvent &event) const noexcept;

  /* The tests for first_failure(). */
  [[nodiscard]] bool newsgroups_pass(const ZoxEvent &event) const noexcept;
  [[nodiscard]] bool title_passes(const ZoxEvent &event) const noexcept;
  [[nodiscard]] bool poster_passes(const ZoxEvent &event) const noexcept;
  [[nodiscard]] bool tags_pass(const ZoxEvent &event) const noexcept;
  [[nodiscard]] bool category_is_kept(const ZoxEvent &event) const noexcept;

private:
  const ZoxFilter &filter_;
  const TextSearch title_;
  const TextSearch poster_;
  const TagCondition tags_;
  std::unordered_set<gint32> newsgroups_;
  std::vector<gint32> kept_;  // main categories, each once
};

}  // namespace velkor

#endif
