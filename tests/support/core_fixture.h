/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A core of default settings in a fresh home, without start-up. */
#ifndef VELKOR_TESTS_SUPPORT_CORE_FIXTURE_H
#define VELKOR_TESTS_SUPPORT_CORE_FIXTURE_H

#include <filesystem>
#include <string_view>

#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>

#include "tests/support/sandbox.h"

namespace velkor::test {

/**
 * The library's directories lie in the sandbox, but for the library directory: that is where the
 * test plug-in lies. Settings, filters and postings that a case puts into the core are freed at its
 * end; layer_fixtures.h frees the rest.
 */
class CoreTest : public ::testing::Test {
protected:
  CoreTest();
  ~CoreTest() override;
  CoreTest(const CoreTest &) = delete;
  CoreTest &operator=(const CoreTest &) = delete;

  /** Makes the core one for reading only, with all that is in it. */
  static void read_only_from_now_on();

  [[nodiscard]] std::filesystem::path cache_file(std::string_view name) const;

  Sandbox sandbox;
};

}  // namespace velkor::test

#endif
