/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl mail, kudos, warn, profile, myzox, post, signup, account and the watchlist's copy. */
#include "tests/support/desktop_keyring.h"
#include "tests/support/stub_server.h"
#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class VelkorctlCommunity : public ServerVelkorctlTest {
protected:
  using ServerVelkorctlTest::ServerVelkorctlTest;

  ProcessResult run_with_input(const Words &words, const std::string &input) const {
    return run(words, {.input = input});
  }
  /** A posting that is not the user's own. */
  std::string posting() {
    return std::to_string(
        server.add_posting({{"Title", "Alpha"}, {"Poster", "ann"}, {"Cat", "0"}, {"SCat", "0"}}));
  }
};

class VelkorctlMail : public VelkorctlCommunity {
protected:
  void send(const std::string &subject, const std::string &body) const {
    const ProcessResult outcome = run_with_input({"mail", "send", "demo", subject}, body);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
};

TEST_F(VelkorctlMail, SendsFetchesReadsAndDeletes) {
  EXPECT_EQ(output({"mail", "check"}), "no\n");
  send("greeting", "hello\nthere\n");
  EXPECT_EQ(output({"mail", "check"}), "yes\n");
  EXPECT_THAT(output({"mail", "check", "--format", "json"}),
              HasSubstr(R"("item":{"waiting":true})"));
  const ProcessResult fetched = run({"mail", "fetch"});
  EXPECT_EQ(fetched.status, 0);
  EXPECT_EQ(fetched.err, "velkorctl: 1 new message\n");
  EXPECT_EQ(run({"mail", "fetch"}).err, "velkorctl: no new messages\n");
  EXPECT_EQ(count_objects(output({"mail", "list", "--format", "json"})), 2U);
  EXPECT_THAT(output({"mail", "list"}), HasSubstr("received  demo"));
  EXPECT_EQ(output({"mail", "read", "2", "--format", "tsv", "--fields", "number,body"}),
            "number\tbody\n2\thello\\nthere\n");
  for (const char *number : {"1", "2"})
    EXPECT_THAT(output({"mail", "read", number}), HasSubstr("\n\nhello\nthere\n"));
  EXPECT_EQ(output({"mail", "delete", "2", "1"}), "");
  EXPECT_EQ(count_objects(output({"mail", "list", "--format", "json"})), 0U);
}

TEST_F(VelkorctlMail, AMessageThatDoesNotExistIsNotFound) {
  EXPECT_EQ(run({"mail", "read", "1"}).status, 7);
  EXPECT_EQ(run({"mail", "delete", "1"}).status, 7);
  EXPECT_EQ(run({"mail", "read", "0"}).status, 2);
}

TEST_F(VelkorctlMail, AnUnknownAddresseeIsReported) {
  const ProcessResult outcome = run_with_input({"mail", "send", "nobody", "x"}, "text");
  EXPECT_EQ(outcome.status, 7);
  EXPECT_EQ(outcome.err,
            "velkorctl: the server does not know the addressee (sending the message)\n");
  EXPECT_EQ(count_objects(output({"mail", "list", "--format", "json"})), 0U);
}

TEST_F(VelkorctlMail, AFullDiskLeavesTheMailOnTheServer) {
  send("greeting", std::string(3000, 'x'));
  EXPECT_EQ(run({"mail", "fetch"}, {.file_size_limit = 2000}).status, 6);
  EXPECT_EQ(run({"mail", "fetch"}).status, 0);
  EXPECT_EQ(count_objects(output({"mail", "list", "--format", "json"})), 2U);
}

TEST_F(VelkorctlMail, MessagesAreDeletedTogetherOrNotAtAll) {
  for (const char *subject : {"one", "two", "three"})
    send(subject, std::string(1000, 'x'));
  const ProcessResult full = run({"mail", "delete", "1", "2"}, {.file_size_limit = 500});
  EXPECT_EQ(full.status, 6);
  EXPECT_THAT(full.err, HasSubstr("no message has been deleted"));
  EXPECT_EQ(count_objects(output({"mail", "list", "--format", "json"})), 3U);
  // One message fits into the file, two do not: there is no save in between.
  EXPECT_EQ(run({"mail", "delete", "1", "3", "1"}, {.file_size_limit = 2000}).status, 0);
  EXPECT_THAT(output({"mail", "list", "--format", "json"}), HasSubstr("two"));
  EXPECT_EQ(count_objects(output({"mail", "list", "--format", "json"})), 1U);
}

TEST_F(VelkorctlMail, AMailBoxThatCannotBeReadIsReported) {
  write_file(cached("velkor.mail"), "<Mail><Event");
  const ProcessResult outcome = run({"mail", "list"});
  EXPECT_EQ(outcome.status, 6);
  EXPECT_THAT(outcome.err, HasSubstr("cannot read " + cached("velkor.mail").string()));
}

TEST_F(VelkorctlMail, AHostileMessageCannotControlTheTerminal) {
  send("a\u009b2J", "b\u202E\u009bc");
  EXPECT_THAT(output({"mail", "list"}), HasSubstr("a\uFFFD2J"));
  EXPECT_THAT(output({"mail", "read", "1"}), HasSubstr("b\uFFFD\uFFFDc"));
}

TEST_F(VelkorctlCommunity, KudosAreGivenAndRead) {
  const std::string id = posting();
  EXPECT_EQ(output({"kudos", id}), "0 0\n");
  EXPECT_EQ(run({"kudos", id, "--give", "3"}).err,
            "velkorctl: the kudos have been given; the counts are now 3 and 3\n");
  EXPECT_EQ(output({"kudos", id, "--format", "json"}),
            "{\"schema\":\"velkorctl.kudos\",\"version\":1,\"code\":0,\"message\":\"\",\"item\":"
            "{\"id\":" +
                id + ",\"first\":3,\"second\":3}}\n");
  const ProcessResult again = run({"kudos", id, "--give", "3"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "velkorctl: the server has not counted the kudos: its counts are still 3 "
                       "and 3\n");
  for (const char *number : {"x", "0", "11", "-11"})
    EXPECT_EQ(run({"kudos", id, "--give", number}).status, 2) << number;
}

TEST_F(VelkorctlCommunity, AWarningIsSentOnce) {
  const std::string id = posting();
  EXPECT_EQ(run({"warn", id, "spam"}).err,
            "velkorctl: the warning has been sent; its number is 1\n");
  const ProcessResult again = run({"warn", id, "spam"});
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err,
            "velkorctl: you have already warned about this posting (sending the warning)\n");
  EXPECT_EQ(run({"warn", id, ""}).status, 2);
}

TEST_F(VelkorctlCommunity, AProfileIsPrinted) {
  EXPECT_THAT(output({"profile", "demo"}), HasSubstr("Name            demo\n"));
  EXPECT_THAT(output({"profile", "demo", "--format", "json"}), HasSubstr(R"("name":"demo")"));
  const ProcessResult unknown = run({"profile", "nobody"});
  EXPECT_EQ(unknown.status, 7);
  EXPECT_THAT(unknown.err, testing::StartsWith("velkorctl: the server knows no such user ("));
  EXPECT_THAT(run({"--trace", "profile", "nobody"}).err,
              HasSubstr("velkorctl: trace: zox_profile_parse(): empty document!\n"));
}

TEST_F(VelkorctlCommunity, TheWatchlistIsExchanged) {
  ASSERT_EQ(run({"update"}).status, 0);
  EXPECT_EQ(output({"watch", "add", "3", "4"}), "");
  EXPECT_EQ(output({"watch", "upload"}), "");
  EXPECT_EQ(output({"watch", "clear"}), "");
  EXPECT_EQ(output({"watch", "add", "5"}), "");
  EXPECT_EQ(output({"watch", "download"}), "");
  EXPECT_EQ(output({"config", "get", "watchlist"}), "5\n3\n4\n");
}

class VelkorctlPost : public VelkorctlCommunity {
protected:
  VelkorctlPost() { EXPECT_EQ(run({"groups", "--fetch"}).status, 0); }

