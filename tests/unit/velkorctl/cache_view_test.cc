/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/cache_view.h"

#include <optional>

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

class CacheViewTest : public ::testing::Test {
protected:
  test::TemporaryDirectory cache;
};

TEST_F(CacheViewTest, ShowsTheFilesOfVelkor) {
  test::write_file(cache.path() / "velkor.conf", "username=ann\n");
  test::write_file(cache.path() / "other", "x");
  const CacheView view(cache.path());
  EXPECT_EQ(test::read_file(view.path() / "velkor.conf"), "username=ann\n");
  EXPECT_FALSE(fs::exists(view.path() / "other"));
}

TEST_F(CacheViewTest, WhatIsDeletedOrAddedThereDoesNotTouchTheCache) {
  test::write_file(cache.path() / "velkor.posts", "old");
  const CacheView view(cache.path());
  fs::remove(view.path() / "velkor.posts");
  test::write_file(view.path() / "velkor.filters", "new");
  EXPECT_EQ(test::read_file(cache.path() / "velkor.posts"), "old");
  EXPECT_FALSE(fs::exists(cache.path() / "velkor.filters"));
}

TEST_F(CacheViewTest, LeavesNothingBehind) {
  test::write_file(cache.path() / "velkor.conf", "x");
  std::optional<CacheView> view(std::in_place, cache.path());
  const fs::path path = view->path();
  EXPECT_TRUE(fs::is_directory(path));
  view.reset();
  EXPECT_FALSE(fs::exists(path));
  EXPECT_EQ(test::read_file(cache.path() / "velkor.conf"), "x");
}

TEST_F(CacheViewTest, AMissingCacheIsAnEmptyOne) {
  const CacheView view(cache.path() / "missing");
  EXPECT_TRUE(fs::is_empty(view.path()));
}

}  // namespace
}  // namespace velkor::ctl
