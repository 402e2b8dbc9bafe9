/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The result of an update: made by it, and constant as soon as others see it. */
#ifndef VELKOR_OPERATIONS_UPDATE_RESULT_H
#define VELKOR_OPERATIONS_UPDATE_RESULT_H

#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <velkor/zox_update_result.h>

#include "store/merge_log.h"
#include "support/owned.h"

struct ZoxUpdateResult {
public:
  void ref() noexcept { ++references_; }
  void unref() noexcept;

  /** Notes what the clean-up at the start of an update removed. */
  void note_aged_out(std::vector<gint32> ids) noexcept;
  void note_merge(velkor::MergeLog log) noexcept;

  [[nodiscard]] const std::vector<gint32> &ids(ZoxUpdateGroup group) const noexcept;
  /** The watchers of the hits, in their order. */
  [[nodiscard]] const std::vector<std::string> &watchers() const noexcept { return watchers_; }

private:
  [[nodiscard]] std::vector<gint32> &group(ZoxUpdateGroup group) noexcept;

  static constexpr std::size_t group_count = ZOX_UPDATE_WATCHER_HIT + 1;
  std::atomic<int> references_ = 1;
  std::array<std::vector<gint32>, group_count> groups_;
  std::vector<std::string> watchers_;
};

namespace velkor {

using OwnedUpdateResult = std::unique_ptr<ZoxUpdateResult, ReleaseWith<zox_update_result_unref>>;

/** Has this thread's latest update be one that has changed nothing so far. */
ZoxUpdateResult &begin_update_result() noexcept;

}  // namespace velkor

#endif