  Words post(const std::string &lines, const Words &more = {}) const {
    write_file(sandbox.home() / "spot", "[posting]\n" + lines);
    Words words{"post", sandbox.home() / "spot"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
  }

  const std::string spot = "title=My spot\ncategory=Beeld\nsub-category=DivX\n"
                           "tags=Genre/Drama;TV\nnewsgroups=1;2\ndescription=one\\ntwo\n";
};

TEST_F(VelkorctlPost, PostsASpotAndPrintsItsNumber) {
  const ProcessResult outcome = run(post(spot));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "velkorctl: sending the posting\n"
                         "velkorctl: the server has accepted the posting\n"
                         "velkorctl: sending its description\n"
                         "velkorctl: finished\n");
  const std::string id = outcome.out.substr(0, outcome.out.find('\n'));
  const std::string shown = run({"show", id}).out;
  EXPECT_THAT(shown, HasSubstr("Title       My spot\n"));
  EXPECT_THAT(shown, HasSubstr("Status      Spot\n"));
  EXPECT_THAT(shown, HasSubstr("Category    Beeld/DivX\n"));
  EXPECT_THAT(shown, HasSubstr("Tags        DivX, Drama, TV\n"));
  EXPECT_THAT(shown, HasSubstr("\nDescription:\none\ntwo\n"));
  EXPECT_THAT(output({"myzox", "--format", "json"}), HasSubstr("\"id\":" + id + ","));
  EXPECT_THAT(output({"myzox"}), HasSubstr("My spot"));
  EXPECT_THAT(output({"myzox", "--format", "xml"}), HasSubstr("<Title>My spot</Title>"));
  EXPECT_EQ(run({"myzox", "--update", id}).status, 0);
}

TEST_F(VelkorctlPost, ADryRunSendsNothing) {
  server.forget_requests();
  const std::string shown = output(post(spot, {"--dry-run"}));
  EXPECT_THAT(shown, HasSubstr("Title       My spot\n"));
  EXPECT_THAT(shown, HasSubstr("Tags        Drama, TV\n"));
  EXPECT_THAT(server.requests(), IsEmpty());
}

TEST_F(VelkorctlPost, EverythingWrongIsReportedBeforeAnythingIsSent) {
  server.forget_requests();
  const ProcessResult outcome =
      run(post("titel=x\ncategory=Beeld\nsub-category=MP3\ntags=Browsers\nfiles=many\n"));
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  for (const char *words : {"unknown key titel", "title is missing", "newsgroups is missing",
                            "unknown sub-category \"MP3\"", "unknown tag \"Browsers\"",
                            "files: \"many\"", "the posting is not sent"})
    EXPECT_THAT(outcome.err, HasSubstr(words));
  EXPECT_THAT(server.requests(), IsEmpty());
  EXPECT_EQ(run({"post", "/nonexistent"}).status, 2);
}

TEST_F(VelkorctlPost, AFailureIsReported) {
  server.fault("/3.7.3/xml-post.php", "database", 1);
  const ProcessResult outcome = run(post(spot));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "velkorctl: sending the posting\n"
                         "velkorctl: Database-storing op de ZOX server [the database of the server "
                         "has failed] (sending the posting, " +
                             server.host() + ")\n");
}

