/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl show, forum and explain. */
#include <csignal>
#include <thread>

#include "tests/support/stub_server.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/** With a scripted server, since its texts are hostile. */
class VelkorctlShow : public VelkorctlTest {
protected:
  VelkorctlShow() {
    settings("username=ann\npassword=secret\n");
    cache_postings(event(7, "Alpha", "<Groups>|12|</Groups>") + event(8, "Beta"));
    server.reply("/3.7.3/xml-posts.php",
                 "<PostInfo><Post><Des>first\n\u009b2Jsecond</Des><Sig>sig</Sig><Files>3</Files>"
                 "</Post><MP3><Track>one</Track></MP3></PostInfo>");
    server.reply("/3.7.3/xml-dyn.php",
                 "<Forum><Event Code=\"1\"><MessID>55</MessID><Author>bob</Author>"
                 "<Body>nice\u202E one</Body><Stamp>1700000000</Stamp></Event>"
                 "<Event Code=\"0\"><Kudos>4</Kudos><Locked>1</Locked></Event></Forum>");
    server.reply("/3.7.3/xml-forum.php", "OK");
  }

  [[nodiscard]] Words command(const Words &words) const override {
    Words all = VelkorctlTest::command(
        {"--server", server.host(), "--lib-dir", ServerProcess::plugin_directory()});
    all.insert(all.end(), words.begin(), words.end());
    return all;
  }

  StubServer server;
};

TEST_F(VelkorctlShow, PrintsDetailsAndReactions) {
  EXPECT_EQ(output({"show", "7"}), "ID          7\n"
                                   "Date        2023-11-14 23:13\n"
                                   "Category    Beeld/DivX\n"
                                   "Status      Ready\n"
                                   "Title       Alpha\n"
                                   "Poster      ann\n"
                                   "Tags        DivX, Actie\n"
                                   "Newsgroups  12\n"
                                   "Files       3\n"
                                   "Kudos       4\n"
                                   "Tracks      one\n"
                                   "\nDescription:\nfirst\n\uFFFD2Jsecond\n"
                                   "\nSignature:\nsig\n"
                                   "\n#55  bob  2023-11-14 23:13\nnice\uFFFD one\n"
                                   "\n(closed for reactions)\n");
}

TEST_F(VelkorctlShow, PrintsJson) {
  const std::string json = output({"show", "7", "--format", "json"});
  EXPECT_THAT(json, HasSubstr(R"("description":"first\n\u009b2Jsecond")"));
  EXPECT_THAT(json, HasSubstr(R"("tracks":["one"])"));
  EXPECT_THAT(json, HasSubstr(R"("reactions":[{"id":55,"date":"2023-11-14T23:13:20+01:00",)"
                              R"("edited":null,"poster":"bob",)"));
  EXPECT_THAT(json, HasSubstr(R"({"schema":"velkorctl.show","version":1,"code":0,"message":"",)"
                              R"("item":{"id":7,)"));
  EXPECT_EQ(output({"show", "7", "--fields", "poster,kudos"}), "Poster  ann\nKudos   4\n");
}

