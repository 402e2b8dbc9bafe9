/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* What velkorctl says about a request that fails. */
#include "tests/support/certificates.h"
#include "tests/support/stub_server.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char *kudos = "/3.7.3/xml-kudos.php";

class VelkorctlFailure : public VelkorctlTest {
protected:
  VelkorctlFailure() { settings("username=ann\npassword=secret\n"); }

  [[nodiscard]] Words command(const Words &words) const override {
    Words all = VelkorctlTest::command({"--server", server.host(), "--static-server", server.host(),
                                        "--lib-dir", ServerProcess::plugin_directory()});
    all.insert(all.end(), words.begin(), words.end());
    return all;
  }

  StubServer server;
};

TEST_F(VelkorctlFailure, AClosedConnectionIsNamed) {
  server.reply(kudos, StubReply{.close_at_once = true});
  const ProcessResult outcome = run({"kudos", "7"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "velkorctl: Onbekende fout opgetreden [an unknown error] (asking for the kudos, " +
                server.host() + ": Empty reply from server)\n");
}

TEST_F(VelkorctlFailure, TheEnglishSentenceIsNeitherForDutchSessionsNorForScripts) {
  server.reply(kudos, StubReply{.close_at_once = true});
  const std::string end = " (asking for the kudos, " + server.host() + ": Empty reply from server)";
  for (const char *language : {"nl_NL.UTF-8", "nl", "nl_BE@euro"})
    EXPECT_EQ(run({"kudos", "7"}, {.environment = {{"LC_ALL", language}}}).err,
              "velkorctl: Onbekende fout opgetreden" + end + "\n");
  EXPECT_THAT(run({"kudos", "7"}, {.environment = {{"LC_ALL", "nlx"}}}).err,
              HasSubstr("[an unknown error]"));
  EXPECT_THAT(run({"kudos", "7", "--format", "json"}).err,
              HasSubstr("\"message\":\"Onbekende fout opgetreden" + end + "\""));
}

TEST_F(VelkorctlFailure, AShortBodyIsNamedWithTheDump) {
  server.reply("/3.7.3/xml.php", R"(<Events><Event Code="0"><Stamp>1700000000</Stamp></Event>)"
                                 R"(<Event Code="7"><Chunks>one</Chunks></Event></Events>)");
  server.reply("/3.7.3/dumps/one.gz", StubReply{.body = "half", .claim_length = 100});
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("(fetching dump 1 of 1, " + server.host() + ": transfer"));
}

TEST_F(VelkorctlFailure, ATraceShowsEachRequestWithoutSecrets) {
  server.reply(kudos, "4*1");
  const ProcessResult outcome = run({"--trace", "kudos", "7"});
  EXPECT_EQ(outcome.out, "4 1\n");
  EXPECT_THAT(outcome.err, HasSubstr("velkorctl: trace: zox_http_curl_execute(): " + server.host() +
                                     kudos + ": code 0, HTTP status 200, 3 bytes, "));
  EXPECT_THAT(outcome.err, AllOf(Not(HasSubstr("secret")), Not(HasSubstr("mode=get"))));
  EXPECT_EQ(output({"kudos", "7"}), "4 1\n");
}

TEST_F(VelkorctlFailure, ASilentServerIsGivenUp) {
  server.reply(kudos, StubReply{.body = "4*", .claim_length = 3, .stall = true});
  const ProcessResult outcome = run({"--timeout", "1", "kudos", "7"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(server.host() + ": nothing has arrived for 1 s"));
}

TEST_F(VelkorctlFailure, AnErrorStatusIsAFailureWhateverTheReply) {
  server.reply(kudos, StubReply{.status = 500, .body = "4*1"});
  const ProcessResult asking = run({"kudos", "7"});
  server.reply_once(kudos, "4*1");
  const ProcessResult giving = run({"kudos", "7", "--give", "2"});
  EXPECT_THAT(giving.err, HasSubstr("(giving kudos, "));
  for (const ProcessResult &outcome : {asking, giving}) {
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, AllOf(StartsWith("velkorctl: the server reports an error ("),
                                   HasSubstr(", " + server.host() + ": HTTP status 500)\n"),
                                   Not(HasSubstr("have been given"))));
  }
}