TEST_F(VelkorctlPost, AReservationIsReported) {
  ASSERT_EQ(run(post(spot)).status, 0);
  const ProcessResult repeated = run(post(spot));
  EXPECT_EQ(repeated.status, 0);
  EXPECT_NE(repeated.out, "");
  EXPECT_THAT(repeated.err, HasSubstr("accepted the posting with a reservation"));
}

TEST_F(VelkorctlPost, AFailureAfterPostingNamesThePosting) {
  StubServer failing;
  failing.reply_once("/3.7.3/xml-post.php", "1501");
  failing.reply("/3.7.3/xml-post.php", "Could not connect to the database");
  Words words = post(spot);
  words.insert(words.begin(), {VELKORCTL_PROGRAM, "--server", failing.host(), "--lib-dir",
                               ServerProcess::plugin_directory()});
  const ProcessResult outcome = run_program(words);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err,
              HasSubstr("Database-storing op de ZOX server [the database of the server has failed] "
                        "(sending the posting, " +
                        failing.host() + "); posting 501 is on the server without the rest\n"));
}

class VelkorctlSignup : public VelkorctlCommunity {
protected:
  VelkorctlSignup() : VelkorctlCommunity(Words{"--signup-pause", "0"}) {}
};

TEST_F(VelkorctlSignup, CreatesAnAccountAndUsesIt) {
  const ProcessResult outcome = run_with_input(
      {"signup", "newby", "newby@example.org", "--password-stdin", "--use"}, "geheim\n");
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(output({"config", "get", "username"}), "newby\n");
  EXPECT_EQ(output({"mail", "check"}), "no\n");
  const ProcessResult again =
      run_with_input({"signup", "newby", "newby@example.org", "--password-stdin"}, "geheim\n");
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "velkorctl: Er is reeds iemand geregistreerd met de opgegeven "
                       "gebruikersnaam [the user name is taken] (creating the account)\n");
}

