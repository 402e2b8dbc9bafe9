/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The tag condition of a filter. */
#ifndef VELKOR_FILTER_TAG_CONDITION_H
#define VELKOR_FILTER_TAG_CONDITION_H

#include <array>
#include <cstdint>

#include <glib.h>

namespace velkor {

/** Codes of one group are alternatives; every group that the filter names must be met. */
class TagCondition {
public:
  /** The codes stay the caller's. Allocates nothing. */
  explicit TagCondition(const GSList *codes) noexcept;

  /** Whether a posting with these tags meets it. */
  [[nodiscard]] bool met_by(const GSList *tags) const noexcept;

private:
  [[nodiscard]] unsigned group_met_by(const GString *tag) const noexcept;

  unsigned required_ = 0;                   // a bit for each group
  std::array<std::uint64_t, 4> numbers_{};  // by group, a bit for each code such as "a0" or "d23"
  const GSList *codes_;
  bool has_others_ = false;  // codes of a group that do not fit into the bits
};

}  // namespace velkor

#endif
