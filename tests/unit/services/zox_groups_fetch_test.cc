/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_groups.h>

#include <map>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "tests/support/layer_fixtures.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char *path = "/3.7.3/xml-groups.php";

class ZoxGroupsFetch : public test::LibraryServerTest {
protected:
  ZoxGroupsFetch() {
    ZoxGroup *group = zox_group_new();
    group->id = 1;
    group->groupName = zox_string_new("oud");
    core->groups = g_slist_prepend(nullptr, group);
  }

  [[nodiscard]] bool has_old_table() const { return zox_group_by_id(1) != nullptr; }
  [[nodiscard]] std::string saved() const {
    return test::read_gzip(cache_file("velkor.groups.gz"));
  }
  /** Fetches with standard error captured into `said`. */
  ZoxErrorCode fetch() {
    testing::internal::CaptureStderr();
    const ZoxErrorCode result = zox_group_fetch();
    said = testing::internal::GetCapturedStderr();
    return result;
  }

  /** The tables kept beside the cache file. */
  [[nodiscard]] std::vector<std::string> kept() const {
    std::vector<std::string> tables;
    for (const auto &entry : std::filesystem::directory_iterator(sandbox.cache())) {
      if (entry.path().filename().string().starts_with("velkor.groups.gz.vorige-"))
        tables.push_back(test::read_gzip(entry.path()));
    }
    return tables;
  }

  std::string said;
};

TEST_F(ZoxGroupsFetch, ReplacesTheTableAndSavesIt) {
  server.reply(path, "<Groups><Group ID=\"7\"><Name>alt.binaries.a</Name></Group>"
                     "<Group ID=\"8\"><Name>alt.binaries.b</Name></Group></Groups>");
  EXPECT_EQ(fetch(), 0U);
  EXPECT_FALSE(has_old_table());
  ASSERT_EQ(g_slist_length(core->groups), 2U);
  EXPECT_STREQ(zox_group_by_id(8)->groupName->str, "alt.binaries.b");
  EXPECT_NE(saved().find("<Name>alt.binaries.b</Name>"), std::string::npos);
}

TEST_F(ZoxGroupsFetch, AsksForOnePathWithoutParameters) {
  server.reply(path, "<Groups/>");
  fetch();
  ASSERT_THAT(server.requests(), SizeIs(1));
  EXPECT_EQ(server.requests().front().target, path);
  EXPECT_THAT(server.requests().front().parameters, IsEmpty());
}

TEST_F(ZoxGroupsFetch, SendsTheUsersCredentials) {
  core->config->password = zox_string_new("wachtwoord");
  server.reply(path, "<Groups/>");
  fetch();
  ASSERT_THAT(server.requests(), SizeIs(1));
  EXPECT_TRUE(server.requests().front().headers.contains("authorization"));
}

TEST_F(ZoxGroupsFetch, IdsOfTheReplyMayRepeatAndMayBeKnown) {
  server.reply(path, "<Groups><Group ID=\"1\"><Name>x</Name></Group><Group ID=\"1\"/></Groups>");
  EXPECT_EQ(fetch(), 0U);
  EXPECT_EQ(g_slist_length(core->groups), 2U);
  EXPECT_STREQ(zox_group_by_id(1)->groupName->str, "x");
}

TEST_F(ZoxGroupsFetch, DocumentWithoutGroupsGivesAnEmptyTable) {
  server.reply(path, "<Groups/>");
  EXPECT_EQ(fetch(), 11U);
  EXPECT_EQ(core->groups, nullptr);
  EXPECT_EQ(said, "");
  EXPECT_EQ(saved(), "<?xml version=\"1.0\"?>\n<Groups/>\n");
}

TEST_F(ZoxGroupsFetch, ReplyThatIsNoDocumentGivesAnEmptyTable) {
  server.reply(path, "<html><body>Storing</body></html>");
  EXPECT_EQ(fetch(), 11U);
  EXPECT_EQ(core->groups, nullptr);
  EXPECT_EQ(said, "zox_group_parse(): document of the wrong type, root node != Groups");
}

TEST_F(ZoxGroupsFetch, EmptyTableDoesNotCostTheSavedOne) {
  for (const char *reply : {"<html/>", "<Groups/>", "geen document"}) {
    SCOPED_TRACE(reply);
    server.reply(path, "<Groups><Group ID=\"7\"><Name>alt.binaries.a</Name></Group></Groups>");
    ASSERT_EQ(fetch(), 0U);
    const std::string good = saved();
    const std::size_t earlier = kept().size();
    server.reply(path, reply);
    const test::LogCapture log;
    EXPECT_EQ(fetch(), 11U);
    EXPECT_EQ(saved(), "<?xml version=\"1.0\"?>\n<Groups/>\n");
    EXPECT_EQ(fetch(), 11U);
    EXPECT_THAT(log.warnings(), ElementsAre(HasSubstr("velkor.groups.gz.vorige-")));
    ASSERT_THAT(kept(), SizeIs(earlier + 1));
    EXPECT_THAT(kept(), Each(good));
  }
}

TEST_F(ZoxGroupsFetch, StatusWordsKeepTheTable) {
  const std::map<std::string, ZoxErrorCode> results{
      {"UNAUTH", 2}, {"BAN", 3}, {"UPD", 27}, {"MSGonderhoud", 29}, {"", 13}};
  for (const auto &[reply, result] : results) {
    server.reply(path, reply);
    EXPECT_EQ(fetch(), result) << reply;
    EXPECT_TRUE(has_old_table()) << reply;
  }
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.groups.gz")));
}

TEST_F(ZoxGroupsFetch, TransferThatFailsKeepsTheTable) {
  zox_http_set_hosts("127.0.0.1:1", nullptr);
  EXPECT_EQ(fetch(), 16U);
  EXPECT_TRUE(has_old_table());
  zox_http_set_hosts(server.host().c_str(), nullptr);
  server.reply(path, test::StubReply{.body = "<Groups><Group ID=\"7\"/></Groups>", .send_only = 9});
  EXPECT_NE(fetch(), 0U);
  EXPECT_TRUE(has_old_table());
}

TEST(ZoxGroupsFetchWithoutCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_group_fetch(), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