TEST_F(VelkorctlShow, OfflineSendsNoRequest) {
  EXPECT_THAT(output({"show", "7", "--offline"}), HasSubstr("Title       Alpha\n"));
  EXPECT_THAT(output({"show", "7", "--offline", "--format", "json"}),
              HasSubstr(R"("reactions":null)"));
  EXPECT_EQ(run({"show", "9", "--offline"}).status, 7);
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(VelkorctlShow, LeavesTheCacheUnchanged) {
  const std::string before = read_file(cached("velkor.posts.gz"));
  ASSERT_EQ(run({"show", "7"}).status, 0);
  EXPECT_EQ(read_file(cached("velkor.posts.gz")), before);
  EXPECT_EQ(cached_names(), (std::set<std::string>{"velkor.conf", "velkor.posts.gz"}));
}

TEST_F(VelkorctlShow, KilledWhileItReadsItLeavesNothingBehind) {
  const TemporaryDirectory temporary;
  const std::set<std::string> before = cached_names();
  server.reply("/3.7.3/xml-posts.php",
               StubReply{.body = "half", .claim_length = 100, .stall = true});
  Words words{"env", "TMPDIR=" + temporary.path().string(),
              "XDG_RUNTIME_DIR=" + temporary.path().string()};
  for (const std::string &word : command({"show", "7"}))
    words.push_back(word);
  ChildProcess show(words);
  while (server.requests("/3.7.3/xml-posts.php").empty())
    std::this_thread::yield();
  show.send_signal(SIGKILL);
  EXPECT_EQ(show.finish().status, -SIGKILL);
  EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
  EXPECT_EQ(cached_names(), before);
}

TEST_F(VelkorctlShow, FetchesAPostingThatIsNotCached) {
  server.reply("/3.7.3/xml-findpost.php",
               "<Post><PostID>9</PostID><Title>Found</Title><Poster>eve</Poster></Post>");
  EXPECT_THAT(output({"show", "9"}), HasSubstr("Title   Found\n"));
}

TEST_F(VelkorctlShow, ReportsAPostingThatNoLongerExists) {
  server.reply("/3.7.3/xml-findpost.php", "");
  const ProcessResult outcome = run({"show", "9"});
  EXPECT_EQ(outcome.status, 7);
  EXPECT_EQ(outcome.err, "velkorctl: Gegevens van de opgevraagde ZOX posting zijn niet meer "
                         "beschikbaar op de ZOX server [the server does not have the posting any "
                         "more] (asking for the details, " +
                             server.host() + ")\n");
}

TEST_F(VelkorctlShow, ForumPrintsOnlyTheReactions) {
  EXPECT_EQ(output({"forum", "7"}), "\n#55  bob  2023-11-14 23:13\nnice\uFFFD one\n"
                                    "\n(closed for reactions)\n");
  EXPECT_THAT(server.requests("/3.7.3/xml-posts.php"), IsEmpty());
  EXPECT_THAT(output({"forum", "7", "--format", "json"}),
              HasSubstr(R"("posting":7,"locked":true,"items":[)"
                        "\n"
                        R"({"id":55,)"));
  EXPECT_EQ(output({"forum", "7", "--fields", "poster,body"}),
            "POSTER  BODY\nbob  nice\uFFFD one\n");
}

TEST_F(VelkorctlShow, AReactionMayLackItsTexts) {
  server.reply("/3.7.3/xml-dyn.php",
               "<Forum><Event Code=\"1\"><MessID>55</MessID><Stamp>1700000000</Stamp></Event>"
               "</Forum>");
  EXPECT_EQ(output({"forum", "7"}), "\n#55    2023-11-14 23:13\n\n");
  EXPECT_THAT(output({"show", "7"}), HasSubstr("\n#55    2023-11-14 23:13\n\n"));
  EXPECT_THAT(output({"forum", "7", "--format", "json"}), HasSubstr(R"("poster":null,)"));
}

TEST_F(VelkorctlShow, AReactionIsSentFromAFileOrStandardInput) {
  const ProcessResult outcome = run({"forum", "7", "--reply", "-"}, {.input = "thanks\nall\n\n"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "velkorctl: the reaction has been sent\n");
  write_file(sandbox.home() / "reply", "once more");
  EXPECT_EQ(run({"forum", "7", "--reply", sandbox.home() / "reply"}).status, 0);
  const auto requests = server.requests("/3.7.3/xml-forum.php");
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].parameter("b"), "thanks\r\nall");
  EXPECT_EQ(requests[1].parameter("b"), "once more");
}

