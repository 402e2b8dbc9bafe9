/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl cache. */
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class VelkorctlCache : public VelkorctlTest {
protected:
  VelkorctlCache() {
    cache_postings(event(1, "Alpha") + event(2, "Beta", "<Status>-1</Status>"));
    settings("username=ann\npassword=secret\nlastCheck=1700000000\n");
  }

  fs::path backup = sandbox.home() / "backup";
};

TEST_F(VelkorctlCache, InfoCountsThePostings) {
  const std::string info = output({"cache", "info"});
  EXPECT_THAT(info, HasSubstr("Postings     2\n"));
  EXPECT_THAT(info, HasSubstr("States       Ready 1, Spot 1\n"));
  EXPECT_THAT(info, HasSubstr("Last update  2023-11-14 23:13\n"));
  EXPECT_THAT(output({"cache", "info", "--format", "json"}),
              HasSubstr(R"("postings":2,"states":[{"status":"Ready","count":1},)"
                        R"({"status":"Spot","count":1}])"));
}

TEST_F(VelkorctlCache, VerifiesAnIntactCache) {
  EXPECT_EQ(output({"cache", "verify"}), "FILE  ENTRIES  RESULT\n"
                                         "velkor.conf  3  ok\n"
                                         "velkor.posts.gz  2  ok\n");
}

TEST_F(VelkorctlCache, FindsDamageUpToTheLastByte) {
  std::string bytes = read_file(cached("velkor.posts.gz"));
  bytes[bytes.size() - 6] = static_cast<char>(~bytes[bytes.size() - 6]);
  write_file(cached("velkor.posts.gz"), bytes);
  EXPECT_EQ(run({"cache", "verify"}).status, 6);
  EXPECT_THAT(run({"cache", "verify", "--format", "json"}).out,
              AllOf(HasSubstr(R"("code":6,)"), HasSubstr(R"("sound":false)")));
  cache_postings("<Event>");
  const ProcessResult outcome = run({"cache", "verify"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.out, HasSubstr("tag Events"));
  write_gzip(cached("velkor.posts.gz"), "<Other/>");
  EXPECT_THAT(run({"cache", "verify"}).out, HasSubstr("the root element is not Events"));
  fs::remove(cached("velkor.posts.gz"));
  settings("usrname=ann\n");
  EXPECT_THAT(run({"cache", "verify"}).out, HasSubstr("unknown setting usrname"));
}

TEST_F(VelkorctlCache, WhatTheLibraryCannotReadIsDamaged) {
  cache_postings(event(1, std::string(11'000'000, 'x')));
  EXPECT_NE(run({"list"}).status, 0);
  EXPECT_EQ(run({"cache", "verify"}).status, 6);
}

TEST_F(VelkorctlCache, APlainFileTakesThePlaceOfTheCompressedOne) {
  write_file(cached("velkor.posts"), "<Events>" + event(7, "Plain") + "</Events>");
  EXPECT_EQ(output({"cache", "verify"}),
            "FILE  ENTRIES  RESULT\n"
            "velkor.conf  3  ok\n"
            "velkor.posts  1  ok\n"
            "velkor.posts.gz  0  not used: velkor.posts is read in its place\n");
  EXPECT_EQ(read_file(cached("velkor.posts")), "<Events>" + event(7, "Plain") + "</Events>");
}

TEST_F(VelkorctlCache, ABackupIsRestored) {
  ASSERT_EQ(run({"cache", "backup", backup}).status, 0);
  EXPECT_EQ(fs::status(backup).permissions(), fs::perms::owner_all);
  const std::string postings = read_file(cached("velkor.posts.gz"));
  EXPECT_EQ(read_file(backup / "velkor.posts.gz"), postings);
  cache_postings(event(3, "Gamma"));
  settings("username=bob\n");
  const ProcessResult outcome = run({"cache", "restore", backup});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(read_file(cached("velkor.posts.gz")), postings);
  EXPECT_EQ(output({"config", "get", "username"}), "ann\n");
  EXPECT_THAT(cached_names(), Contains(StartsWith("before-restore-")));
  for (const std::string &name : cached_names())
    if (name.rfind("before-restore-", 0) == 0) {
      EXPECT_EQ(read_file(cached(name) / "velkor.conf"), "username=bob\n");
    }
}

TEST_F(VelkorctlCache, ABackupNeverOverwrites) {
  fs::create_directory(backup);
  const ProcessResult outcome = run({"cache", "backup", backup});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("cannot create"));
  EXPECT_TRUE(fs::is_empty(backup));
}

TEST_F(VelkorctlCache, ADamagedBackupIsNotRestored) {
  ASSERT_EQ(run({"cache", "backup", backup}).status, 0);
  write_file(backup / "velkor.posts.gz", "x");
  const std::string before = read_file(cached("velkor.posts.gz"));
  const ProcessResult outcome = run({"cache", "restore", backup});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("the backup is damaged"));
  EXPECT_EQ(read_file(cached("velkor.posts.gz")), before);
  EXPECT_THAT(cached_names(), Not(Contains(StartsWith("before-restore-"))));
}

TEST_F(VelkorctlCache, NothingToCopyIsReported) {
  EXPECT_EQ(run({"cache", "restore", sandbox.home() / "none"}).status, 7);
  fs::remove_all(sandbox.cache());
  EXPECT_EQ(run({"cache", "backup", backup}).status, 7);
  EXPECT_FALSE(fs::exists(backup));
}

TEST_F(VelkorctlCache, AFailedBackupLeavesNoPartialFile) {
  EXPECT_EQ(run({"cache", "backup", backup}, {.file_size_limit = 100}).status, 6);
  EXPECT_FALSE(fs::exists(backup / "velkor.posts.gz"));
}

TEST_F(VelkorctlCache, AnEmptyListIsNotDamage) {
  write_gzip(cached("velkor.posts.gz"), "<?xml version=\"1.0\"?>\n<Events/>\n");
  EXPECT_EQ(count_objects(output({"list", "--format", "json"})), 0U);
  EXPECT_EQ(run({"cache", "verify"}).status, 0);
}

class VelkorctlResync : public ServerVelkorctlTest {};

TEST_F(VelkorctlResync, RestoresLostPostings) {
  ASSERT_EQ(run({"update"}).status, 0);
  const std::string last = output({"config", "get", "lastCheck"});
  fs::remove(cached("velkor.posts.gz"));
  EXPECT_THAT(run({"update"}).err, HasSubstr("Geen nieuwe ZOX postings sinds laatste update"));
  const ProcessResult outcome = run({"cache", "resync"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.err, HasSubstr("50 postings received, 50 in the cache"));
  EXPECT_EQ(output({"config", "get", "prevCheck"}), last);
  EXPECT_EQ(output({"config", "get", "recursiveUpdate"}), "0\n");
}

TEST_F(VelkorctlResync, AFailureKeepsTheUpdateTimes) {
  ASSERT_EQ(run({"update"}).status, 0);
  const std::string last = output({"config", "get", "lastCheck"});
  server.fault("/3.7.3/xml.php", "database", 1);
  EXPECT_EQ(run({"cache", "resync"}).status, 1);
  EXPECT_EQ(output({"config", "get", "lastCheck"}), last);
}

}  // namespace
}  // namespace velkor::test
