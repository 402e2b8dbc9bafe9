/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl watch, watchers and badwords. */
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class VelkorctlWatch : public VelkorctlTest {
protected:
  VelkorctlWatch() { cache_postings(event(1, "Alpha") + event(2, "Beta")); }
};

TEST_F(VelkorctlWatch, AddsListsAndRemoves) {
  EXPECT_EQ(output({"watch", "add", "2", "99"}), "");
  EXPECT_EQ(output({"watch", "list", "--no-header"}),
            " 2  2023-11-14 23:13  Beeld/DivX  Ready  Beta  ann\n"
            "99\n");
  const std::string json = output({"watch", "list", "--format", "json"});
  EXPECT_EQ(count_objects(json), 2U);
  EXPECT_THAT(json, HasSubstr(R"("watched":true)"));
  EXPECT_EQ(output({"watch", "remove", "99"}), "");
  EXPECT_EQ(output({"config", "get", "watchlist"}), "2\n");
  EXPECT_EQ(output({"watch", "clear"}), "");
  EXPECT_EQ(output({"config", "get", "watchlist"}), "");
}

TEST_F(VelkorctlWatch, AddingTwiceIsReportedAndHarmless) {
  EXPECT_EQ(output({"watch", "add", "2"}), "");
  const ProcessResult again = run({"watch", "add", "2"});
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.err, "velkorctl: posting 2 is already on the watchlist\n");
  EXPECT_EQ(output({"config", "get", "watchlist"}), "2\n");
}

TEST_F(VelkorctlWatch, AMissingIdCannotBeRemoved) {
  EXPECT_EQ(run({"watch", "remove", "2"}).status, 7);
  EXPECT_EQ(run({"watchers", "remove", "x"}).status, 7);
}

TEST_F(VelkorctlWatch, ChecksIds) {
  for (const char *id : {"0", "-5", "x", "2147483648"})
    EXPECT_EQ(run({"watch", "add", "--", id}).status, 2) << id;
}

TEST_F(VelkorctlWatch, WatchersMatchTitles) {
  EXPECT_EQ(output({"watchers", "add", "ALPHA", "none"}), "");
  EXPECT_EQ(run({"watchers", "add", "none"}).err, "velkorctl: \"none\" is already in the list\n");
  EXPECT_EQ(output({"watchers", "list"}), "ALPHA\nnone\n");
  EXPECT_EQ(output({"watchers", "list", "--format", "json"}), "[\"ALPHA\",\"none\"]\n");
  EXPECT_EQ(output({"watchers", "run", "--no-header"}),
            "ALPHA  1  2023-11-14 23:13  Beeld/DivX  Ready  Alpha  ann\n");
  EXPECT_THAT(output({"watchers", "run", "--format", "json"}),
              HasSubstr(R"({"watcher":"ALPHA","id":1)"));
  EXPECT_THAT(output({"watchers", "run", "eta"}), HasSubstr("Beta"));
  EXPECT_EQ(output({"watchers", "remove", "none"}), "");
  EXPECT_EQ(output({"watchers", "list"}), "ALPHA\n");
}

TEST_F(VelkorctlWatch, BadWordsDropPostings) {
  EXPECT_EQ(output({"badwords", "add", "alph"}), "");
  EXPECT_EQ(output({"badwords", "list"}), "alph\n");
  EXPECT_THAT(output({"list"}), Not(HasSubstr("Alpha")));
  EXPECT_EQ(output({"badwords", "test", "An ALPHABET"}), "alph\n");
  EXPECT_EQ(run({"badwords", "test", "Beta"}).status, 7);
  EXPECT_EQ(output({"badwords", "remove", "alph"}), "");
  EXPECT_THAT(output({"list"}), HasSubstr("Alpha"));
}

}  // namespace
}  // namespace velkor::test