TEST_F(VelkorctlShow, AnEmptyReactionIsNotSent) {
  EXPECT_EQ(run({"forum", "7", "--reply", "-"}).status, 2);
  EXPECT_EQ(run({"forum", "7", "--reply", "-"}, {.input = "\xff"}).status, 2);
  EXPECT_EQ(run({"forum", "7", "--reply", "/nonexistent"}).status, 2);
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(VelkorctlShow, ExplainsEachTestInOrder) {
  EXPECT_EQ(output({"explain", "7", "--filter", "Lossless", "--title", "alp", "--newsgroup", "5"}),
            "TEST  RESULT  WANTED  POSTING\n"
            "since  -\n"
            "category  FAIL  Geluid/Lossless  Beeld/DivX\n"
            "state  -\n"
            "newsgroup  FAIL  one of: 5  12\n"
            "title  pass  contains \"alp\"  \"Alpha\"\n"
            "poster  -\n"
            "date range  -\n"
            "tags  FAIL  one of each group: a4 Lossless  a0 DivX, d0 Actie\n"
            "free tag  -\n"
            "saved filter  pass  a saved filter in the posting's category  Beeld\n"
            "rejected by: category\n");
  EXPECT_THAT(output({"explain", "7", "--filter", "DivX"}), HasSubstr("\naccepted\n"));
}

TEST_F(VelkorctlShow, ACategoryWithoutASavedFilterIsRejected) {
  write_file(cached("velkor.filters"),
             "<Filters><Filter><filterNaam>x</filterNaam><cat>1</cat><sCat>-1</sCat></Filter>"
             "</Filters>");
  EXPECT_EQ(output({"list", "--no-header"}), "");
  const std::string json = output({"explain", "7", "--format", "json"});
  EXPECT_THAT(json, HasSubstr(R"("accepted":false,"rejectedBy":"saved filter","items":[)"));
  EXPECT_THAT(json, HasSubstr(R"({"test":"saved filter","result":"FAIL",)"
                              R"("wanted":"a saved filter in the posting's category",)"
                              R"("posting":"Beeld"})"));
  EXPECT_EQ(run({"explain", "99"}).status, 7);
}

TEST_F(VelkorctlShow, PrintsTheDisplayDocumentUnchanged) {
  const std::string document = output({"list", "--format", "xml", "--title", "beta"});
  EXPECT_THAT(document, HasSubstr("<Events>\n\t<SortMode>Stamp</SortMode>\n"));
  EXPECT_THAT(document, HasSubstr("\t\t<PostID>8</PostID>\n"));
  EXPECT_THAT(document, Not(HasSubstr("<PostID>7</PostID>")));
  EXPECT_THAT(output({"list", "--format", "xml", "--title", "beta", "--per-category"}),
              HasSubstr("\t<CatEvents catName=\"Beeld\">\n"));
}

/** The IDs in a document or a page, in order. */
std::string ids_in(const std::string &text, const std::string &mark) {
  std::string ids;
  for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1))
    ids += text[at + mark.size()];
  return ids;
}

TEST_F(VelkorctlShow, TheDisplayDocumentAndThePageAreSortedAndLimited) {
  cache_postings(event(7, "Alpha") + event(8, "Beta") + event(9, "Aardvark"));
  const std::vector<std::pair<Words, std::string>> cases{
      {{}, "987"},
      {{"--reverse"}, "789"},
      {{"--sort", "title"}, "978"},
      {{"--sort", "title", "--limit", "2"}, "97"},
      {{"--sort", "id", "--limit", "1"}, "7"}};
  for (const auto &[options, expected] : cases) {
    Words words{"list", "--format", "xml"};
    words.insert(words.end(), options.begin(), options.end());
    const std::string document = output(words);
    EXPECT_EQ(ids_in(document, "<PostID>"), expected);
    EXPECT_THAT(document, HasSubstr("<AantalEvents>" + std::to_string(expected.size()) + "<"));
    words[2] = "html";
    EXPECT_EQ(ids_in(output(words), "data-id=\""), expected);
    words.emplace_back("--per-category");
    EXPECT_EQ(ids_in(output(words), "data-id=\""), expected);
  }
  const std::string named = output({"list", "--format", "xml", "--sort", "title"});
  EXPECT_THAT(named, HasSubstr("<SortMode>Title</SortMode>\n\t<SortRichting>ascending<"));
  EXPECT_THAT(output({"list", "--format", "xml", "--sort", "id"}), Not(HasSubstr("<SortMode>")));
}

}  // namespace
}  // namespace velkor::test
