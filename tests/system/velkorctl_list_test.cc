/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The commands that read the cache: list, categories, groups, filters, tags. */
#include "tests/system/velkorctl_fixture.h"
#include "velkorctl/safe_text.h"

namespace velkor::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/** Three postings; the middle one is the newest. */
class VelkorctlList : public VelkorctlTest {
protected:
  VelkorctlList() {
    cache_postings(
        event(1, "Alpha DivX", "<Stamp>1700000000</Stamp><Rating>5</Rating><Groups>|7|</Groups>") +
        event(2, "beta", "<Stamp>1700200000</Stamp><Poster>Bob</Poster><Status>-1</Status>") +
        bare_event(3, "Gamma",
                   "<Status>0</Status><Poster>ann</Poster>"
                   "<Stamp>1700100000</Stamp><Cat>1</Cat><SCat>4</SCat><Tags>|a4|</Tags>"
                   "<Tag>HD x264</Tag><Rating>9</Rating>"));
  }

  /** The ids of a listing, in order. */
  [[nodiscard]] std::vector<std::string> ids(Words options) const {
    options.insert(options.begin(), {"list", "--no-header"});
    std::vector<std::string> result;
    for (const std::string &line : lines_of(output(options)))
      result.push_back(line.substr(0, line.find(' ')));
    return result;
  }
};

TEST_F(VelkorctlList, PrintsATableWithoutPaddingForAPipe) {
  EXPECT_EQ(output({"list"}), "ID  DATE  CATEGORY  STATUS  TITLE  POSTER\n"
                              "2  2023-11-17 06:46  Beeld/DivX  Spot  beta  Bob\n"
                              "3  2023-11-16 03:00  Geluid/Lossless  Ready  Gamma  ann\n"
                              "1  2023-11-14 23:13  Beeld/DivX  Ready  Alpha DivX  ann\n");
}

TEST_F(VelkorctlList, PrintsAnAlignedTableWithACountOnATerminal) {
  ChildProcess listing(command({"list"}), {.terminal_columns = 80});
  EXPECT_EQ(listing.finish().out,
            "ID  DATE              CATEGORY         STATUS  TITLE       POSTER\r\n"
            " 2  2023-11-17 06:46  Beeld/DivX       Spot    beta        Bob\r\n"
            " 3  2023-11-16 03:00  Geluid/Lossless  Ready   Gamma       ann\r\n"
            " 1  2023-11-14 23:13  Beeld/DivX       Ready   Alpha DivX  ann\r\n"
            "3 postings\r\n");
  ChildProcess one(command({"list", "--title", "beta"}), {.terminal_columns = 80});
  EXPECT_THAT(one.finish().out, HasSubstr("\r\n1 posting\r\n"));
}

TEST_F(VelkorctlList, PrintsJson) {
  EXPECT_EQ(output({"list", "--format", "json", "--title", "gamma"}),
            R"({"schema":"velkorctl.list","version":1,"code":0,"message":"","items":[)"
            "\n"
            R"({"id":3,"date":"2023-11-16T03:00:00+01:00","updated":null,)"
            R"("categoryPath":"Geluid/Lossless","category":"Geluid","categoryId":1,)"
            R"("subCategory":"Lossless","subCategoryId":4,"status":"Ready","statusId":0,)"
            R"("title":"Gamma","poster":"ann","tags":[{"code":"a4","group":"Formaat",)"
            R"("name":"Lossless"}],"freeTag":"HD x264","newsgroups":[],"fileName":null,)"
            R"("link":null,"rating":9,"new":true,"watched":false})"
            "\n]}\n");
}

TEST_F(VelkorctlList, PrintsAnObjectPerLineAndTabSeparatedValues) {
  const Words fields{"list", "--fields", "id,date,tags,new", "--title", "gamma"};
  Words ndjson = fields;
  ndjson.insert(ndjson.end(), {"--format", "ndjson"});
  EXPECT_EQ(output(ndjson), R"({"id":3,"date":"2023-11-16T03:00:00+01:00","tags":[{"code":"a4",)"
                            R"("group":"Formaat","name":"Lossless"}],"new":true})"
                            "\n");
  Words tsv = fields;
  tsv.insert(tsv.end(), {"--format", "tsv"});
  EXPECT_EQ(output(tsv), "id\tdate\ttags\tnew\n3\t2023-11-16T03:00:00+01:00\tLossless\ttrue\n");
}

