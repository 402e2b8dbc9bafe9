/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An update that brings everything, not only what is new. Threads: the core's. */
#ifndef VELKOR_APP_LIBRARY_FULL_UPDATE_H
#define VELKOR_APP_LIBRARY_FULL_UPDATE_H

#include <cstdint>

namespace velkor::app {

/** Has the settings ask for everything; end() gives back what they were. */
class FullUpdate {
public:
  FullUpdate();
  /** To be called at the end of the update, whatever came of it. */
  void end() const;

private:
  std::int64_t last_check_;
  std::int64_t previous_check_;
  std::int32_t recursive_;
};

}  // namespace velkor::app

#endif