TEST_F(VelkorctlSignup, ThePasswordIsNeverAnArgument) {
  const ProcessResult refused = run({"signup", "newby", "newby@example.org"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, HasSubstr("--password-stdin"));
  EXPECT_EQ(run({"account", "set", "newby", "geheim"}).status, 2);
}

TEST_F(VelkorctlSignup, AccountSetStoresNameAndPassword) {
  EXPECT_EQ(run_with_input({"account", "set", "ann", "--password-stdin"}, "se cret\n").status, 0);
  EXPECT_EQ(output({"config", "get", "username"}), "ann\n");
  EXPECT_EQ(output({"config", "get", "password", "--show-secret"}), "se cret\n");
  ChildProcess asking(command({"account", "set", "bob"}), {.terminal_columns = 80});
  asking.wait_for("password: ");
  asking.write("hidden\n");
  const ProcessResult outcome = asking.finish();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.out, Not(HasSubstr("hidden")));
  EXPECT_EQ(output({"config", "get", "password", "--show-secret"}), "hidden\n");
}

class VelkorctlKeyring : public VelkorctlTest {
protected:
  VelkorctlKeyring() { settings("username=ann\npassword=geheim\n"); }

  [[nodiscard]] std::string file() const { return read_file(cached("velkor.conf")); }
  [[nodiscard]] std::string password() const {
    return output({"config", "get", "password", "--show-secret"});
  }

  // By whole stacks the leak checker tells the few bytes that GDBus leaves from the command's own.
  const EnvironmentVariable whole_stacks{"ASAN_OPTIONS", "fast_unwind_on_malloc=0"};
};

TEST_F(VelkorctlKeyring, KeepsThePassword) {
  DesktopKeyring desktop;
  EXPECT_EQ(run({"account", "keep", "keyring"}).status, 0);
  EXPECT_THAT(file(), Not(HasSubstr("geheim")));
  EXPECT_EQ(password(), "geheim\n");
  EXPECT_EQ(run({"account", "set", "bob", "--password-stdin"}, {.input = "nieuw\n"}).status, 0);
  EXPECT_THAT(file(), Not(HasSubstr("nieuw")));
  EXPECT_EQ(password(), "nieuw\n");
  EXPECT_EQ(run({"account", "keep", "file"}).status, 0);
  EXPECT_THAT(file(), HasSubstr("password=nieuw\n"));
}

TEST_F(VelkorctlKeyring, SaysWhyThereIsNoPassword) {
  DesktopKeyring desktop;
  EXPECT_EQ(run({"account", "keep", "keyring"}).status, 0);
  desktop.stop();
  const ProcessResult outcome = run({"update"});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("the keyring does not give the password: "));
}

TEST_F(VelkorctlKeyring, LeavesThePasswordWhereItIsWithoutOne) {
  const EnvironmentVariable no_bus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
  const std::string before = file();
  const ProcessResult outcome = run({"account", "keep", "keyring"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("the password stays where it is: "));
  EXPECT_EQ(file(), before);
  EXPECT_EQ(run({"account", "keep", "elsewhere"}).status, 2);
}

}  // namespace
}  // namespace velkor::test