TEST_F(VelkorctlList, ATabAndALineBreakInATextDoNotEndAValue) {
  cache_postings(event(1, "a\tb\nc\\d\u009be"));
  EXPECT_EQ(output({"list", "--format", "tsv", "--fields", "title,id", "--no-header"}),
            "a\\tb\\nc\\\\d\uFFFDe\t1\n");
}

TEST_F(VelkorctlList, PrintsTheFieldsAskedFor) {
  EXPECT_EQ(output({"list", "--fields", "title,rating", "--limit", "2"}),
            "TITLE  RATING\nbeta  0\nGamma  9\n");
  const ProcessResult wrong = run({"list", "--fields", "id,titel"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_THAT(wrong.err, HasSubstr("--fields: no field \"titel\"; did you mean title?"));
  EXPECT_THAT(wrong.err, HasSubstr("known are: id, date, "));
}

TEST_F(VelkorctlList, NoMatchGivesAnEmptyList) {
  EXPECT_EQ(output({"list", "--title", "nothing", "--no-header"}), "");
  EXPECT_EQ(output({"list", "--title", "nothing", "--format", "ndjson"}), "");
  EXPECT_EQ(output({"list", "--title", "nothing", "--format", "json"}),
            "{\"schema\":\"velkorctl.list\",\"version\":1,\"code\":0,\"message\":\"\","
            "\"items\":[]}\n");
}

TEST_F(VelkorctlList, EveryOptionNarrowsTheList) {
  EXPECT_THAT(ids({"--title", "DIVX"}), ElementsAre("1"));
  EXPECT_THAT(ids({"--poster", "bo"}), ElementsAre("2"));
  EXPECT_THAT(ids({"--category", "Geluid"}), ElementsAre("3"));
  EXPECT_THAT(ids({"--category", "0", "--sub-category", "DivX"}), ElementsAre("2", "1"));
  EXPECT_THAT(ids({"--tag", "Ondertitels/Geen"}), IsEmpty());
  EXPECT_THAT(ids({"--tag", "DivX", "--tag", "Genre/Actie", "--title", "beta"}), ElementsAre("2"));
  EXPECT_THAT(ids({"--free-tag", "hd"}), ElementsAre("3"));
  EXPECT_THAT(ids({"--newsgroup", "7"}), ElementsAre("1"));
  EXPECT_THAT(ids({"--status", "spot"}), ElementsAre("2"));
  EXPECT_THAT(ids({"--status", "-1", "--status", "0"}), ElementsAre("2", "3", "1"));
  EXPECT_THAT(ids({"--since", "@1700100000"}), ElementsAre("2", "3"));
  EXPECT_THAT(ids({"--from", "2023-11-16", "--to", "2023-11-16"}), ElementsAre("3"));
  EXPECT_THAT(ids({"--filter", "Lossless"}), ElementsAre("3"));
}

TEST_F(VelkorctlList, NewMeansSinceThePreviousUpdate) {
  settings("prevCheck=1700100000\n");
  EXPECT_THAT(ids({"--new"}), ElementsAre("2", "3"));
}

TEST_F(VelkorctlList, SortsAndLimits) {
  EXPECT_THAT(ids({}), ElementsAre("2", "3", "1"));
  EXPECT_THAT(ids({"--reverse"}), ElementsAre("1", "3", "2"));
  EXPECT_THAT(ids({"--sort", "date"}), ElementsAre("1", "3", "2"));
  EXPECT_THAT(ids({"--sort", "title"}), ElementsAre("1", "2", "3"));
  EXPECT_THAT(ids({"--sort", "rating", "--reverse"}), ElementsAre("3", "1", "2"));
  EXPECT_THAT(ids({"--sort", "poster"}), ElementsAre("1", "3", "2"));
  EXPECT_THAT(ids({"--sort", "tags"}), ElementsAre("1", "2", "3"));
  EXPECT_THAT(ids({"--sort", "title", "--reverse", "--limit", "1"}), ElementsAre("3"));
  EXPECT_THAT(ids({"--limit", "2"}), ElementsAre("2", "3"));
}

TEST_F(VelkorctlList, UnknownValuesAreUsageErrors) {
  for (const Words &words : std::vector<Words>{{"list", "--category", "Boeken"},
                                               {"list", "--tag", "onzin"},
                                               {"list", "--newsgroup", "a.b.geen"},
                                               {"list", "--status", "9"},
                                               {"list", "--since", "ooit"},
                                               {"list", "--filter", "geen"},
                                               {"list", "--limit", "0"},
                                               {"list", "--sort", "grootte"},
                                               {"tags", "--fields", ""},
                                               {"tags", "--limit", "0"},
                                               {"tags", "Boeken"},
                                               {"config", "get", "geen"}}) {
    const ProcessResult outcome = run(words);
    EXPECT_EQ(outcome.status, 2) << words.back();
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr("velkorctl: "));
  }
}

TEST_F(VelkorctlList, OnATerminalNoLineIsTooWide) {
  cache_postings(event(1, "日本語のとても長い題名です、端末より広い", "<Poster>x</Poster>"));
  ChildProcess listing(command({"list"}), {.terminal_columns = 60});
  const ProcessResult outcome = listing.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, HasSubstr("日本"));
  EXPECT_THAT(outcome.out, HasSubstr("…"));
  for (const std::string &line : lines_of(outcome.out))
    EXPECT_LE(ctl::display_width(line.substr(0, line.find('\r'))), 60) << line;
}

