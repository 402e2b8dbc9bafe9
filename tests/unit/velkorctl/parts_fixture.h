/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A core with default settings, tags, two newsgroups and a few saved filters. */
#ifndef VELKOR_TESTS_UNIT_VELKORCTL_PARTS_FIXTURE_H
#define VELKOR_TESTS_UNIT_VELKORCTL_PARTS_FIXTURE_H

#include <string>

#include <gtest/gtest.h>

#include <velkor/zox_filter.h>

#include "tests/support/sandbox.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {

class PartsTest : public ::testing::Test {
protected:
  PartsTest();
  ~PartsTest() override;
  PartsTest(const PartsTest &) = delete;
  PartsTest &operator=(const PartsTest &) = delete;

  test::Sandbox sandbox;
};

/** The words of the usage Failure that `action` throws; fails the test when it throws none. */
template <typename Action>
std::string usage_error_of(Action action) {
  try {
    action();
  } catch (const Failure &failure) {
    EXPECT_EQ(failure.exit(), Exit::usage);
    return failure.what();
  }
  ADD_FAILURE() << "accepted";
  return {};
}

}  // namespace velkor::ctl

#endif
