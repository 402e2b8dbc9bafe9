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
  EXPECT_EQ(run({"watch", "add", "2", "99"}).err,
            "velkorctl: posting 99 is on the watchlist now, but not in the cache\n");
  EXPECT_EQ(output({"watch", "list", "--no-header"}),
            "2  2023-11-14 23:13  Beeld/DivX  Ready  Beta  ann\n"
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
  EXPECT_EQ(output({"watchers", "list", "--format", "ndjson"}),
            "{\"text\":\"ALPHA\"}\n{\"text\":\"none\"}\n");
  EXPECT_EQ(output({"watchers", "list", "--sort", "text", "--reverse"}), "none\nALPHA\n");
  EXPECT_EQ(output({"watchers", "run", "--no-header"}),
            "ALPHA  1  2023-11-14 23:13  Beeld/DivX  Ready  Alpha  ann\n");
  EXPECT_THAT(output({"watchers", "run", "--format", "json"}),
              HasSubstr(R"({"watcher":"ALPHA","id":1)"));
  EXPECT_THAT(output({"watchers", "run", "eta"}), HasSubstr("Beta"));
  EXPECT_EQ(output({"watchers", "remove", "none"}), "");
  EXPECT_EQ(output({"watchers", "list"}), "ALPHA\n");
}

TEST_F(VelkorctlWatch, BadWordsDropPostings) {
  EXPECT_EQ(output({"badwords", "add", "alph", "--yes"}), "");
  EXPECT_EQ(output({"badwords", "list"}), "alph\n");
  EXPECT_THAT(output({"list"}), Not(HasSubstr("Alpha")));
  EXPECT_EQ(output({"badwords", "test", "An ALPHABET"}), "alph\n");
  EXPECT_EQ(run({"badwords", "test", "Beta"}).status, 7);
  EXPECT_THAT(run({"badwords", "test", "Beta", "--format", "json"}).out, HasSubstr(R"("code":7,)"));
  EXPECT_EQ(output({"badwords", "remove", "alph"}), "");
  EXPECT_THAT(output({"list"}), HasSubstr("Alpha"));
}

TEST_F(VelkorctlWatch, ABadWordThatDropsPostingsNeedsConsent) {
  EXPECT_EQ(output({"badwords", "add", "alph", "none", "--dry-run"}),
            "1 cached posting has such a word in its title and would be dropped\n");
  EXPECT_EQ(output({"badwords", "add", "ALPH", "eta", "--dry-run"}),
            "2 cached postings have such a word in their title and would be dropped\n");
  const ProcessResult refused = run({"badwords", "add", "alph"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("1 cached posting has such a word in its title and would be "
                                     "dropped; nothing has been changed (use --yes"));
  EXPECT_EQ(output({"badwords", "list"}), "");
  EXPECT_EQ(output({"badwords", "add", "none"}), "");
  EXPECT_EQ(output({"badwords", "list"}), "none\n");
}

TEST_F(VelkorctlWatch, ATerminalIsAskedBeforePostingsAreDropped) {
  for (const auto &[answer, status] : {std::pair("n", 1), std::pair("", 1), std::pair("yes", 0)}) {
    ChildProcess asking(command({"badwords", "add", "alph"}), {.terminal_columns = 200});
    asking.wait_for("go on? [y/N] ");
    asking.write_line(answer);
    EXPECT_EQ(asking.finish().status, status) << answer;
  }
  EXPECT_EQ(output({"badwords", "list"}), "alph\n");
}

TEST_F(VelkorctlWatch, ALongWatchlistIsNotClearedInSilence) {
  settings("watchlist=1\nwatchlist=2\nwatchlist=3\nwatchlist=4\nwatchlist=5\nwatchlist=6\n"
           "watchlist=7\nwatchlist=8\nwatchlist=9\nwatchlist=10\nwatchlist=11\n");
  const std::string before = output({"config", "get", "watchlist"});
  const ProcessResult refused = run({"watch", "clear"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("all 11 postings would be taken off the watchlist"));
  EXPECT_EQ(output({"config", "get", "watchlist"}), before);
  EXPECT_EQ(output({"watch", "clear", "--yes"}), "");
  EXPECT_EQ(output({"config", "get", "watchlist"}), "");
}

}  // namespace
}  // namespace velkor::test