TEST_F(VelkorctlList, AHostileTitleCannotControlTheTerminal) {
  cache_postings(event(1, "x\u009b2J\u202Ey\nz"));
  const std::string table = output({"list", "--no-header"});
  EXPECT_THAT(table, HasSubstr("x\uFFFD2J\uFFFDy z"));
  EXPECT_EQ(lines_of(table).size(), 1U);
  EXPECT_THAT(output({"list", "--format", "json"}), HasSubstr(R"("x\u009b2J\u202ey\nz")"));
}

TEST_F(VelkorctlList, ReadingLeavesTheCacheDirectoryUnchanged) {
  std::filesystem::remove(cached("velkor.posts.gz"));
  write_file(cached("velkor.posts"),
             "<Events>" + event(7, "from an earlier version") + "</Events>");
  EXPECT_THAT(ids({}), ElementsAre("7"));
  EXPECT_THAT(ids({}), ElementsAre("7"));
  EXPECT_THAT(cached_names(), ElementsAre("velkor.posts"));
}

TEST_F(VelkorctlList, AMissingCacheIsEmptyAndIsNotCreated) {
  std::filesystem::remove_all(sandbox.cache());
  const ProcessResult outcome = run({"list", "--format", "json"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(count_objects(outcome.out), 0U);
  EXPECT_EQ(outcome.err, "{\"schema\":\"velkorctl.notice\",\"version\":1,\"message\":"
                         "\"no postings are cached yet; see velkorctl update\"}\n");
  EXPECT_FALSE(std::filesystem::exists(sandbox.cache()));
}

TEST_F(VelkorctlList, AnUnreadableCacheIsNotAnEmptyList) {
  write_gzip(cached("velkor.posts.gz"), "<Events><Event></Events>");
  const ProcessResult outcome = run({"list"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_EQ(outcome.out, "");
  EXPECT_THAT(outcome.err, HasSubstr("cannot read " + cached("velkor.posts.gz").string()));
}

TEST_F(VelkorctlList, CategoriesCountTheCachedPostings) {
  settings("prevCheck=1800000000\n");
  const std::string all = output({"categories"});
  EXPECT_THAT(all, HasSubstr("CATEGORY"));
  EXPECT_THAT(lines_of(all), Contains("Beeld    2"));
  EXPECT_THAT(lines_of(all), Contains("Beeld  DivX  2"));
  EXPECT_THAT(lines_of(all), Contains("Geluid  Lossless  1"));
  EXPECT_THAT(lines_of(all), Contains("Spelletjes  Windows  0"));
  EXPECT_THAT(lines_of(output({"categories", "--title", "beta"})), Contains("Beeld    1"));
  EXPECT_EQ(count_objects(output({"categories", "--format", "json"})), 20U);
}

TEST_F(VelkorctlList, FiltersAreTheDefaultsWhenNoneAreSaved) {
  const std::vector<std::string> lines = lines_of(output({"filters", "--no-header"}));
  ASSERT_EQ(lines.size(), 16U);
  EXPECT_THAT(lines[8], HasSubstr("9  Lossless"));
  EXPECT_THAT(cached_names(), Not(Contains("velkor.filters")));
}

TEST_F(VelkorctlList, SavedFiltersAreListedInOrder) {
  write_file(cached("velkor.filters"),
             "<Filters><Filter><filterNaam>Mijn</filterNaam><cat>0</cat><sCat>-1</sCat>"
             "<extra_tag>HD</extra_tag><tag>a0</tag></Filter></Filters>");
  EXPECT_EQ(output({"filters", "--format", "json"}),
            R"({"schema":"velkorctl.filters.list","version":1,"code":0,"message":"","items":[)"
            "\n"
            R"({"number":1,"name":"Mijn","category":"Beeld","categoryId":0,"subCategory":null,)"
            R"("subCategoryId":-1,"freeTag":"HD","tags":[{"code":"a0","group":"Formaat",)"
            R"("name":"DivX"}]})"
            "\n]}\n");
}

TEST_F(VelkorctlList, TagsOfOneCategory) {
  EXPECT_EQ(count_objects(output({"tags", "--format", "json"})), 144U);
  const std::vector<std::string> lines = lines_of(output({"tags", "applicaties"}));
  EXPECT_EQ(lines.size(), 33U);
  EXPECT_EQ(lines[1], "Applicaties  a0  Platform  Windows");
}

class VelkorctlGroups : public ServerVelkorctlTest {};

TEST_F(VelkorctlGroups, FetchesAndKeepsTheNewsgroups) {
  EXPECT_EQ(count_objects(output({"groups", "--format", "json"})), 0U);
  const std::size_t count = count_objects(output({"groups", "--fetch", "--format", "json"}));
  EXPECT_GT(count, 0U);
  EXPECT_EQ(count_objects(output({"groups", "--format", "json"})), count);
}

TEST_F(VelkorctlGroups, AFailedFetchKeepsTheOldOnes) {
  const std::string before = output({"groups", "--fetch"});
  server.fault("/3.7.3/xml-groups.php", "database", 1);
  const ProcessResult outcome = run({"groups", "--fetch"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "velkorctl: Database-storing op de ZOX server [the database of the server "
                         "has failed] (fetching the newsgroups, " +
                             server.host() + ")\n");
  EXPECT_EQ(output({"groups"}), before);
}

TEST_F(VelkorctlGroups, NewsgroupsThatCannotBeSavedAreTold) {
  std::filesystem::create_directory(cached("velkor.groups.gz"));
  const ProcessResult outcome = run({"groups", "--fetch"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("the newsgroups could not be saved: cannot write " +
                                     cached("velkor.groups.gz").string()));
}

class VelkorctlOutput : public VelkorctlList {};

TEST_F(VelkorctlOutput, AFullDiskForStandardOutputIsAFailure) {
  const ProcessResult outcome = run({"list"}, {.output_file = "/dev/full"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("cannot write to standard output"));
}

TEST_F(VelkorctlOutput, AClosedPipeEndsTheCommandQuietly) {
  std::string events;
  for (int id = 1; id <= 5000; ++id)
    events += event(id, "a title of some length to fill the pipe");
  cache_postings(events);
  const ProcessResult outcome =
      run_program({"bash", "-c", "set -o pipefail; " + command({}).front() + " list | head -n 1"});
  EXPECT_EQ(outcome.status, 141);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(lines_of(outcome.out).size(), 1U);
}

TEST_F(VelkorctlOutput, HelpAndVersionArePrinted) {
  EXPECT_THAT(output({"--help"}), HasSubstr("update"));
  EXPECT_THAT(output({"config", "set", "--help"}), HasSubstr("--stdin"));
  EXPECT_THAT(output({"--version"}), HasSubstr("velkorctl "));
}

}  // namespace
}  // namespace velkor::test
