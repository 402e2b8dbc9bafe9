/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Death tests whose child restarts the program instead of only forking it. */
#ifndef VELKOR_TESTS_SUPPORT_FRESH_PROCESS_H
#define VELKOR_TESTS_SUPPORT_FRESH_PROCESS_H

#include <string>

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::test {

/**
 * During its lifetime the child of a death test is a fresh process: for code with state that lasts
 * as long as the process, and for fixtures with threads. Files that the child's fixture leaves
 * behind are in the sandbox of the parent.
 */
class FreshProcess {
public:
  explicit FreshProcess(const Sandbox &sandbox)
      : temporary_files_("TMPDIR", sandbox.home().string()) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
  }
  ~FreshProcess() { GTEST_FLAG_SET(death_test_style, earlier_style_); }
  FreshProcess(const FreshProcess &) = delete;
  FreshProcess &operator=(const FreshProcess &) = delete;

private:
  EnvironmentVariable temporary_files_;
  std::string earlier_style_ = GTEST_FLAG_GET(death_test_style);
};

}  // namespace velkor::test

#endif