TEST_F(VelkorctlFailure, AReactionIsNotTakenForSent) {
  server.reply("/3.7.3/xml-forum.php", StubReply{.status = 500, .body = "OK17"});
  const ProcessResult outcome = run({"forum", "7", "--reply", "-"}, {.input = "thanks"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("(sending the reaction, " + server.host() + ": HTTP status 500)\n"));
}

TEST_F(VelkorctlFailure, AStatusBelongsToTheErrorOfTheReader) {
  server.reply("/3.7.3/xml-dyn.php", StubReply{.status = 502, .body = "<html>Bad Gateway"});
  cache_postings(event(7, "Alpha"));
  const ProcessResult outcome = run({"forum", "7"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("(asking for the reactions, " + server.host() + ": HTTP status 502)\n"));
}

TEST_F(VelkorctlFailure, AnyStepOfAPostingMayFail) {
  server.reply_once("/3.7.3/xml-post.php", "1501");
  server.reply_once("/3.7.3/xml-post.php", StubReply{.status = 503, .body = "OK"});
  server.reply("/3.7.3/xml-post.php", "OK");
  write_file(sandbox.home() / "spot",
             "[posting]\ntitle=My spot\ncategory=Beeld\nsub-category=DivX\nnewsgroups=1\n"
             "description=one\nsignature=two\n");
  const ProcessResult outcome = run({"post", sandbox.home() / "spot"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("(sending the posting, " + server.host() + ": HTTP status 503); posting "));
}

TEST_F(VelkorctlFailure, AHostWithoutAnAddressIsNamed) {
  // A name that no resolver has to be asked about: its label is too long.
  const std::string name = std::string(64, 'x') + ".invalid";
  Words words = command({"kudos", "7"});
  words[2] = name;
  const ProcessResult outcome = run_program(words);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("(asking for the kudos, " + name + ": "));
}

TEST_F(VelkorctlFailure, AMissingPlugInIsNamedWithItsPath) {
  const TemporaryDirectory empty;
  Words words = command({"kudos", "7"});
  words[6] = empty.path();
  const ProcessResult outcome = run_program(words);
  EXPECT_EQ(outcome.status, 1);
  const std::string plug_in = (empty.path() / "libzox_http_plugin.so.2.0").string();
  EXPECT_THAT(outcome.err, HasSubstr(plug_in));
  words.emplace_back("--trace");
  EXPECT_THAT(run_program(words).err,
              testing::ContainsRegex("trace: zox_http_curl_execute\\(\\): .*" + plug_in));
}

class VelkorctlHttps : public VelkorctlTest {
protected:
  VelkorctlHttps() {
    settings(std::string("username=") + ServerProcess::user +
             "\npassword=" + ServerProcess::password + "\n");
  }

  [[nodiscard]] Words command(const Words &words) const override {
    const std::string address = "https://" + server.host();
    Words all = VelkorctlTest::command({"--server", address, "--static-server", address,
                                        "--lib-dir", ServerProcess::plugin_directory()});
    all.insert(all.end(), words.begin(), words.end());
    return all;
  }

  CertificateAuthority authority;
  ServerCertificate certificate = authority.sign();
  ServerProcess server{{"--postings", "20", "--tls-certificate", certificate.certificate,
                        "--tls-key", certificate.key}};
};

TEST_F(VelkorctlHttps, AnAuthorityIsNamedOnTheCommandLine) {
  const ProcessResult outcome = run({"--ca-file", authority.certificate(), "update"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, HasSubstr("20 postings received"));
}

TEST_F(VelkorctlHttps, AServerThatCannotBeTrustedIsNamedWithTheReason) {
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr(server.host() + ": SSL certificate problem: "));
}

TEST_F(VelkorctlHttps, TheDoctorFindsAServerThatCannotBeTrusted) {
  const ProcessResult outcome = run({"doctor"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.out,
              AllOf(HasSubstr("main server: Onbekende fout opgetreden [an unknown error] (asking "
                              "the main server, " +
                              server.host() + ": SSL certificate problem: "),
                    HasSubstr("-> check --server, --static-server, --ca-file and the clock")));
  EXPECT_THAT(run({"--ca-file", authority.certificate(), "doctor"}).out,
              HasSubstr("ok       main server: "));
}

}  // namespace
}  // namespace velkor::test
