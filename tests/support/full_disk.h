/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Simulates a full disk: no file of this process may grow beyond a limit. */
#ifndef VELKOR_TESTS_SUPPORT_FULL_DISK_H
#define VELKOR_TESTS_SUPPORT_FULL_DISK_H

#include <csignal>

#include <sys/resource.h>

namespace velkor::test {

/** Lasts until the process ends: for the child of a death test only. */
inline void fill_disk(rlim_t bytes_left) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes_left, bytes_left};
  setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace velkor::test

#endif
